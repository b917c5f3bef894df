// SPDX-License-Identifier: MIT
#include "console/fact_format.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <sstream>

#include "core/log.h"

namespace Kiva {

namespace {

constexpr std::uint64_t kMemoryStep = 256ULL << 20;
constexpr int kDigestBytes = 255;

struct Unit {
  std::uint64_t bytes;
  char letter;
};

/// The greatest unit that the number fills, from mega to peta.
Unit unitFor(std::uint64_t bytes) {
  Unit unit{1ULL << 20, 'M'};
  for (const char letter : {'G', 'T', 'P'}) {
    if (bytes / 1024 < unit.bytes) break;
    unit = {unit.bytes * 1024, letter};
  }
  return unit;
}

}  // namespace

std::string memoryText(std::uint64_t bytes) {
  bytes = (bytes / kMemoryStep + (bytes % kMemoryStep != 0)) * kMemoryStep;
  const Unit unit = unitFor(bytes);
  const unsigned long whole = bytes / unit.bytes;
  const std::uint64_t rest = bytes % unit.bytes;
  if (rest == 0) return formatted("%lu %cB", whole, unit.letter);
  const unsigned long tenths = rest * 10 / unit.bytes;
  return formatted("%lu.%lu %cB", whole, tenths, unit.letter);
}

std::string welcomeMemoryText(std::uint64_t bytes) {
  const Unit unit = unitFor(bytes);
  const float tenths = static_cast<float>(bytes) * 10 / static_cast<float>(unit.bytes);
  std::ostringstream text;
  text << std::round(tenths) / 10 << ' ' << unit.letter << "iB Memory";
  return text.str();
}

std::string certificateDigest(std::string openssl) {
  const auto label = std::find(openssl.begin(), openssl.end(), '=');
  std::transform(openssl.begin(), label, openssl.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  char digest[kDigestBytes + 1] = "";
  static_assert(kDigestBytes == 255);
  std::sscanf(openssl.c_str(), "sha%*u fingerprint=%255s", digest);
  return digest;
}

std::string hostKeyFingerprint(const std::string& sshKeygen) {
  std::istringstream words(sshKeygen);
  std::string size, fingerprint;
  words >> size >> fingerprint;
  return fingerprint;
}

}  // namespace Kiva
