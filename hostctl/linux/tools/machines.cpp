// SPDX-License-Identifier: MIT
#include "linux/tools/machines.h"

#include "hostctl/lib/exception.h"
#include "linux/machines_module.h"
#include "linux/machines_service.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostSeam::MachineStop;

namespace {

constexpr const char* kOperation = "StopMachines";

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

void stopMachines(const Files& files, StopManner manner, const MachineTimes& times) {
  const MachinesService service(files, kOperation);
  const auto stop = service.Find<StopMachinesFunction>(kStopMachinesSymbol);
  void* connection = stop ? service.Open(times.answer) : nullptr;
  if (!connection) return;
  const MachineStopRequest request{manner, readMachineSettings(files).order, times.shutDown};
  const auto stopped = service.Ask<StoppedMachines>(
      times.shutDown + times.answer,
      [=](StoppedMachines& answer) { stop(connection, request, answer); });
  if (!stopped.left.empty())
    throw HostCtlException(kOperation, joined(stopped.left), "still running");
}

}  // namespace

void stopManagedMachines(const Files& files, const MachineTimes& times) {
  stopMachines(files, StopManner::AskInTurn, times);
}

void powerOffMachines(const Files& files, MachineStop how, const MachineTimes& times) {
  stopMachines(files, how == MachineStop::Ask ? StopManner::AskTogether : StopManner::Destroy,
               times);
}

}  // namespace HostLinux
