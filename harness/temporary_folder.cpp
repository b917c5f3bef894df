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

std::filesystem::path TemporaryFolder::Place(const std::string& name) const {
  const auto path = path_ / std::filesystem::path(name).relative_path();
  std::filesystem::create_directories(path.parent_path());
  return path;
}

void TemporaryFolder::Write(const std::string& name, const std::string& text) const {
  std::ofstream(Place(name)) << text;
}

void TemporaryFolder::Link(const std::string& name, const std::string& target) const {
  std::filesystem::create_symlink(target, Place(name));
}

}  // namespace Harness
