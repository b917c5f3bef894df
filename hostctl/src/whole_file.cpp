// SPDX-License-Identifier: MIT
#include "hostctl/lib/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace HostCtl::Lib {

namespace fs = std::filesystem;

namespace {

constexpr const char* kBeside = ".kiva-";
constexpr const char* kRandom = "XXXXXX";

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

// A change of owner takes some bits of the mode away, so the mode comes last.
void putInPlace(const Descriptor& file, const std::string& from, const std::string& path,
                const FileAccess& access) {
  if (fchown(file.Get(), access.owner, access.group) != 0 || fchmod(file.Get(), access.mode) != 0 ||
      fsync(file.Get()) != 0 || rename(from.c_str(), path.c_str()) != 0)
    fail(path);
  syncFolder(fs::path(path).parent_path());
}

}  // namespace

FileAccess accessOf(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) fail(path);
  return {status.st_mode & 07777, status.st_uid, status.st_gid};
}

std::string readAll(const Descriptor& file, const std::string& path) {
  std::string content;
  char block[16384];
  while (true) {
    const ssize_t count = read(file.Get(), block, sizeof block);
    if (count == 0) return content;
    if (count > 0) content.append(block, static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) fail(path);
  }
}

std::string readFile(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) fail(path);
  return readAll(file, path);
}

void syncFolder(const std::string& folder) {
  const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) fsync(opened.Get());
}

bool isHalfWritten(std::string_view name) {
  const std::size_t random = std::strlen(kRandom);
  return name.size() > random && name.substr(0, name.size() - random).ends_with(kBeside);
}

void publishFile(const std::string& from, const std::string& path, const FileAccess& access) {
  const Descriptor file(open(from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
  if (!file) fail(from);
  putInPlace(file, from, path, access);
}

void replaceFile(const std::string& path, std::string_view text, mode_t mode) {
  fs::create_directories(fs::path(path).parent_path());
  std::string beside = path + kBeside + kRandom;
  const Descriptor file(mkostemp(beside.data(), O_CLOEXEC));
  if (!file) fail(path);
  try {
    writeWhole(file, text, path);
    putInPlace(file, beside, path, {.mode = mode});
  } catch (const std::system_error&) {
    unlink(beside.c_str());
    throw;
  }
}

void overwriteFile(const std::string& path, std::string_view text) {
  const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
  if (!file) fail(path);
  writeWhole(file, text, path);
  if (fsync(file.Get()) != 0) fail(path);
}

std::string besideOf(const std::string& path) {
  return path + ".kiva-new";
}

void changeFile(const std::string& path, std::string_view text) {
  const std::string file = fs::canonical(path);
  const std::string beside = besideOf(file);
  try {
    overwriteFile(beside, text);
    publishFile(beside, file, accessOf(file));
  } catch (const std::system_error& error) {
    unlink(beside.c_str());
    if (error.code() != std::errc::device_or_resource_busy) throw;
    overwriteFile(file, text);
  }
}

}  // namespace HostCtl::Lib
