// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/recording_platform.h"
#include "ui/markup_text.h"
#include "ui/string_factory.h"

namespace Kiva {
namespace {

bool mayBeEmpty(TextId id) {
  return id == TextId::kProductBanner || id == TextId::kEmpty;
}

TEST(Catalogue, HasATextForEveryNumber) {
  for (unsigned id = 0; id < kTextCount; ++id) {
    const auto text = static_cast<TextId>(id);
    EXPECT_TRUE(mayBeEmpty(text) || *catalogueText(text) != '\0') << id;
  }
  EXPECT_STREQ(catalogueText(TextId::kEmpty), "");
  StringFactory* english = getStringFactory("en_US");
  EXPECT_STREQ(english->GetString(kTextCount), "");
  EXPECT_STREQ(english->GetString(0xffffffffu), "");
  EXPECT_EQ(getStringFactory("de_DE"), english) << "the factory in use serves every locale";
}

TEST(Catalogue, ScreensSayWhatTheirMenuEntriesSay) {
  using enum TextId;
  const std::pair<TextId, TextId> pairs[] = {
      {kShutDownRestartFooter, kShutDownRestart},
      {kConfigurePassword, kConfigurePasswordTitle},
      {kConfigureLockdownMode, kConfigureLockdownModeTitle},
      {kConfigureManagementNetwork, kConfigureManagementNetworkTitle},
      {kRestartManagementNetwork, kRestartManagementNetworkTitle},
      {kTestManagementNetwork, kTestManagementNetworkTitle},
      {kNetworkRestoreOptions, kNetworkRestoreOptionsTitle},
      {kResetSystemConfiguration, kResetSystemConfigurationTitle},
      {kNetworkAdapters, kNetworkAdaptersTitle},
      {kIPv4Configuration, kIPv4ConfigurationTitle},
      {kIPv6Configuration, kIPv6ConfigurationTitle},
      {kDnsConfiguration, kDnsConfigurationTitle},
      {kRestoreNetworkSettings, kRestoreNetworkSettingsTitle},
      {kRestoreStandardSwitch, kRestoreStandardSwitchTitle},
      {kRestoreXds, kRestoreXdsTitle},
  };
  for (const auto& [entry, title] : pairs) EXPECT_STREQ(catalogueText(entry), catalogueText(title));
}

/// A right pane is 36 columns by 17 rows on the smallest screen; where values stand above the
/// description, or progress below it, less is left.
TEST(Catalogue, DescriptionsFitTheRightPane) {
  using enum TextId;
  constexpr int kColumns = 36;
  const std::pair<TextId, int> rooms[] = {
      {kToPreventUnauthorizedAccessSetPassword, 13},
      {kLockdownModeAndAccess, 15},
      {kRestartingMayBeRequired, 17},
      {kToPerformBriefNetworkTest, 17},
      {kToViewNetworkRestoreOptions, 17},
      {kToViewTroubleshootingOptions, 17},
      {kAllSystemParametersWillBeReverted, 17},
      {kAllCustomExtensionsWillBeRemoved, 17},
      {kToViewOrModifyManagementNetwork, 4},
      {kAVlanIsAVirtualNetwork, 15},
      {kHostCanObtainIPv4Address, 11},
      {kDnsObtainedAutomatically, 8},
      {kDnsQueriesAppendSuffixes, 12},
      {kRestoringNetworkSettingsReverts, 13},
      {kManagementNetworkOntoNewVSwitch, 13},
      {kReconfigureXdsManagementPort, 13},
      {kManagementAgentsAre, 17},
  };
  for (const auto& [id, rows] : rooms) {
    EXPECT_LE(countLines(catalogueText(id), kColumns), rows) << catalogueText(id);
  }
}

class Banner : public TestSupport::OnRecordingHost {};

TEST_F(Banner, IsAskedForUntilTheHostAnswers) {
  driver->version = {"Halo", "8.0{x}", "6.1.0", 12345678};
  driver->failing = "GetVersion";
  EXPECT_STREQ(catalogueText(TextId::kProductBanner), "");
  driver->failing.clear();
  EXPECT_STREQ(catalogueText(TextId::kProductBanner), "Halo 8.0(x) (Tarn 6.1.0 Build 12345678)");
  driver->failing = "GetVersion";
  EXPECT_STREQ(catalogueText(TextId::kProductBanner), "Halo 8.0(x) (Tarn 6.1.0 Build 12345678)");
}

}  // namespace
}  // namespace Kiva
