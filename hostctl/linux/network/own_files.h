// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "linux/files.h"
#include "linux/network/ini_file.h"
#include "linux/network/network_lock.h"

namespace HostLinux {

/// What a file of ours shall hold; without a text it shall not be there. `name` has no folder
/// ("10-kiva-tarn0.network").
struct FileChange {
  std::string name;
  std::optional<std::string> text;
  bool operator==(const FileChange&) const = default;
};

/// The name of our file about `subject` (an interface), of kind "network" or "netdev". Throws
/// HostCtlException for a subject that is no interface's name.
std::string ownFileName(const std::string& subject, const std::string& kind);

/// Devices before what refers to them, and gone after it; a link leaves a bridge before another one
/// becomes its port; otherwise the caller's order. So wherever the power is cut, what networkd
/// finds refers to devices that there are and makes no loop.
std::vector<FileChange> inWritingOrder(std::vector<FileChange> changes);

/// Makes the folder, an absolute path, and those above it where they are missing, for networkd to
/// read whatever the umask.
void makeReadableFolder(const std::string& folder);

/// Kiva's own files in networkd's folder, which are all that Kiva keeps about the network.
/// Everything that changes the network writes them through Change; files of others are never
/// touched.
class OwnFiles {
 public:
  /// What makes the written files the network's configuration; it throws when they are refused. It
  /// is called once more, never a copy of it, when the old files are put back.
  using TakeOver = std::function<void()>;

  /// `files` outlives it.
  explicit OwnFiles(const Files& files) : files_(files) {}

  /// The names of those that networkd reads, in natural order.
  std::vector<std::string> List() const;
  /// A file that is not there is empty.
  IniFile Read(const std::string& name) const;
  bool Exists(const std::string& name) const;

  /// Keeps others from changing the network: whoever reads files to write them anew holds this from
  /// before the reading. Takes away what a killed write left of one. Waits for a change under way,
  /// and longer than one takes that is put back. Throws HostCtlException.
  NetworkLock Lock(std::chrono::milliseconds turnWithin = std::chrono::seconds(40)) const;

  /// Whether files that say already what they shall say are in force.
  enum class Equal { InForce, Unheard };

  /// Writes those of `changes` that differ from what is there and has them taken over; false when
  /// none differs, and then nothing was touched, unless networkd never heard of the files, because
  /// whoever wrote them was killed. What is there and cannot be read is not overwritten. When
  /// writing or the take-over fails, the old files are put back, taken over where the new ones
  /// were, and HostCtlException of `operation` and `object` says why.
  bool Change(const std::string& operation, const std::string& object,
              std::vector<FileChange> changes, const TakeOver& takeOver,
              Equal equal = Equal::InForce) const;
  /// The same with networkd's own reload.
  bool Change(const std::string& operation, const std::string& object,
              std::vector<FileChange> changes) const;

 private:
  std::optional<std::string> Text(const std::string& name) const;
  void DemandReadable(const std::string& operation, const std::string& object,
                      const std::string& name) const;
  void RemoveHalfWritten() const;
  void Write(const FileChange& change) const;
  void PutBack(const std::vector<FileChange>& old, const TakeOver* takeOver) const;

  const Files& files_;
};

}  // namespace HostLinux
