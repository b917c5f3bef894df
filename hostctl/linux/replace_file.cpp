// SPDX-License-Identifier: MIT
#include "linux/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "hostctl/lib/descriptor.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;
namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& path) {
  throw std::system_error(errno, std::generic_category(), path);
}

void writeWhole(const Descriptor& file, std::string_view text, const std::string& path) {
  while (!text.empty()) {
    const ssize_t count = write(file.Get(), text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) fail(path);
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

void putInPlace(const Descriptor& file, const std::string& from, const std::string& path,
                mode_t mode) {
  if (fchmod(file.Get(), mode) != 0 || fsync(file.Get()) != 0 ||
      rename(from.c_str(), path.c_str()) != 0)
    fail(path);
  syncFolder(fs::path(path).parent_path());
}

void writeInto(const std::string& path, std::string_view text) {
  const Descriptor file(open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
  if (!file) fail(path);
  writeWhole(file, text, path);
  if (fsync(file.Get()) != 0) fail(path);
}

}  // namespace

void makeReadableFolder(const std::string& folder) {
  using enum fs::perms;
  if (fs::create_directories(folder))
    fs::permissions(folder, owner_all | group_read | group_exec | others_read | others_exec);
}

void syncFolder(const std::string& folder) {
  const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) fsync(opened.Get());
}

void publishFile(const std::string& from, const std::string& path, mode_t mode) {
  const Descriptor file(open(from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
  if (!file) fail(from);
  putInPlace(file, from, path, mode);
}

void replaceFile(const std::string& path, std::string_view text, mode_t mode) {
  fs::create_directories(fs::path(path).parent_path());
  std::string beside = path + ".XXXXXX";
  const Descriptor file(mkostemp(beside.data(), O_CLOEXEC));
  if (!file) fail(path);
  try {
    writeWhole(file, text, path);
    putInPlace(file, beside, path, mode);
  } catch (const std::system_error&) {
    unlink(beside.c_str());
    throw;
  }
}

void replaceFileOrText(const std::string& path, std::string_view text) try {
  replaceFile(path, text);
} catch (const std::system_error& error) {
  if (error.code() != std::errc::device_or_resource_busy) throw;
  writeInto(path, text);
}

}  // namespace HostLinux
