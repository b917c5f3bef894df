// SPDX-License-Identifier: MIT
#include "harness/hosts/network_lab.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <stdexcept>

namespace HostLinux {

namespace {

const std::string kScript = "sh " KIVA_SOURCE_DIR "/harness/hosts/network_lab.sh ";

std::string quoted(const std::string& text) {
  std::string word = "'";
  for (const char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return word + "'";
}

}  // namespace

std::string NetworkLab::Obstacle() {
  if (geteuid() != 0) return "a network of real services needs root";
  if (!installed("/lib/systemd/systemd-networkd dnsmasq dbus-daemon nsenter"))
    return "systemd-networkd, dnsmasq, dbus-daemon or nsenter is not installed";
  if (ended("unshare -nmpu true").status != 0) return "no namespaces of our own on this machine";
  return {};
}

std::string NetworkLab::ObstacleForOpenVswitch() {
  if (!installed("ovsdb-server ovs-vswitchd ovs-vsctl ovs-ofctl"))
    return "Open vSwitch is not installed (package openvswitch-switch)";
  if (access("/dev/net/tun", W_OK) != 0) return "no /dev/net/tun, which it needs in user space";
  return Obstacle();
}

NetworkLab::NetworkLab() {
  Verb("machine");
}

void NetworkLab::Verb(const std::string& words) const {
  if (!shell(kScript + words)) throw std::runtime_error(words + " failed, see above");
}

void NetworkLab::Configure(const std::string& name, const std::string& text) const {
  std::ofstream("/etc/systemd/network/" + name) << text;
}

void NetworkLab::InstallTools(const std::string& matrixModule) const {
  Verb("install " KIVA_SOURCE_DIR "/packaging " KIVA_BUILD_DIR " " + matrixModule);
}

void NetworkLab::Serve(const std::string& services, const std::string& lease) const {
  setenv("LEASE", lease.c_str(), 1);
  Verb("serve " + services);
}

Ended NetworkLab::Peer(const std::string& script) const {
  return ended(kScript + "peer " + quoted(script));
}

int NetworkLab::Logged(const std::string& text) const {
  return std::stoi("0" + ended("grep -c -F -- " + quoted(text) + " /run/lab/server.log").output);
}

void inLab(const std::function<void(const NetworkLab&)>& body, const std::string& obstacle) {
  if (!obstacle.empty()) GTEST_SKIP() << obstacle;
  inNamespaces([&] { body(NetworkLab()); });
}

}  // namespace HostLinux
