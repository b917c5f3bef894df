// SPDX-License-Identifier: MIT
#include "sample/backup.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <vector>

#include "hostctl/lib/exception.h"
#include "sample/file_tools.h"

namespace HostSample {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kKept = 10;
constexpr std::string_view kPrefix = "host-";

fs::path fileOf(const fs::path& folder, int number) {
  return folder / (std::string(kPrefix) + std::to_string(number) + ".json");
}

/// The numbers of the copies that are there, the oldest first.
std::vector<int> numbersIn(const fs::path& folder) {
  std::vector<int> numbers;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string stem = entry.path().stem().string();
    int number = 0;
    if (!stem.starts_with(kPrefix)) continue;
    std::from_chars(stem.data() + kPrefix.size(), stem.data() + stem.size(), number);
    if (entry.path() == fileOf(folder, number)) numbers.push_back(number);
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

}  // namespace

fs::path builtInSample() {
  return programFolder().parent_path() / "share/kiva-demo/sample";
}

std::string saveBackup(const fs::path& directory) try {
  const fs::path folder = directory / "backup";
  fs::create_directories(folder);
  std::vector<int> numbers = numbersIn(folder);
  numbers.push_back(numbers.empty() ? 1 : numbers.back() + 1);
  const fs::path copy = fileOf(folder, numbers.back());
  replaceFile(copy, readFile(directory / "host.json"));
  for (std::size_t i = 0; i + kKept < numbers.size(); ++i) fs::remove(fileOf(folder, numbers[i]));
  return copy.filename().string();
} catch (const std::system_error& error) {
  throw HostCtl::Lib::HostCtlException("backup.sh", directory.string(), error.what());
}

}  // namespace HostSample
