// SPDX-License-Identifier: MIT
#include "console/fact_format.h"

#include <gtest/gtest.h>

namespace {

using namespace Kiva;

constexpr std::uint64_t kMiB = 1ULL << 20, kGiB = 1ULL << 30, kTiB = 1ULL << 40, kPiB = 1ULL << 50;

TEST(FactFormat, MemorySizes) {
  struct Case {
    std::uint64_t bytes;
    const char* keyword;
    const char* welcome;
  };
  const Case cases[] = {
      {0, "0 MB", "0 MiB Memory"},
      {kMiB, "256 MB", "1 MiB Memory"},
      {768 * kMiB, "768 MB", "768 MiB Memory"},
      {kGiB - 1, "1 GB", "1024 MiB Memory"},
      {kGiB, "1 GB", "1 GiB Memory"},
      {16 * kGiB, "16 GB", "16 GiB Memory"},
      {16 * kGiB + 1, "16.2 GB", "16 GiB Memory"},
      {16325 * kMiB, "16 GB", "15.9 GiB Memory"},
      {49 * kGiB / 2, "24.5 GB", "24.5 GiB Memory"},
      {3 * kTiB / 2, "1.5 TB", "1.5 TiB Memory"},
      {2000 * kGiB, "1.9 TB", "2 TiB Memory"},
      {5 * kPiB, "5 PB", "5 PiB Memory"},
      {3000 * kPiB, "3000 PB", "3000 PiB Memory"},
  };
  for (const Case& one : cases) {
    EXPECT_EQ(memoryText(one.bytes), one.keyword) << one.bytes;
    EXPECT_EQ(welcomeMemoryText(one.bytes), one.welcome) << one.bytes;
  }
}

TEST(FactFormat, CertificateDigests) {
  const std::pair<std::string, std::string> cases[] = {
      {"SHA1 Fingerprint=AB:CD:0e\n", "AB:CD:0e"},
      {"sha256 Fingerprint=aB:CD\nmore", "aB:CD"},
      {"SHA1 Fingerprint= AB", "AB"},
      {"SHA1 Fingerprint=" + std::string(300, 'F'), std::string(255, 'F')},
      {"SHA1 Fingerprint=", ""},
      {"SHA Fingerprint=AB", ""},
      {"MD5 Fingerprint=AB", ""},
      {"unable to load certificate", ""},
      {"", ""},
  };
  for (const auto& [output, digest] : cases) EXPECT_EQ(certificateDigest(output), digest) << output;
}

TEST(FactFormat, HostKeyFingerprints) {
  EXPECT_EQ(hostKeyFingerprint("3072 SHA256:abc root@host (RSA)\n"), "SHA256:abc");
  EXPECT_EQ(hostKeyFingerprint(" 1024\tde:ad "), "de:ad");
  EXPECT_EQ(hostKeyFingerprint("3072"), "");
}

}  // namespace
