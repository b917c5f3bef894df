// SPDX-License-Identifier: MIT
#include "linux/tools/live_core.h"

#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "linux/files.h"
#include "linux/run_program.h"
#include "linux/staging_folder.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostSeam::LiveCore;
namespace fs = std::filesystem;

namespace {

constexpr const char* kDebugger = "/usr/bin/gdb";
constexpr const char* kStaged = "core";
constexpr std::size_t kLongestName = 15;

[[noreturn]] void fail(const LiveCore& core, const std::string& cause) {
  throw HostCtlException("WriteLiveCore", core.process, cause);
}

/// A value of /proc/PID/status, such as the kibibytes of "VmRSS".
std::string statusOf(pid_t process, std::string_view key) {
  const auto text = Files().Read("/proc/" + std::to_string(process) + "/status").value_or("");
  for (const std::string_view line : lines(text))
    if (line.starts_with(key) && line.substr(key.size()).starts_with(":"))
      return std::string(words(line.substr(key.size() + 1)).at(0));
  return {};
}

/// Anybody may give a process of theirs any name; the debugger goes to none but root's.
pid_t findProcess(const LiveCore& core) {
  for (const std::string& name : Files().List("/proc")) {
    const auto number = parseInteger(name);
    if (number && *number != getpid() &&
        Files().ReadLine("/proc/" + name + "/comm") == core.process.substr(0, kLongestName) &&
        statusOf(static_cast<pid_t>(*number), "Uid") == "0")
      return static_cast<pid_t>(*number);
  }
  fail(core, "no process of root has this name");
}

std::uintmax_t memoryOf(pid_t process) {
  const auto kibibytes = parseInteger(statusOf(process, "VmRSS")).value_or(0) +
                         parseInteger(statusOf(process, "VmSwap")).value_or(0);
  return static_cast<std::uintmax_t>(kibibytes) * 1024;
}

/// The debugger says that it has written a core also when the disk was too small for all of it. A
/// whole core has every segment that its header tells of.
bool isWholeCore(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  ElfW(Ehdr) header{};
  file.read(reinterpret_cast<char*>(&header), sizeof header);
  if (!file || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_type != ET_CORE)
    return false;
  const std::uintmax_t size = fs::file_size(path);
  file.seekg(static_cast<std::streamoff>(header.e_phoff));
  for (int i = 0; i < header.e_phnum; ++i) {
    ElfW(Phdr) segment{};
    file.read(reinterpret_cast<char*>(&segment), sizeof segment);
    if (!file || segment.p_offset > size || segment.p_filesz > size - segment.p_offset)
      return false;
  }
  return true;
}

/// Nothing of the arguments becomes a command of the debugger: it writes a file whose name is
/// always the same, into the folder in which it is started.
ProgramResult runDebugger(pid_t process, const std::string& folder, std::uintmax_t limit,
                          std::chrono::milliseconds time) {
  return runProgram(
      {"/usr/bin/prlimit",
       {"prlimit", "--fsize=" + std::to_string(limit), kDebugger, "--batch", "--nx",
        "--init-eval-command=set auto-load off", "--init-eval-command=set auto-solib-add off",
        "--cd=" + folder, "--pid=" + std::to_string(process),
        std::string("--eval-command=generate-core-file ") + kStaged}},
      time);
}

/// A debugger that is killed may leave its process stopped, or about to be.
void letGoOn(pid_t process, const std::string& stateBefore) {
  if (stateBefore != "T") kill(process, SIGCONT);
}

}  // namespace

std::string writeLiveCore(const LiveCore& core, const LiveCoreLimits& limits) try {
  if (access(kDebugger, X_OK) != 0) fail(core, std::string(kDebugger) + " is not installed");
  const pid_t process = findProcess(core);
  const std::uintmax_t limit = std::min(limits.bytes, fs::space(core.folder).available / 2);
  if (memoryOf(process) > limit) fail(core, "its memory is larger than a core may be here");
  const StagingFolder staging(core.folder);
  const std::string stateBefore = statusOf(process, "State");
  const auto result = runDebugger(process, staging.Path(), limit, limits.time);
  if (result.status != 0) {
    letGoOn(process, stateBefore);
    fail(core, causeOf(result));
  }
  if (!isWholeCore(staging.Path() + "/" + kStaged)) fail(core, "its core could not be written");
  const std::string name = core.output + ".core";
  staging.Publish(kStaged, name);
  return (fs::path(core.folder) / name).string();
} catch (const std::system_error& error) {
  fail(core, core.folder + ": " + error.code().message());
}

}  // namespace HostLinux
