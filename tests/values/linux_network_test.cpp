// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <linux/if_addr.h>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"
#include "linux/kernel_nics.h"
#include "linux/networkd_describe.h"
#include "linux/networkd_reporter.h"

using namespace HostLinux;

namespace {

using HostCtl::Network::AddressType;
using HostCtl::Network::IpAddress;

IpAddress ip(const char* text) {
  return HostCtl::Network::parseIpAddress(text).value();
}

HostSeam::KernelNic onlyNic(std::vector<AddressRow> addresses, bool asksForDhcpv4 = false) {
  return kernelNicsFrom({{{2, "eth0", false, asksForDhcpv4}}, std::move(addresses), {}}).at(0);
}

TEST(LinuxKernelNics, Ipv4AddressAndOrigin) {
  const AddressRow fixed{2, ip("10.0.0.5"), 20, IFA_F_PERMANENT, 0, kForever};
  const AddressRow leased{2, ip("10.0.0.6"), 20, 0, 0, 3600};
  const AddressRow second{2, ip("10.0.0.7"), 20, IFA_F_SECONDARY, 0, kForever};
  const AddressRow zeroconf{2, ip("169.254.1.1"), 16, 0, 253, kForever};
  const AddressRow elsewhere{3, ip("10.0.0.8"), 20, 0, 0, kForever};
  const std::tuple<std::vector<AddressRow>, bool, const char*> cases[] = {
      {{elsewhere}, false, "none"},
      {{}, true, "0.0.0.0 0.0.0.0 0.0.0.0 dhcp"},
      {{fixed}, false, "10.0.0.5 255.255.240.0 0.0.0.0 static"},
      {{fixed}, true, "10.0.0.5 255.255.240.0 0.0.0.0 static"},
      {{leased}, false, "10.0.0.6 255.255.240.0 0.0.0.0 dhcp"},
      {{zeroconf, leased}, false, "10.0.0.6 255.255.240.0 0.0.0.0 dhcp"},
      {{second, zeroconf, fixed}, false, "10.0.0.5 255.255.240.0 0.0.0.0 static"}};
  for (const auto& [rows, asks, seen] : cases)
    EXPECT_EQ(ipv4Text(onlyNic(rows, asks).running), seen);
}

TEST(LinuxKernelNics, Ipv6OriginsAndRefinement) {
  using enum AddressType;
  const std::tuple<AddressRow, AddressType, AddressType, AddressType> cases[] = {
      {{2, ip("fe80::1"), 64, IFA_F_PERMANENT, 253, kForever}, Other, Static, Other},
      {{2, ip("fd00::1"), 64, IFA_F_PERMANENT, 0, kForever}, Static, Autoconf, Autoconf},
      {{2, ip("fd00::2"), 128, 0, 0, 600}, Dhcp, Static, Static},
      {{2, ip("fd00::3"), 64, 0, 0, 600}, Autoconf, Dhcp, Dhcp},
      {{2, ip("fd00::4"), 64, IFA_F_MANAGETEMPADDR, 0, kForever}, Autoconf, Autoconf, Autoconf}};
  std::vector<AddressRow> rows{{2, ip("fd00::bad"), 64, IFA_F_DADFAILED, 0, kForever}};
  std::vector<ReportedAddress> report;
  for (const auto& [row, inKernel, reported, known] : cases) {
    rows.push_back(row);
    report.push_back({row.address, reported});
  }
  auto nic = onlyNic(rows);
  const auto kernel = nic.running.GetIpv6Networks();
  refine(nic, report);
  const auto refined = nic.running.GetIpv6Networks();
  ASSERT_EQ(kernel.size(), std::size(cases));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const auto& [row, inKernel, reported, known] = cases[i];
    EXPECT_EQ(kernel[i].type, inKernel) << toString(row.address);
    EXPECT_EQ(refined[i].type, known) << toString(row.address);
    EXPECT_EQ(refined[i].prefix, row.prefix);
  }
  EXPECT_TRUE(nic.running.GetIpv6UseDhcp());
  EXPECT_TRUE(nic.running.GetIpv6UseRouterAdvertisement());
}

TEST(LinuxNetworkdReport, AddressesOfKnownSourcesOnly) {
  const auto entry = [](const std::string& source, const std::string& address) {
    return "{\"ConfigSource\":" + source + ",\"Address\":" + address + "}";
  };
  const std::string text =
      "{\"Interfaces\":[{\"Name\":\"lo\"},{\"Addresses\":[" + entry("\"DHCPv4\"", "[10,9,0,52]") +
      "," + entry("\"foreign\"", "[10,9,0,53]") + "," + entry("\"static\"", "[10,9,0,256]") + "," +
      entry("\"static\"", "[10,-9,0]") + "," + entry("7", "[1,2,3,4]") + "," +
      entry("\"NDisc\"", "[253,0,0,9,0,0,0,0,0,0,0,0,0,0,0,1]") + ",null]},3]}";
  const std::vector<ReportedAddress> expected{{ip("10.9.0.52"), AddressType::Dhcp},
                                              {ip("fd00:9::1"), AddressType::Autoconf}};
  EXPECT_EQ(addressesIn(text), expected);
  for (const char* broken : {"", "[]", "{\"Interfaces\":7}", "{\"Interfaces\":[{\"Addresses\":["})
    EXPECT_TRUE(addressesIn(broken).empty()) << broken;
}

int askings;
bool answer;

bool fakeReport(std::vector<ReportedAddress>& addresses, std::string&) {
  ++askings;
  if (answer) addresses = {{ip("10.0.0.1"), AddressType::Dhcp}};
  return answer;
}

TEST(LinuxNetworkdReport, AskedOnlyWhenItKeepsNobodyWaiting) {
  const Harness::TemporaryFolder folder;
  folder.Write("run/systemd/netif/state", "");
  const Files files(folder.Path());
  NetworkdReporter reporter(fakeReport);
  const NetworkdReporter::Clock::time_point start{};
  const std::tuple<int, bool, int, std::size_t> steps[] = {
      {0, true, 0, 0},     {900, true, 0, 0},   {1000, true, 1, 1}, {2900, true, 1, 1},
      {3000, false, 2, 0}, {32900, true, 2, 0}, {33000, true, 3, 1}};
  askings = 0;
  for (const auto& [milliseconds, answers, asked, addresses] : steps) {
    answer = answers;
    const auto now = start + std::chrono::milliseconds(milliseconds);
    EXPECT_EQ(reporter.Read(files, now).size(), addresses) << milliseconds;
    EXPECT_EQ(askings, asked) << milliseconds;
  }
  std::filesystem::remove_all(folder.Path() / "run");
  EXPECT_TRUE(reporter.Read(files, start + std::chrono::hours(1)).empty());
  EXPECT_EQ(askings, 3);
}

}  // namespace
