// SPDX-License-Identifier: MIT
// What the screens of the management network read of the host, and what they make of texts.
#include <gtest/gtest.h>

#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "hostctl/network/hosts_file.h"
#include "network/adapter_list.h"
#include "network/management_interface.h"
#include "network/test_targets.h"
#include "network/vlan_dialog.h"
#include "sample/sample_host.h"
#include "ui/keyword_table.h"
#include "ui/markup_layout.h"

using namespace Kiva;

namespace {

using Texts = std::vector<std::string>;

TEST(ManagementInterface, SaysWhatItHangsOn) {
  const std::string opaque = "Opaque network connectee type not supported",
                    none = "Unsupported connectee type", unsupported = "Unsupported vSwitch type";
  const std::tuple<const char*, std::string, bool, Texts> cases[] = {
      {"standard", "vSwitch0", false, {}},
      {"distributed", "vSwitch0", true, {unsupported}},
      {"opaque", "", false, {opaque, unsupported}},
      {"unknown", "", false, {none, unsupported}}};
  for (const auto& [type, name, distributed, errors] : cases) {
    Harness::DemoHost host;
    host.Set("/network/kernelNics/0/connection/type", type);
    HostSample::useSampleHost(host.Directory());
    const auto interface = findManagementInterface();
    std::int16_t vlanId = 5;
    EXPECT_EQ(getSwitchName(*interface), name);
    EXPECT_EQ(isOnDistributedSwitch(), distributed);
    EXPECT_EQ(HostLinux::failureOf([&] { getVlanId(*interface, vlanId); }),
              errors.empty() ? "" : unsupported);
    EXPECT_EQ(readUplinks(*interface).trouble, errors.empty() ? "" : unsupported);
    EXPECT_EQ(vlanId, 0);
    EXPECT_EQ(host.Journal("log.err"), errors);
  }
}

TEST(ManagementInterface, AnswersForAHostThatFails) {
  Harness::DemoHost host;
  HostSample::useSampleHost(host.Directory());
  const auto interface = findManagementInterface();
  int most = 0;
  EXPECT_TRUE(getMaxActiveUplinks(*interface, most));
  EXPECT_EQ(most, 1);
  Texts uplinks = {"pnic9"};
  host.Set("/faults", {{"GetConnectionPoint", "c"}});
  EXPECT_FALSE(getMaxActiveUplinks(*interface, most) || getUplinks(*interface, uplinks) ||
               isOnDistributedSwitch());
  EXPECT_EQ(uplinks, Texts{});
  EXPECT_EQ(getSwitchName(*interface), "");
  EXPECT_EQ(host.Journal("log.err"),
            (Texts{"Getting max number of active uplinks failed: c", "Getting uplinks failed: c",
                   "Could not determine if a DVS was in use: c", "Getting switch name failed: c"}));
}

TEST(Adapters, FitTheirColumns) {
  const std::string mac = "02:00:00:00:00:01";
  const std::tuple<const char*, std::string, std::string> cases[] = {
      {"Nine cols", mac, "Nine cols (" + mac + ")"},
      {"Ten column", mac, "Ten (...) (" + mac + ")"},
      {"Übergrößen", mac, "Über(...) (" + mac + ")"},
      {" {a}\n\xff", "no", "(a) ? (no)                   "},
      {"", std::string(60, 'm'), " (" + std::string(27, 'm')},
      {"no address, but a long label", "", "no address, but a long label "}};
  for (const auto& [label, address, shown] : cases) {
    const HostCtl::Network::PnicRecord pnic{"pnic1", label, "", address, false, 0, ""};
    EXPECT_EQ(layOutMarkup(adapterLine(pnic), 69, keywordTable()),
              "pnic1        " + shown + " Disconnected");
  }
}

TEST(Vlan, IsAWholeNumberInItsRange) {
  const std::pair<const char*, int> good[] = {{"", 0}, {"0001", 1}, {"4094", 4094}, {"4095", 4095}};
  for (const auto& [text, id] : good) EXPECT_EQ(parseVlanId(text), id) << text;
  for (const char* text : {"0", "-1", "+1", "4096", "69631", "4294967297", "99999999999", "1.0"})
    EXPECT_EQ(parseVlanId(text), std::nullopt) << text;
}

TEST(NetworkTest, GivesAZoneToLinkLocalAddressesOnly) {
  EXPECT_EQ(withZone("fec0::1", "tarn0"), "fec0::1");
  EXPECT_EQ(withZone("febf::1", "a-0.7;b`$('"), "febf::1%a-0.7\\;b\\`\\$\\(\\'");
}

TEST(HostsFile, LosesOneNameAndNothingElse) {
  const std::string others = "# 10.0.0.5 h\n\n  \nh\nh a\n10.0.0.5\n10.0.0.5 h2 ah h.\n";
  const std::array<std::string, 2> cases[] = {
      {"127.0.0.1 localhost\n10.0.0.5 h\n::1 x\n", "127.0.0.1 localhost\n::1 x\n"},
      {"10.0.0.5\th.test  H halo\nfd00::5 a h", "10.0.0.5\th.test halo\nfd00::5 a"},
      {"10.0.0.5 h # h here\n10.0.0.5 a h# h\r\n", "# h here\n10.0.0.5 a# h\r\n"},
      {"10.0.0.5 h h\r\n10.0.0.6 a h\r\n\r\n", "10.0.0.6 a\r\n\r\n"},
      {" \t10.0.0.5 \v h \f b  ", " \t10.0.0.5 \f b  "},
      {others, others},
      {std::string("1.2.3.4 a\0b h\n", 14), std::string("1.2.3.4 a\0b\n", 12)}};
  for (const auto& [text, without] : cases)
    EXPECT_EQ(HostCtl::Network::withoutHostName(text, "h"), without);
  EXPECT_EQ(HostCtl::Network::withoutHostName(others, ""), others);
}

}  // namespace
