// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <regex>

#include "harness/hosts/network_lab.h"
#include "linux/driver.h"

namespace HostLinux {

constexpr const char* kNic = "eth0";
constexpr const char* kFile = "/etc/systemd/network/10-kiva-eth0.network";

/// Without a name where there is none.
inline HostSeam::KernelNic nicOf(LinuxDriver& driver, const std::string& name) {
  for (auto& nic : driver.ReadKernelNics())
    if (nic.name == name) return nic;
  return {};
}

/// A machine whose eth0 networkd configures by a file of ours.
class LinuxIp : public testing::Test {
 protected:
  static void InLab(const char* services, const std::function<void(const NetworkLab&)>& body) {
    inLab([&](const NetworkLab& lab) {
      lab.StartNetworkd();
      lab.Serve(services);
      body(lab);
    });
  }

  static HostSeam::KernelNic Nic() {
    LinuxDriver driver;
    return nicOf(driver, kNic);
  }
  static std::string Ipv4() { return ipv4Text(Nic().running); }
  static bool HasIpv6(const std::string& wanted) {
    const auto nic = Nic();
    const auto& all = nic.running.GetIpv6Networks();
    return std::any_of(all.begin(), all.end(), [&](const HostCtl::Network::Ipv6Network& one) {
      return std::regex_match(one.ToString(), std::regex(wanted));
    });
  }
  static bool HasLeasedIpv6() { return HasIpv6("fd00:9::5[0-9]/128"); }
  static std::string Gateway6() {
    return LinuxDriver().ReadRouting().ipv6Gateway.GetScopedAddress();
  }
  static HostSeam::NetworkWriter& Network() {
    static LinuxDriver driver;
    return driver.Network();
  }
  static void Write(const std::string& config) { Network().WriteIpConfig(kNic, ipConfig(config)); }
  static void SetGateway(const std::string& text) {
    if (const auto ipv4 = HostCtl::Network::Ipv4Address::FromString(text))
      Network().WriteIpv4Gateway(*ipv4);
    else
      Network().WriteIpv6Gateway(HostCtl::Network::Ipv6Address::FromString(text).value());
  }
  static bool Becomes(const std::string& ipv4) {
    return waitUntil([=] { return Ipv4().starts_with(ipv4); });
  }
  /// Changes with every file that counts.
  static std::string Trace() {
    return ended("stat -c '%n %i %y' /etc/systemd/network/* /etc/resolv.conf /etc/hosts").output;
  }
};

}  // namespace HostLinux
