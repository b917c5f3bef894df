// SPDX-License-Identifier: MIT
#include "linux/network/ipv6_switch.h"

#include <algorithm>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/network/ip_file.h"
#include "linux/network/nic_reader.h"
#include "linux/network/own_files.h"
#include "linux/text.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;

namespace {

constexpr const char* kOperation = "SetTarnIpv6Enabled";
constexpr const char* kObject = "IPv6";
constexpr const char* kAll = "net.ipv6.conf.all.disable_ipv6";
constexpr const char* kDefault = "net.ipv6.conf.default.disable_ipv6";
constexpr const char* kKernelOption = "ipv6.disable=1";

bool kernelHasNone(const Files& files) {
  const std::string options = files.ReadLine("/proc/cmdline");
  const auto all = words(options);
  return std::find(all.begin(), all.end(), kKernelOption) != all.end();
}

void writeSwitch(const Files& files, bool enabled) {
  const auto old = files.Read(kIpv6SwitchFile);
  if (!old && ipv6ToBeOn(files) == enabled) return;
  const std::string text = withIpv6Switch(old.value_or(""), enabled);
  if (text != old) replaceFile(files.Path(kIpv6SwitchFile), text);
}

/// The management interface's file in the form that goes with the switch.
std::vector<FileChange> changedFile(const Files& files, const OwnFiles& own, bool enabled) {
  const auto nic = readManagementNic(files, kOperation);
  if (!nic) return {};
  const std::string name = ownFileName(nic->name, "network");
  IniFile file = own.Read(name);
  if (!own.Exists(name) || ipConfigIn(file).GetIpv6Enabled() == enabled) return {};
  setIpv6Half(file, enabled ? Ipv6Half::InForce : Ipv6Half::Kept);
  return {{name, file.Text()}};
}

}  // namespace

bool ipv6ToBeOn(const Files& files) {
  if (kernelHasNone(files)) return false;
  if (const auto set = files.Read(kIpv6SwitchFile))
    return valueOf(parseAssignments(*set), kAll) != "1";
  return files.ReadLine("/proc/sys/net/ipv6/conf/all/disable_ipv6") == "0";
}

std::string withIpv6Switch(std::string_view text, bool enabled) {
  std::string result(text);
  for (const char* key : {kAll, kDefault})
    if (const char* value = enabled ? "0" : "1"; valueOf(parseAssignments(result), key) != value)
      result = withAssignment(result, key, value);
  return result;
}

void writeIpv6Enabled(const Files& files, bool enabled) try {
  if (enabled && kernelHasNone(files))
    throw HostCtlException(kOperation, kObject,
                           std::string("the kernel was started with ") + kKernelOption);
  const OwnFiles own(files);
  const auto sole = own.Lock();
  const auto set = [&] { writeSwitch(files, enabled); };
  if (!own.Change(kOperation, kObject, changedFile(files, own, enabled), set)) set();
} catch (const std::system_error& error) {
  throw HostCtlException(kOperation, kObject, error.what());
}

}  // namespace HostLinux
