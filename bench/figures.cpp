// SPDX-License-Identifier: MIT
#include "bench/figures.h"

#include <algorithm>
#include <cstdio>

namespace Bench {
namespace {

std::string shown(std::optional<double> value, int decimals) {
  if (!value) return "-";
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", decimals, *value);
  return text;
}

std::string figure(std::optional<double> value) {
  const bool isWhole = value && *value == static_cast<double>(static_cast<long>(*value));
  return shown(value, isWhole ? 0 : 2);
}

std::string ratio(std::optional<double> value, std::optional<double> bare) {
  if (!value || !bare || *bare == 0) return "-";
  return shown(*value / *bare, 2);
}

}  // namespace

std::optional<double> median(std::vector<double> values) {
  if (values.empty()) return std::nullopt;
  const auto middle = values.begin() + static_cast<long>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

void printHead(const std::string& title) {
  std::printf("\n%-40s %9s %9s %6s %9s %6s  %s\n", title.c_str(), "bare", "kiva-demo", "ratio",
              "kiva", "ratio", "target");
}

void printRow(const Row& row) {
  std::printf("%-40s %9s %9s %6s %9s %6s  %s\n", row.what.c_str(), figure(row.bare).c_str(),
              figure(row.demo).c_str(), ratio(row.demo, row.bare).c_str(), figure(row.kiva).c_str(),
              ratio(row.kiva, row.bare).c_str(), row.target.c_str());
  std::fflush(stdout);
}

}  // namespace Bench
