// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "network/adapter_list.h"
#include "network/vlan_dialog.h"
#include "ui/keyword_table.h"
#include "ui/markup_layout.h"

using namespace Kiva;

namespace {

HostCtl::Network::PnicRecord pnic(const std::string& label,
                                  const std::string& mac = "02:00:00:00:00:01") {
  HostCtl::Network::PnicRecord record;
  record.name = "pnic1";
  record.description = label;
  record.macAddress = mac;
  return record;
}

TEST(Adapters, FitTheirColumns) {
  const std::pair<HostCtl::Network::PnicRecord, const char*> cases[] = {
      {pnic("Nine cols"), "pnic1        Nine cols (02:00:00:00:00:01) Disconnected"},
      {pnic("Ten column"), "pnic1        Ten (...) (02:00:00:00:00:01) Disconnected"},
      {pnic("Übergrößen"), "pnic1        Über(...) (02:00:00:00:00:01) Disconnected"},
      {pnic(" {a}\n\xff", "no"), "pnic1        (a) ? (no)                    Disconnected"},
      {pnic("", std::string(60, 'm')), "pnic1         (mmmmmmmmmmmmmmmmmmmmmmmmmmm Disconnected"},
      {pnic("no address, but a long label", ""),
       "pnic1        no address, but a long label  Disconnected"}};
  for (const auto& [record, line] : cases)
    EXPECT_EQ(layOutMarkup(adapterLine(record), 69, keywordTable()), line);
}

TEST(Vlan, IsAWholeNumberInItsRange) {
  const std::pair<const char*, int> good[] = {{"", 0}, {"0001", 1}, {"4094", 4094}, {"4095", 4095}};
  for (const auto& [text, id] : good) EXPECT_EQ(parseVlanId(text), id) << text;
  for (const char* text : {"0", "-1", "+1", "4096", "69631", "4294967297", "99999999999", "1.0"})
    EXPECT_EQ(parseVlanId(text), std::nullopt) << text;
}

}  // namespace
