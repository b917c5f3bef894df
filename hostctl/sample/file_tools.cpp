// SPDX-License-Identifier: MIT
#include "sample/file_tools.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace HostSample {

using HostCtl::Lib::Descriptor;

namespace {

constexpr mode_t kFileMode = 0644;

[[noreturn]] void fail(const std::filesystem::path& path) {
  throw std::system_error(errno, std::generic_category(), path.string());
}

void writeAll(const Descriptor& file, std::string_view content, const std::filesystem::path& path) {
  while (!content.empty()) {
    const ssize_t written = write(file.Get(), content.data(), content.size());
    if (written < 0 && errno != EINTR) fail(path);
    if (written > 0) content.remove_prefix(static_cast<std::size_t>(written));
  }
}

mode_t modeOf(const std::filesystem::path& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : kFileMode;
}

Descriptor openForWriting(const std::filesystem::path& path) {
  Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kFileMode));
  if (!file) fail(path);
  return file;
}

}  // namespace

FileLock::FileLock(const std::filesystem::path& path)
    : file_(open(path.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, kFileMode)) {
  if (!file_) fail(path);
  while (flock(file_.Get(), LOCK_EX) != 0)
    if (errno != EINTR) fail(path);
}

void createFile(const std::filesystem::path& path, std::string_view content) {
  const Descriptor file = openForWriting(path);
  writeAll(file, content, path);
}

void replaceFile(const std::filesystem::path& path, std::string_view content) {
  std::filesystem::path beside = path;
  beside += ".new";
  {
    const Descriptor file = openForWriting(beside);
    writeAll(file, content, beside);
    if (fchmod(file.Get(), modeOf(path)) != 0 || fsync(file.Get()) != 0) fail(beside);
  }
  if (rename(beside.c_str(), path.c_str()) != 0) fail(path);
}

std::filesystem::path programFolder() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

}  // namespace HostSample
