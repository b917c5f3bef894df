// SPDX-License-Identifier: MIT
#include "harness/hosts/machine.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <sstream>
#include <thread>

namespace HostLinux {

namespace {

constexpr int kNoNamespaces = 77;

bool enterNamespaces() {
  const uid_t user = geteuid();
  const gid_t group = getegid();
  const int own =
      CLONE_NEWNET | CLONE_NEWNS | CLONE_NEWPID | CLONE_NEWUTS | (user == 0 ? 0 : CLONE_NEWUSER);
  if (unshare(own) != 0) return false;
  if (user != 0) {
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
    std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
  }
  return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

int statusOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

[[noreturn]] void runAsFirstProcess(const std::function<void()>& body) {
  if (mount("proc", "/proc", "proc", 0, nullptr) != 0) _exit(kNoNamespaces);
  try {
    body();
  } catch (const std::exception& error) {
    ADD_FAILURE() << error.what();
  }
  std::fflush(stdout);
  _exit(testing::Test::HasFailure() ? 1 : 0);
}

}  // namespace

void inNamespaces(const std::function<void()>& body) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    if (!enterNamespaces()) _exit(kNoNamespaces);
    const pid_t first = fork();
    if (first == 0) runAsFirstProcess(body);
    _exit(statusOf(first));
  }
  const int status = statusOf(child);
  if (status == kNoNamespaces) GTEST_SKIP() << "no namespaces of our own on this machine";
  EXPECT_EQ(status, 0) << "failed in its namespaces, see above";
}

bool shell(const std::string& script) {
  return std::system(("set -e\n" + script).c_str()) == 0;
}

Ended ended(const std::string& script) {
  FILE* pipe = popen((script + " 2>&1").c_str(), "r");
  Ended how;
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) how.output += static_cast<char>(c);
  how.status = WEXITSTATUS(pclose(pipe));
  return how;
}

bool installed(const std::string& programs) {
  return shell("for program in " + programs + "; do command -v $program >/dev/null; done");
}

std::string matrixModule() {
  static const std::string path =
      ended("find /usr/lib -path '*/pam_wrapper/pam_matrix.so' | head -n 1").output;
  return path.substr(0, path.find('\n'));
}

bool killedAt(int step, const std::function<void()>& work) {
  const pid_t child = fork();
  if (child == 0) {
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    work();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  for (int i = 0; i < step && WIFSTOPPED(status); ++i) {
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    waitpid(child, &status, 0);
  }
  if (!WIFSTOPPED(status)) return false;
  kill(child, SIGKILL);
  return waitpid(child, &status, 0) == child;
}

std::string failureOf(const std::function<void()>& action) try {
  action();
  return {};
} catch (const std::exception& error) {
  return error.what();
}

std::string ipv4Text(const HostCtl::Network::IpConfig& config) {
  if (config.GetIpv4UseNone()) return "none";
  return config.GetIpv4Address().GetStringAddress() + " " +
         config.GetIpv4Netmask().GetStringAddress() + " " +
         config.GetIpv4Gateway().GetStringAddress() +
         (config.GetIpv4UseDhcp() ? " dhcp" : " static");
}

HostCtl::Network::IpConfig ipConfig(const std::string& words) {
  using namespace HostCtl::Network;
  IpConfig config;
  std::vector<Ipv6Network> networks;
  std::istringstream all(words);
  for (std::string word; all >> word;) {
    const auto slash = word.find('/');
    if (word == "dhcp" || word == "none") config.SetUseDhcp(word == "dhcp", word == "none");
    if (word == "dhcp6") config.SetUseIpv6Dhcp(true);
    if (word == "ra") config.SetUseIpv6RouterAdvertised(true);
    if (word == "dns") config.SetDhcpDns(true);
    if (const auto network = Ipv6Network::FromString(word)) networks.push_back(*network);
    if (const auto address = Ipv4Address::FromString(word.substr(0, slash))) {
      config.SetUseDhcp(false);
      config.SetIpv4Address(*address);
      config.SetIpv4Netmask(Ipv4Address::FromPrefix(std::stoi(word.substr(slash + 1))));
    }
  }
  if ((" " + words + " ").find(" off ") == std::string::npos) config.EnableIpv6();
  config.SetIpv6Networks(networks);
  return config;
}

bool waitUntil(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return true;
}

}  // namespace HostLinux
