// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Bench {

/// The middle one of some measurements; nothing where nothing was measured.
std::optional<double> median(std::vector<double> values);

/// One line of the table: the figures of the bare program, of kiva-demo and of kiva, and what is to
/// be reached. A figure that could not be taken is absent and prints as a dash.
struct Row {
  std::string what;
  std::optional<double> bare;
  std::optional<double> demo;
  std::optional<double> kiva;
  std::string target;
};

void printHead(const std::string& title);
void printRow(const Row& row);

}  // namespace Bench
