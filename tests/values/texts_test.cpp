// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/hosts/recording_platform.h"
#include "ui/markup_text.h"
#include "ui/string_factory.h"

using namespace Kiva;

namespace {

TEST(Catalogue, HasATextForEveryNumber) {
  for (unsigned id = 0; id < kTextCount; ++id)
    if (static_cast<TextId>(id) != TextId::kProductBanner) {
      const bool empty = *catalogueText(static_cast<TextId>(id)) == '\0';
      EXPECT_EQ(empty, static_cast<TextId>(id) == TextId::kEmpty) << id;
    }
  StringFactory* english = getStringFactory("en_US");
  EXPECT_STREQ(english->GetString(kTextCount), "");
  EXPECT_STREQ(english->GetString(0xffffffffu), "");
  EXPECT_EQ(getStringFactory("de_DE"), english) << "the factory in use serves every locale";
}

/// A right pane is 36 columns by 17 rows on the smallest screen; where values stand above the
/// description, or progress below it, less is left.
TEST(Catalogue, DescriptionsFitTheRightPane) {
  using enum TextId;
  const std::pair<int, std::vector<TextId>> rooms[] = {
      {4, {kToViewOrModifyManagementNetwork}},
      {8, {kDnsObtainedAutomatically}},
      {11, {kHostCanObtainIPv4Address}},
      {12, {kDnsQueriesAppendSuffixes}},
      {13,
       {kToPreventUnauthorizedAccessSetPassword, kRestoringNetworkSettingsReverts,
        kManagementNetworkOntoNewVSwitch, kReconfigureXdsManagementPort}},
      {15, {kLockdownModeAndAccess, kAVlanIsAVirtualNetwork}},
      {17,
       {kRestartingMayBeRequired, kToPerformBriefNetworkTest, kToViewNetworkRestoreOptions,
        kToViewTroubleshootingOptions, kAllSystemParametersWillBeReverted,
        kAllCustomExtensionsWillBeRemoved, kManagementAgentsAre}}};
  for (const auto& [rows, texts] : rooms)
    for (const TextId id : texts)
      EXPECT_LE(countLines(catalogueText(id), 36), rows) << catalogueText(id);
}

class Banner : public TestSupport::OnRecordingHost {};

TEST_F(Banner, IsAskedForUntilTheHostAnswers) {
  driver->version = {"Halo", "8.0{x}", "6.1.0", 12345678};
  driver->failing = "GetVersion";
  EXPECT_STREQ(catalogueText(TextId::kProductBanner), "");
  for (const char* failing : {"", "GetVersion"}) {
    driver->failing = failing;
    EXPECT_STREQ(catalogueText(TextId::kProductBanner), "Halo 8.0(x) (Tarn 6.1.0 Build 12345678)");
  }
}

TEST(MarkupText, CountsLinesAndCleansUp) {
  const std::pair<const char*, int> cases[] = {{"", 0},        {"abc", 1},
                                               {"abc\n", 1},   {"abc\n\nd", 3},
                                               {"abc def", 2}, {"{color:red}abcde{/color}", 1},
                                               {"a{x\ny}b", 1}};
  for (const auto& [markup, lines] : cases) EXPECT_EQ(countLines(markup, 5), lines) << markup;
  EXPECT_EQ(squeezeBlanks("  Model\t\tX(R)  CPU \n 2.0 "), "Model X(R) CPU 2.0");
  EXPECT_EQ(squeezeBlanks(" \t "), "");
  EXPECT_EQ(plainText("{color:red}x}"), "(color:red)x)");
}

}  // namespace
