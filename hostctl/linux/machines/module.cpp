// SPDX-License-Identifier: MIT
#include <libvirt/libvirt.h>
#include <libvirt/virterror.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <thread>
#include <tuple>

#include "linux/machines_module.h"

namespace {

using namespace HostLinux;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLook{100};

struct Release {
  void operator()(virDomainPtr domain) const { virDomainFree(domain); }
  void operator()(virDomainPtr* list) const { std::free(list); }
};
using Machine = std::unique_ptr<virDomain, Release>;

struct Close {
  void operator()(virConnectPtr connection) const { virConnectClose(connection); }
};

bool isWithoutDaemon(const virError& error) {
  return error.code == VIR_ERR_SYSTEM_ERROR && error.domain == VIR_FROM_RPC && error.int1 == ENOENT;
}

std::string lastError() {
  return virGetLastErrorMessage();
}

std::vector<Machine> runningMachines(virConnectPtr connection, StopManner manner,
                                     std::string& error) {
  unsigned flags = VIR_CONNECT_LIST_DOMAINS_ACTIVE;
  if (manner == StopManner::AskInTurn) flags |= VIR_CONNECT_LIST_DOMAINS_AUTOSTART;
  virDomainPtr* list = nullptr;
  const int count = virConnectListAllDomains(connection, &list, flags);
  if (count < 0) error = lastError();
  const std::unique_ptr<virDomainPtr, Release> owner(list);
  std::vector<Machine> machines;
  for (int i = 0; i < count; ++i) machines.emplace_back(list[i]);
  return machines;
}

std::string nameOf(const Machine& machine) {
  return virDomainGetName(machine.get());
}

void sortBy(const std::vector<std::string>& order, std::vector<Machine>& machines) {
  const auto place = [&](const Machine& machine) {
    std::string name = nameOf(machine);
    const auto at = std::find(order.begin(), order.end(), name) - order.begin();
    return std::tuple(at, std::move(name));
  };
  std::sort(machines.begin(), machines.end(),
            [&](const Machine& a, const Machine& b) { return place(a) < place(b); });
}

bool isGone(const Machine& machine) {
  const int active = virDomainIsActive(machine.get());
  return active == 0 || (active < 0 && virGetLastErrorCode() == VIR_ERR_NO_DOMAIN);
}

void waitFor(const Machine& machine, Clock::time_point end) {
  while (!isGone(machine) && Clock::now() < end) std::this_thread::sleep_for(kLook);
}

void ask(const std::vector<Machine>& machines, StopManner manner, Clock::time_point end) {
  for (std::size_t i = 0; i < machines.size(); ++i) {
    virDomainShutdown(machines[i].get());
    if (manner != StopManner::AskInTurn) continue;
    const auto share = (end - Clock::now()) / static_cast<Clock::rep>(machines.size() - i);
    waitFor(machines[i], Clock::now() + share);
  }
  for (const Machine& machine : machines) waitFor(machine, end);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void kivaOpenMachines(const std::string& uri,
                                                                        OpenedMachines& opened) {
  virSetErrorFunc(nullptr, [](void*, virErrorPtr) {});
  opened.connection = virConnectOpen(uri.c_str());
  if (opened.connection) return;
  const virErrorPtr error = virGetLastError();
  if (!error || !isWithoutDaemon(*error)) opened.error = lastError();
}

extern "C" __attribute__((visibility("default"))) void kivaCountMachines(void* connection,
                                                                         CountedMachines& counted) {
  const std::unique_ptr<virConnect, Close> owner(static_cast<virConnectPtr>(connection));
  const int count = virConnectNumOfDomains(owner.get());
  if (count < 0) counted.error = lastError();
  counted.running = std::max(count, 0);
}

extern "C" __attribute__((visibility("default"))) void kivaStopMachines(
    void* connection, const MachineStopRequest& request, StoppedMachines& stopped) {
  const std::unique_ptr<virConnect, Close> owner(static_cast<virConnectPtr>(connection));
  const auto end = Clock::now() + request.within;
  std::vector<Machine> machines = runningMachines(owner.get(), request.manner, stopped.error);
  sortBy(request.order, machines);
  if (request.manner == StopManner::Destroy)
    for (const Machine& machine : machines) virDomainDestroy(machine.get());
  else
    ask(machines, request.manner, end);
  for (const Machine& machine : machines)
    (isGone(machine) ? stopped.stopped : stopped.left).push_back(nameOf(machine));
}
