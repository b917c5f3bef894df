// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <mutex>
#include <string>

#include "sample/host_state.h"

namespace HostSample {

/// host.json of one sample host. The console, its children and whoever edits the file by hand share
/// it: reading follows the file on disk, and Change is the only way in which the program writes it.
/// Several processes may use the same file.
class Store {
 public:
  /// Throws SampleHostError when the file cannot be used; it is then as it was.
  explicit Store(std::filesystem::path file);

  /// The state that the file holds now. After the file has become unusable every call throws
  /// HostCtlException until it is mended.
  const HostState& State();
  /// The same, but the last usable state instead of an exception.
  const HostState& LastGoodState() noexcept;

  /// Copies of one part of these; they and Change are for any thread, the two above for a single
  /// one.
  template <typename Part>
  Part Get(Part HostState::*part) {
    const std::lock_guard lock(mutex_);
    return State().*part;
  }
  template <typename Part>
  Part GetLastGood(Part HostState::*part) {
    const std::lock_guard lock(mutex_);
    return LastGoodState().*part;
  }

  /// Under the lock that all users of the file share: reads it, lets `change` alter it, and
  /// replaces it unless `change` says that nothing is different. Returns what `change` said. Throws
  /// HostCtlException, also one that `change` throws, with the file as it was.
  bool Change(const std::function<bool(Json&)>& change);

  const std::filesystem::path& File() const { return file_; }

 private:
  /// What tells one content of the file from another.
  struct Stamp {
    ino_t inode = 0;
    off_t size = -1;
    timespec modified{};
    bool operator==(const Stamp& other) const;
  };
  static Stamp StampOf(const struct stat& status);
  struct Content;
  Content Read() const;
  void Refresh();

  std::filesystem::path file_;
  std::mutex mutex_;
  HostState state_;
  Stamp stamp_;
  std::string trouble_;
};

}  // namespace HostSample
