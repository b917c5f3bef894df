// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>

#include "network/adapter_list.h"
#include "network/vlan_dialog.h"
#include "ui/keyword_table.h"
#include "ui/markup_layout.h"

using namespace Kiva;

namespace {

using Names = std::vector<std::string>;

constexpr const char* kMac = "02:00:00:00:00:01";

HostCtl::Network::PnicRecord pnic(const std::string& name, const std::string& label = "",
                                  const std::string& mac = kMac) {
  HostCtl::Network::PnicRecord record;
  record.name = name;
  record.description = label;
  record.macAddress = mac;
  return record;
}

TEST(Adapters, StandInTheirOrderAndThenByNumber) {
  const struct {
    Names host, first, all;
  } cases[] = {{{"pnic10", "pnic2", "pnic1"}, {}, {"pnic1", "pnic2", "pnic10"}},
               {{"pnic0", "pnic1", "pnic2"}, {"pnic2", "pnic0"}, {"pnic2", "pnic0", "pnic1"}},
               {{"pnic0", "pnic1"}, {"pnic9", "pnic1"}, {"pnic9", "pnic1", "pnic0"}},
               {{}, {"pnic1", "pnic0"}, {"pnic1", "pnic0"}},
               {{}, {}, {}}};
  for (const auto& one : cases) {
    Pnics host;
    for (const auto& name : one.host) host.push_back(pnic(name));
    Names all;
    for (const auto& adapter : ordered(host, one.first)) {
      all.push_back(adapter.name);
      const bool known =
          std::find(one.host.begin(), one.host.end(), adapter.name) != one.host.end();
      EXPECT_EQ(linkStatus(adapter), known ? "Disconnected" : "") << adapter.name;
    }
    EXPECT_EQ(all, one.all);
  }
}

TEST(Adapters, FitTheirColumns) {
  const std::pair<HostCtl::Network::PnicRecord, const char*> cases[] = {
      {pnic("pnic1", "Nine cols"), "pnic1        Nine cols (02:00:00:00:00:01) Disconnected"},
      {pnic("pnic1", "Ten column"), "pnic1        Ten (...) (02:00:00:00:00:01) Disconnected"},
      {pnic("pnic1", "Übergröße"), "pnic1        Übergröße (02:00:00:00:00:01) Disconnected"},
      {pnic("pnic1", "Übergrößen"), "pnic1        Über(...) (02:00:00:00:00:01) Disconnected"},
      {pnic("pnic1", " {a}\n\xff", "no"),
       "pnic1        (a) ? (no)                    Disconnected"},
      {pnic("pnic1", "", std::string(60, 'm')),
       "pnic1         (mmmmmmmmmmmmmmmmmmmmmmmmmmm Disconnected"},
      {pnic("pnic1", "no address, but a long label", ""),
       "pnic1        no address, but a long label  Disconnected"},
      {pnic("pnic1", "", ""), "pnic1                                      "}};
  for (const auto& [record, line] : cases)
    EXPECT_EQ(layOutMarkup(adapterLine(record), 69, keywordTable()), line);
}

TEST(Vlan, IsAWholeNumberInItsRange) {
  const std::pair<const char*, int> good[] = {
      {"", 0}, {"1", 1}, {"0001", 1}, {"4094", 4094}, {"4095", 4095}};
  for (const auto& [text, id] : good) EXPECT_EQ(parseVlanId(text), id) << text;
  for (const char* text : {"0", "000", "-1", "+1", "4096", "69631", "4294967297", "99999999999",
                           "18446744073709551617", "1 ", " 1", "1.0", "0x1", "one"})
    EXPECT_EQ(parseVlanId(text), std::nullopt) << text;
}

}  // namespace
