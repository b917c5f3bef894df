// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "linux/files.h"

namespace HostLinux {

/// A systemd unit as the tools care about it. One that is masked counts as not installed, and so
/// does one that systemd only made up from an init script: those scripts are our own tools, which
/// ask for the unit.
struct Unit {
  std::string name;
  bool installed = false;
  bool active = false;
  bool enabled = false;
  bool operator==(const Unit&) const = default;
};

/// Whether systemd runs this machine.
bool hasSystemd(const Files& files);

/// Whether `name` may stand among systemctl's arguments as the name of one unit: no option, no
/// pattern, no path.
bool isUnitName(std::string_view name);

/// Both throw HostCtlException for `operation` when systemd does not answer or refuses, or does not
/// end in time (twenty seconds for a question, two minutes for a change).
Unit readUnit(const std::string& operation, const std::string& name);

/// Has systemd do what `arguments` say to what `object` names in a failure.
void systemctl(const std::string& operation, const std::string& object,
               const std::vector<std::string>& arguments);

/// Has systemd forget that these failed or were started often, so that it does not refuse the next
/// start because of that.
void forgetFailures(const std::vector<std::string>& names);

/// The unit in what `systemctl show` prints about it, KEY=VALUE lines.
Unit parseUnit(const std::string& name, std::string_view text);

}  // namespace HostLinux
