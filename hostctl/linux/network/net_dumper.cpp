// SPDX-License-Identifier: MIT
#include "linux/network/net_dumper.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/run_program.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

constexpr const char* kOperation = "DisableNetDumper";
constexpr const char* kTargets = "/sys/kernel/config/netconsole/";
constexpr const char* kCrashDumps = "/etc/default/kdump-tools";
constexpr std::chrono::seconds kUnloadedWithin{10};

/// The kernel's own files are neither cut nor synced.
void tellKernel(const std::string& path, std::string_view word) {
  const HostCtl::Lib::Descriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (!file || write(file.Get(), word.data(), word.size()) < 0)
    throw std::system_error(errno, std::generic_category(), path);
}

/// A target that is off refuses to be told so.
void disableTargets(const Files& files) {
  for (const auto& target : files.List(kTargets)) {
    const std::string enabled = kTargets + target + "/enabled";
    if (files.ReadLine(enabled) == "1") tellKernel(files.Path(enabled), "0");
  }
}

/// Targets that its options name are no files of the kernel's; they go with the module.
void unloadWithOptions(const Files& files) {
  const bool isLoaded = files.Exists("/sys/module/netconsole/initstate");
  if (!isLoaded || !files.List(kTargets).empty()) return;
  const auto result = runProgram(
      {files.Path("/sbin/modprobe"), {"modprobe", "--remove", "netconsole"}}, kUnloadedWithin);
  if (result.status != 0) throw HostCtlException(kOperation, "netconsole", causeOf(result));
}

void keepDumpsHere(const Files& files) {
  const std::string old = files.Read(kCrashDumps).value_or("");
  std::string text = old;
  for (const char* elsewhere : {"SSH", "NFS", "FTP"})
    if (!valueOf(parseAssignments(text), elsewhere).empty())
      text = withAssignment(text, elsewhere, "");
  if (text != old) HostCtl::Lib::changeFile(files.Path(kCrashDumps), text);
}

}  // namespace

void disableNetDumper(const Files& files) try {
  disableTargets(files);
  unloadWithOptions(files);
  keepDumpsHere(files);
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, "the network dumper", error.what());
}

}  // namespace HostLinux
