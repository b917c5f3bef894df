// SPDX-License-Identifier: MIT
#include "linux/tools/machines.h"

#include <future>
#include <thread>

#include "hostctl/lib/exception.h"
#include "linux/loadable_module.h"
#include "linux/text.h"
#include "linux/tools/machine_stop.h"

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

/// What `work` answers, or nothing when it takes longer than `limit`. Work that hangs is left
/// behind on its thread: libvirt has no other way to give up.
template <class Work>
auto answerWithin(std::chrono::milliseconds limit, Work work) {
  using Answer = decltype(work());
  std::packaged_task<Answer()> task(std::move(work));
  auto answer = task.get_future();
  std::thread(std::move(task)).detach();
  if (answer.wait_for(limit) != std::future_status::ready) return std::optional<Answer>();
  return std::optional(answer.get());
}

template <class Answer>
Answer checked(const std::optional<Answer>& answer, const std::string& uri) {
  if (!answer)
    throw HostCtlException(kOperation, uri, "the virtualisation service does not answer");
  if (!answer->error.empty()) throw HostCtlException(kOperation, uri, answer->error);
  return *answer;
}

void stopMachines(const Files& files, StopManner manner, const MachineTimes& times) {
  static Module module("kiva-machines");
  const auto open = module.Find<OpenMachinesFunction>(kOpenMachinesSymbol);
  const auto stop = module.Find<StopMachinesFunction>(kStopMachinesSymbol);
  if (!open || !stop) return;
  const auto [uri, order] = readMachineSettings(files);
  const auto opened = checked(answerWithin(times.answer,
                                           [open, uri = uri] {
                                             OpenedMachines answer;
                                             open(uri, answer);
                                             return answer;
                                           }),
                              uri);
  if (!opened.connection) return;
  const MachineStopRequest request{manner, order, times.shutDown};
  const auto stopped = checked(answerWithin(times.shutDown + times.answer,
                                            [stop, request, connection = opened.connection] {
                                              StoppedMachines answer;
                                              stop(connection, request, answer);
                                              return answer;
                                            }),
                               uri);
  if (!stopped.left.empty())
    throw HostCtlException(kOperation, joined(stopped.left), "still running");
}

}  // namespace

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

void stopManagedMachines(const Files& files, const MachineTimes& times) {
  stopMachines(files, StopManner::AskInTurn, times);
}

void powerOffMachines(const Files& files, MachineStop how, const MachineTimes& times) {
  stopMachines(files, how == MachineStop::Ask ? StopManner::AskTogether : StopManner::Destroy,
               times);
}

}  // namespace HostLinux
