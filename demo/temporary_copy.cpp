// SPDX-License-Identifier: MIT
#include "demo/temporary_copy.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>
#include <vector>

#include "sample/backup.h"

namespace Demo {

namespace {

/// What the exit handler removes, and the process whose exit counts.
struct Copy {
  std::filesystem::path directory;
  pid_t owner = 0;
};

Copy& copyInUse() {
  static Copy copy;
  return copy;
}

void removeCopy() {
  std::error_code ignored;
  if (getpid() == copyInUse().owner) std::filesystem::remove_all(copyInUse().directory, ignored);
}

/// Where the copy may lie, the best place first: what is in memory is made and removed faster than
/// the first screen can tell.
std::vector<std::filesystem::path> places() {
  const char* chosen = std::getenv("TMPDIR");
  if (chosen != nullptr && *chosen != '\0') return {std::filesystem::absolute(chosen)};
  return {"/dev/shm", "/tmp"};
}

std::filesystem::path makeFreshDirectory() {
  std::string name;
  for (const auto& place : places()) {
    name = place / "kiva-demo.XXXXXX";
    if (mkdtemp(name.data()) != nullptr) return name;
  }
  throw std::system_error(errno, std::generic_category(), name);
}

}  // namespace

std::filesystem::path makeTemporaryCopy() {
  copyInUse() = {makeFreshDirectory(), getpid()};
  std::atexit(removeCopy);
  std::filesystem::copy(HostSample::builtInSample(), copyInUse().directory,
                        std::filesystem::copy_options::recursive);
  return copyInUse().directory;
}

}  // namespace Demo
