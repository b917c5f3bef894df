// SPDX-License-Identifier: MIT
#include "linux/os_version.h"

#include <limits>

#include "linux/text.h"

namespace HostLinux {

namespace {

unsigned buildNumber(std::string_view text) {
  const auto number = parseInteger(text);
  const bool fits = number && *number >= 0 && *number <= std::numeric_limits<unsigned>::max();
  return fits ? static_cast<unsigned>(*number) : 0;
}

std::string_view afterHash(std::string_view kernelVersion) {
  const auto hash = kernelVersion.find('#');
  if (hash == std::string_view::npos) return {};
  const std::string_view rest = kernelVersion.substr(hash + 1);
  return rest.substr(0, rest.find_first_not_of("0123456789"));
}

std::string firstOf(const Assignments& assignments, std::initializer_list<const char*> keys) {
  for (const char* key : keys)
    if (std::string value = valueOf(assignments, key); !value.empty()) return value;
  return {};
}

}  // namespace

HostCtl::System::VersionRecord versionFrom(std::string_view osRelease, std::string kernelRelease,
                                           std::string_view kernelVersion) {
  const Assignments os = parseAssignments(osRelease);
  HostCtl::System::VersionRecord record;
  record.productName = firstOf(os, {"NAME", "PRETTY_NAME"});
  if (record.productName.empty()) record.productName = "Linux";
  record.version = firstOf(os, {"VERSION_ID", "VERSION"});
  if (record.version.empty()) record.version = kernelRelease;
  record.kernelVersion = std::move(kernelRelease);
  record.buildNumber = buildNumber(valueOf(os, "BUILD_ID"));
  if (record.buildNumber == 0) record.buildNumber = buildNumber(afterHash(kernelVersion));
  return record;
}

HostCtl::System::VersionRecord readVersion(const Files& files) {
  auto text = files.Read("/etc/os-release");
  if (!text) text = files.Read("/usr/lib/os-release");
  return versionFrom(text.value_or(""), files.ReadLine("/proc/sys/kernel/osrelease"),
                     files.ReadLine("/proc/sys/kernel/version"));
}

}  // namespace HostLinux
