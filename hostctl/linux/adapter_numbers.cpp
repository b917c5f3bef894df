// SPDX-License-Identifier: MIT
#include "linux/adapter_numbers.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>

#include "hostctl/lib/descriptor.h"
#include "linux/network/wait.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::Descriptor;

namespace {

using Names = std::vector<std::string>;
constexpr const char* kFile = "/run/kiva-adapters";
constexpr std::chrono::seconds kTurnWithin{1};

bool contains(const Names& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// The names that were added.
Names add(Names& names, const Names& more) {
  Names added;
  for (const auto& name : more)
    if (!contains(names, name)) {
      names.push_back(name);
      added.push_back(name);
    }
  return added;
}

Names namesIn(const Files& files) {
  Names names;
  const std::string text = files.Read(kFile).value_or("");
  for (const auto line : lines(text))
    if (!line.empty()) names.emplace_back(line);
  return names;
}

/// Open and ours alone; not where this program may not write it, or its turn does not come.
Descriptor openForNumbers(const Files& files) {
  constexpr mode_t kReadable = 0644;
  Descriptor file(open(files.Path(kFile).c_str(),
                       O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kReadable));
  if (file && !waitFor(kTurnWithin, [&] { return flock(file.Get(), LOCK_EX | LOCK_NB) == 0; }))
    file.Close();
  return file;
}

void agree(const Files& files, Names& seen, const Names& present) {
  const Descriptor file = openForNumbers(files);
  add(seen, namesIn(files));
  std::string text;
  for (const auto& name : add(seen, present)) text += name + "\n";
  // What cannot be written is numbered for this program all the same.
  if (file && !text.empty() && write(file.Get(), text.data(), text.size()) < 0) return;
}

}  // namespace

std::vector<std::string> numberedAdapters(const Files& files,
                                          const std::vector<std::string>& present) {
  static std::mutex mutex;
  static std::map<std::string, Names> ofMachines;
  const std::lock_guard alone(mutex);
  Names& seen = ofMachines[files.Path("/")];
  const bool allKnown = std::all_of(present.begin(), present.end(),
                                    [&](const auto& name) { return contains(seen, name); });
  if (!allKnown) agree(files, seen, present);
  return seen;
}

}  // namespace HostLinux
