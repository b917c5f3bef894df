// SPDX-License-Identifier: MIT
#include "linux/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "hostctl/lib/descriptor.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMostBytes = 1 << 20;

std::optional<std::string> readAll(int descriptor) {
  std::string text;
  char block[4096];
  while (text.size() < kMostBytes) {
    const ssize_t count = read(descriptor, block, sizeof block);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    text.append(block, static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace

bool Files::Exists(const std::string& path) const {
  return access(Path(path).c_str(), F_OK) == 0;
}

std::optional<std::string> Files::Read(const std::string& path) const {
  const Descriptor file(open(Path(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat state {};
  if (!file || fstat(file.Get(), &state) != 0 || !S_ISREG(state.st_mode)) return std::nullopt;
  return readAll(file.Get());
}

std::string Files::ReadLine(const std::string& path) const {
  return std::string(trim(Read(path).value_or("")));
}

std::vector<std::string> Files::List(const std::string& path) const {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(Path(path), error), end; !error && entry != end;
       entry.increment(error))
    names.push_back(entry->path().filename().string());
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    return strverscmp(a.c_str(), b.c_str()) < 0;
  });
  return names;
}

std::string Files::LinkName(const std::string& path) const {
  std::error_code error;
  return fs::read_symlink(Path(path), error).filename().string();
}

std::string Files::RealPath(const std::string& path) const {
  std::error_code error;
  return fs::canonical(Path(path), error).string();
}

}  // namespace HostLinux
