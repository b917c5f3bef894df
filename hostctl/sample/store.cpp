// SPDX-License-Identifier: MIT
#include "sample/store.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <nlohmann/json.hpp>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "sample/file_tools.h"
#include "sample/journal_line.h"
#include "sample/json_node.h"
#include "sample/sample_host.h"

namespace HostSample {

using HostCtl::Lib::Descriptor;

namespace {

using HostCtl::Lib::HostCtlException;

Json parse(const std::string& text) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
    const auto line = 1 + std::count(text.begin(), end, '\n');
    throw KeyError("line " + std::to_string(line) + " is not JSON");
  } catch (const Json::exception&) {
    throw KeyError("a number is too large");
  }
}

}  // namespace

struct Store::Content {
  Json json;
  HostState state;
  Stamp stamp;
};

bool Store::Stamp::operator==(const Stamp& other) const {
  return inode == other.inode && size == other.size && modified.tv_sec == other.modified.tv_sec &&
         modified.tv_nsec == other.modified.tv_nsec;
}

Store::Stamp Store::StampOf(const struct stat& status) {
  return {status.st_ino, status.st_size, status.st_mtim};
}

Store::Content Store::Read() const try {
  const Descriptor file(open(file_.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (!file || fstat(file.Get(), &status) != 0)
    throw std::system_error(errno, std::generic_category(), file_.string());
  Json json = parse(readAll(file, file_));
  HostState state = readHostState(json);
  return {std::move(json), std::move(state), StampOf(status)};
} catch (const KeyError& error) {
  throw SampleHostError(oneLine(file_.string() + ": " + error.what()));
} catch (const std::system_error& error) {
  throw SampleHostError(oneLine(error.what()));
}

Store::Store(std::filesystem::path file) : file_(std::move(file)) {
  Content content = Read();
  state_ = std::move(content.state);
  stamp_ = content.stamp;
}

void Store::Refresh() {
  struct stat status {};
  const Stamp now = stat(file_.c_str(), &status) == 0 ? StampOf(status) : Stamp{};
  if (now == stamp_) return;
  stamp_ = now;
  try {
    Content content = Read();
    state_ = std::move(content.state);
    stamp_ = content.stamp;
    trouble_.clear();
  } catch (const SampleHostError& error) {
    trouble_ = error.what();
  }
}

const HostState& Store::State() {
  Refresh();
  if (!trouble_.empty()) throw HostCtlException(trouble_);
  return state_;
}

const HostState& Store::LastGoodState() noexcept {
  Refresh();
  return state_;
}

bool Store::Change(const std::function<bool(Json&)>& change) {
  std::filesystem::path lockFile = file_;
  lockFile += ".lock";
  try {
    const FileLock lock(lockFile);
    Json json = Read().json;
    if (!change(json)) return false;
    readHostState(json);
    replaceFile(file_, json.dump(2) + "\n");
    return true;
  } catch (const HostCtlException&) {
    throw;
  } catch (const std::exception& error) {
    throw HostCtlException(oneLine(error.what()));
  }
}

}  // namespace HostSample
