// SPDX-License-Identifier: MIT
#include "harness/temporary_folder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace Harness {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "kiva-test-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
}

void TemporaryFolder::Write(const std::string& name, const std::string& text) const {
  const auto path = path_ / name;
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path) << text;
}

}  // namespace Harness
