// SPDX-License-Identifier: MIT
#include "linux/machines_service.h"

#include <algorithm>

#include "hostctl/lib/exception.h"
#include "linux/machines_module.h"
#include "linux/text.h"

namespace HostLinux {

MachineSettings readMachineSettings(const Files& files) {
  MachineSettings settings;
  const auto file = parseAssignments(files.Read("/etc/corvo/virtualisation").value_or(""));
  if (const std::string uri = valueOf(file, "URI"); !uri.empty()) settings.uri = uri;
  const std::string order = valueOf(file, "ORDER");
  for (std::string_view rest = order; !rest.empty();) {
    const auto name = rest.substr(0, rest.find(','));
    rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    if (!trim(name).empty()) settings.order.emplace_back(trim(name));
  }
  return settings;
}

MachinesService::MachinesService(const Files& files, std::string operation)
    : operation_(std::move(operation)), uri_(readMachineSettings(files).uri) {}

Module& MachinesService::TheModule() {
  static Module module("kiva-machines");
  return module;
}

void MachinesService::Fail(const std::string& cause) const {
  throw HostCtl::Lib::HostCtlException(operation_, uri_, cause);
}

void* MachinesService::Open(std::chrono::milliseconds within) const {
  const auto open = Find<OpenMachinesFunction>(kOpenMachinesSymbol);
  if (!open) return nullptr;
  return Ask<OpenedMachines>(within,
                             [open, uri = uri_](OpenedMachines& opened) { open(uri, opened); })
      .connection;
}

}  // namespace HostLinux
