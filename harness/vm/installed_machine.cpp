// SPDX-License-Identifier: MIT
#include "harness/vm/installed_machine.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "harness/console.h"

namespace {

namespace fs = std::filesystem;
using Harness::Machine;
using Harness::MachineParts;
using Harness::Screen;

constexpr const char* kPlain = "plain";
constexpr const char* kInstalled = "installed";

fs::path folder() {
  const char* path = std::getenv("KIVA_VM");
  if (!path) throw std::runtime_error("script/test-vm makes a machine and runs these tests");
  return fs::absolute(path);
}

void succeed(Machine& machine, const std::string& script) {
  const auto [status, output] = machine.Shell(script);
  if (status != 0) throw std::runtime_error(script + ": " + output);
}

void save(Machine& machine, const std::string& name) {
  const std::string error = machine.Monitor("savevm " + name);
  if (!error.empty()) throw std::runtime_error(error);
}

/// A disk with the snapshot of the server before anything was installed; it stays for later runs.
fs::path plainDisk() {
  fs::path disk = folder() / "plain.qcow2";
  if (fs::exists(disk)) return disk;
  const fs::path fresh = folder() / "new.qcow2";
  const std::string make = "qemu-img create -q -f qcow2 -F raw -b '" +
                           (folder() / "disk.ext4").string() + "' '" + fresh.string() + "'";
  if (std::system(make.c_str()) != 0) throw std::runtime_error(make);
  {
    Machine machine(MachineParts{folder(), fresh});
    machine.WaitForShell();
    succeed(machine, "systemctl is-system-running --wait && sync");
    save(machine, kPlain);
  }
  fs::rename(fresh, disk);
  return disk;
}

/// This run's own disk, with a snapshot of the server just after the package was installed.
const fs::path& installedDisk() {
  static const fs::path made = [] {
    fs::path disk = folder() / "installed.qcow2";
    fs::copy_file(plainDisk(), disk, fs::copy_options::overwrite_existing);
    Machine machine(MachineParts{folder(), disk, kPlain});
    succeed(machine, "cd /root && tar -xf /dev/vdb && dpkg -i kiva.deb && rm kiva.deb");
    machine.WaitFor("Shut Down/Restart");
    save(machine, kInstalled);
    return disk;
  }();
  return made;
}

}  // namespace

void InstalledMachine::SetUp() {
  machine_.emplace(MachineParts{folder(), installedDisk(), kInstalled});
}

void InstalledMachine::LogIn(const std::string& key, const std::string& password) {
  machine_->Do({key, std::string("wait:") + kLogin, "Down", "type:" + password, "Enter",
                std::string("gone:") + kLogin});
}

void InstalledMachine::Focus(const std::string& entry) {
  machine_->Do({"focus:" + entry});
}

void InstalledMachine::Choose(const std::string& entry) {
  machine_->Do({"choose:" + entry});
}

std::string InstalledMachine::Shell(const std::string& script) {
  const auto [status, output] = machine_->Shell(script);
  EXPECT_EQ(status, 0) << script << "\n" << output;
  return output;
}

void InstalledMachine::WaitForSuccess(const std::string& script) {
  // Less than the machine's own deadline, however long one look takes.
  Shell("end=$(($(date +%s) + 60)); until " + script +
        "; do test $(date +%s) -lt $end || exit 1; sleep 0.2; done");
}

std::string InstalledMachine::SshAnswer() {
  const std::string call =
      "ssh -o LogLevel=ERROR -o BatchMode=yes -o ConnectTimeout=60 -o StrictHostKeyChecking=no "
      "-o UserKnownHostsFile=/dev/null -i '" +
      (folder() / "key").string() + "' -p " + std::to_string(machine_->SshPort()) +
      " visitor@127.0.0.1 echo welcome </dev/null 2>&1";
  FILE* pipe = popen(call.c_str(), "r");
  std::string answer;
  for (int byte = 0; pipe && (byte = std::fgetc(pipe)) != EOF;) answer += static_cast<char>(byte);
  if (pipe) pclose(pipe);
  return answer;
}

void InstalledMachine::ExpectSsh(const std::string& wanted) {
  constexpr int kTries = 20;
  std::string answer;
  for (int i = 0; i < kTries && answer.find(wanted) == std::string::npos; ++i) {
    if (i > 0) std::this_thread::sleep_for(std::chrono::milliseconds(500));
    answer = SshAnswer();
  }
  EXPECT_NE(answer.find(wanted), std::string::npos)
      << wanted << " is not what SSH says: " << answer;
}

void InstalledMachine::WaitForNewStart(const std::string& bootId) {
  machine_->WaitForShell();
  machine_->WaitFor(kWelcome);
  EXPECT_NE(BootId(), bootId);
}

void InstalledMachine::TearDown() {
  if (!HasFailure() || !machine_) return;
  std::cout << machine_->Shell("journalctl --no-pager --lines 40").output << std::endl;
}
