// SPDX-License-Identifier: MIT
#include "linux/adapter_numbers.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <system_error>

#include "hostctl/lib/descriptor.h"
#include "linux/folder_lock.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;

namespace {

using Names = std::vector<std::string>;
constexpr const char* kFile = "/run/kiva-adapters";
constexpr const char* kLock = "/run/kiva-adapters.lock";
constexpr std::chrono::seconds kTurnWithin{1};

bool contains(const Names& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

void add(Names& names, const Names& more) {
  for (const auto& name : more)
    if (!contains(names, name)) names.push_back(name);
}

Names namesIn(std::string_view text) {
  Names names;
  for (const auto line : lines(text))
    if (!line.empty()) names.emplace_back(line);
  return names;
}

/// Nothing where this program may not have it, or its turn does not come.
Descriptor lockNumbers(const Files& files) try {
  return lockFile(files.Path(kLock), kTurnWithin);
} catch (const std::system_error&) {
  return {};
}

/// All of it or nothing: half a name would be another adapter's.
bool append(const Files& files, const std::string& text) {
  constexpr mode_t kReadable = 0644;
  const Descriptor file(open(files.Path(kFile).c_str(),
                             O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kReadable));
  struct stat before {};
  if (!file || fstat(file.Get(), &before) != 0) return false;
  const auto written = write(file.Get(), text.data(), text.size());
  if (written == static_cast<ssize_t>(text.size())) return true;
  [[maybe_unused]] const int cut = ftruncate(file.Get(), before.st_size);
  return false;
}

/// Puts those in the file first and those that only this program has numbered behind them; false
/// where the others could not be told of these.
bool agree(const Files& files, Names& seen, const Names& present) {
  const Descriptor alone = lockNumbers(files);
  const std::string file = files.Read(kFile).value_or("");
  Names all;
  add(all, namesIn(file));
  const std::size_t known = all.size();
  add(all, seen);
  add(all, present);
  std::string text = file.empty() || file.ends_with('\n') ? "" : "\n";
  for (std::size_t i = known; i < all.size(); ++i) text += all[i] + "\n";
  const bool agreed = known == all.size() || (alone && append(files, text));
  seen = std::move(all);
  return agreed;
}

struct Numbers {
  Names seen;
  bool agreed = true;
};

}  // namespace

std::vector<std::string> numberedAdapters(const Files& files,
                                          const std::vector<std::string>& present) {
  static std::mutex mutex;
  static std::map<std::string, Numbers> ofMachines;
  const std::lock_guard alone(mutex);
  auto& [seen, agreed] = ofMachines[files.Path("/")];
  const bool allKnown =
      std::all_of(present.begin(), present.end(),
                  [&, &seen = seen](const auto& name) { return contains(seen, name); });
  if (!allKnown || !agreed) agreed = agree(files, seen, present);
  return seen;
}

}  // namespace HostLinux
