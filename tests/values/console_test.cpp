// SPDX-License-Identifier: MIT
// The texts of the console: the catalogue's, and those that are made of facts.
#include <gtest/gtest.h>

#include <sstream>

#include "console/fact_format.h"
#include "console/log_table.h"
#include "console/network_summary.h"
#include "console/support_pages.h"
#include "console/welcome_layout.h"
#include "harness/hosts/machine.h"
#include "harness/hosts/recording_platform.h"
#include "ui/markup_text.h"
#include "ui/string_factory.h"

using namespace Kiva;

namespace {

constexpr std::uint64_t kMiB = 1ULL << 20, kGiB = 1ULL << 30, kTiB = 1ULL << 40, kPiB = 1ULL << 50;

TEST(FactFormat, MemorySizes) {
  const std::tuple<std::uint64_t, const char*, const char*> cases[] = {
      {0, "0 MB", "0 MiB Memory"},
      {kMiB, "256 MB", "1 MiB Memory"},
      {kGiB - 1, "1 GB", "1024 MiB Memory"},
      {kGiB, "1 GB", "1 GiB Memory"},
      {16 * kGiB, "16 GB", "16 GiB Memory"},
      {16 * kGiB + 1, "16.2 GB", "16 GiB Memory"},
      {16325 * kMiB, "16 GB", "15.9 GiB Memory"},
      {49 * kGiB / 2, "24.5 GB", "24.5 GiB Memory"},
      {3 * kTiB / 2, "1.5 TB", "1.5 TiB Memory"},
      {2000 * kGiB, "1.9 TB", "2 TiB Memory"},
      {3000 * kPiB, "3000 PB", "3000 PiB Memory"}};
  for (const auto& [bytes, keyword, welcome] : cases) {
    EXPECT_EQ(memoryText(bytes), keyword) << bytes;
    EXPECT_EQ(welcomeMemoryText(bytes), welcome) << bytes;
  }
}

TEST(FactFormat, CertificateDigestsAndHostKeyFingerprints) {
  const std::pair<std::string, std::string> cases[] = {
      {"SHA1 Fingerprint=AB:CD:0e\n", "AB:CD:0e"},
      {"sha256 Fingerprint=aB:CD\nmore", "aB:CD"},
      {"SHA1 Fingerprint= AB", "AB"},
      {"SHA1 Fingerprint=" + std::string(300, 'F'), std::string(255, 'F')},
      {"SHA1 Fingerprint=", ""},
      {"SHA Fingerprint=AB", ""},
      {"unable to load certificate", ""},
      {"", ""}};
  for (const auto& [output, digest] : cases) EXPECT_EQ(certificateDigest(output), digest) << output;
  EXPECT_EQ(hostKeyFingerprint("3072 SHA256:abc root@host (RSA)\n"), "SHA256:abc");
  EXPECT_EQ(hostKeyFingerprint(" 1024\tde:ad "), "de:ad");
  EXPECT_EQ(hostKeyFingerprint("3072"), "");
}

TEST(LogForDigit, WalksTheAvailableLogs) {
  using Row = std::optional<std::size_t>;
  const LogFlags some{true, false, true, true, false, true, false};
  const LogFlags all{true, true, true, true, true, true, true};
  const LogFlags none{};
  const std::vector<std::tuple<int, LogFlags, Row>> cases = {
      {1, some, 0}, {2, some, 2}, {4, some, 5}, {5, some, 4}, {9, some, 4},
      {0, some, 4}, {0, none, 0}, {3, none, 0}, {1, all, 0},  {7, all, 6},
      {8, all, {}}, {9, all, {}}, {0, all, {}}};
  for (const auto& [digit, flags, row] : cases) EXPECT_EQ(logForDigit(digit, flags), row) << digit;
}

TEST(SupportPages, EndAtDollarsAndKeepTheirHintsInTheLastRow) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"", {""}},
      {"one\ntwo", {"one\ntwo\n"}},
      {"#no\na\n$\nb\n", {"a\n", "b\n"}},
      {"$\n$x\n", {"", "", ""}},
      {std::string(1 << 20, 'x') + "\n$", {std::string(1 << 20, 'x') + "\n", ""}}};
  for (const auto& [file, expected] : cases) {
    std::istringstream stream(file);
    EXPECT_EQ(readSupportPages(stream), expected);
  }
  const std::vector<std::string> pages = {"a\nb\nc\nd\ne\n", "x {y\nz} w"};
  EXPECT_EQ(supportPageText(pages, 0, 10, 4), "a\nb\nc\n{color:white}<Page Down>{/color}");
  EXPECT_EQ(supportPageText(pages, 1, 10, 4), "x {y\nz} w\n\n\n{color:white}<Page Up>{/color}");
  EXPECT_EQ(supportPageText({"alone"}, 0, 10, 3), "alone");
}

TEST(NetworkSummary, LeavesTheDescriptionInSight) {
  using namespace HostCtl::Network;
  const IpConfig config = HostLinux::ipConfig(
      "dhcp 2001:db8:aaaa:bbbb:cccc:dddd:eeee:1/64 2001:db8::2/64 2001:db8::3/64");
  const std::vector<IpAddress> servers = {*parseIpAddress("10.0.0.1"), *parseIpAddress("fe80::1")};
  EXPECT_EQ(networkSummaryText("", config, servers, 60),
            "Hostname\nNot set\nIPv4 Address\nNot set\nNetwork identity acquired from DHCP server\n"
            "IPv6 Addresses\n2001:db8:aaaa:bbbb:cccc:dddd:eeee:1\n2001:db8::2 ...\n"
            "Primary DNS Server\n10.0.0.1\nAlternate DNS Server\nfe80::1");
  EXPECT_EQ(networkSummaryText("h", config, servers, 20).find("Alternate"), std::string::npos);
}

TEST(WelcomeLayout, NeverDrawsOverItsFooter) {
  for (int lines = 1; lines <= 100; ++lines)
    for (const bool warns : {false, true}) {
      const WelcomeLayout layout = layOutWelcome(80, lines, warns);
      EXPECT_EQ(layout.top.height + layout.bottom.height, lines);
      EXPECT_LE(layout.management.y + layout.management.height, std::max(layout.footer.y, 1))
          << lines;
      if (!warns || lines < 24) continue;
      EXPECT_LE(layout.warning.y + layout.warning.height, layout.footer.y) << lines;
      EXPECT_LE(layout.management.y + layout.management.height, layout.warning.y) << lines;
      EXPECT_GE(layout.warning.height, 3) << lines;
    }
}

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
