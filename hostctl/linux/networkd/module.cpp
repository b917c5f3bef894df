// SPDX-License-Identifier: MIT
#include <poll.h>
#include <systemd/sd-bus.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>

#include "linux/network/bus_call.h"
#include "linux/networkd_describe.h"

// The bus is driven by hand, with one deadline for everything: connecting, the bus' own greeting
// and the answer. The calls that wait by themselves give a bus daemon that hangs up to 90 seconds.

namespace {

using Clock = std::chrono::steady_clock;
using HostLinux::BusCall;
constexpr std::chrono::milliseconds kReportWithin{250};

struct CloseBus {
  void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};
using Bus = std::unique_ptr<sd_bus, CloseBus>;

struct UnrefMessage {
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, UnrefMessage>;

struct Answer {
  const char* service;
  bool arrived = false;
  std::string text;
  std::string error;
};

std::string textOf(const sd_bus_error& error, const char* service) {
  for (const char* absent : {SD_BUS_ERROR_SERVICE_UNKNOWN, SD_BUS_ERROR_NAME_HAS_NO_OWNER})
    if (sd_bus_error_has_name(&error, absent)) return std::string(service) + " does not run";
  return error.message ? error.message : error.name;
}

int takeAnswer(sd_bus_message* message, void* into, sd_bus_error*) {
  auto* answer = static_cast<Answer*>(into);
  answer->arrived = true;
  const char* text = nullptr;
  if (const sd_bus_error* error = sd_bus_message_get_error(message))
    answer->error = textOf(*error, answer->service);
  else if (sd_bus_message_has_signature(message, "s") &&
           sd_bus_message_read(message, "s", &text) > 0)
    answer->text = text;
  return 1;
}

int remainingMilliseconds(Clock::time_point deadline) {
  using std::chrono::milliseconds;
  return static_cast<int>(std::chrono::ceil<milliseconds>(deadline - Clock::now()).count());
}

int waitForBus(sd_bus* bus, int milliseconds) {
  pollfd wait{sd_bus_get_fd(bus), 0, 0};
  const int events = sd_bus_get_events(bus);
  if (events < 0) return events;
  wait.events = static_cast<short>(events);
  return poll(&wait, 1, milliseconds) < 0 && errno != EINTR ? -errno : 0;
}

int append(sd_bus_message* message, const BusCall& call) {
  if (const int* index = std::get_if<int>(&call.argument))
    return sd_bus_message_append(message, "i", *index);
  if (const auto* name = std::get_if<std::string>(&call.argument))
    return sd_bus_message_append(message, "sb", name->c_str(), 0);
  return 0;
}

int send(sd_bus* bus, const BusCall& call, Answer& answer) {
  sd_bus_message* raw = nullptr;
  int result = sd_bus_message_new_method_call(bus, &raw, call.busName, call.path, call.interface,
                                              call.method);
  const Message message(raw);
  if (result >= 0) result = sd_bus_message_set_auto_start(raw, call.mayStart);
  if (result >= 0) result = append(raw, call);
  if (result >= 0) result = sd_bus_call_async(bus, nullptr, raw, takeAnswer, &answer, 0);
  return result;
}

int run(sd_bus* bus, const BusCall& call, Clock::time_point deadline, Answer& answer) {
  int result = send(bus, call, answer);
  while (result >= 0 && !answer.arrived) {
    const int remaining = remainingMilliseconds(deadline);
    if (remaining <= 0) return -ETIMEDOUT;
    result = sd_bus_process(bus, nullptr);
    if (result == 0) result = waitForBus(bus, remaining);
  }
  return result;
}

Answer make(const BusCall& call, std::chrono::milliseconds limit) {
  const auto deadline = Clock::now() + limit;
  Answer answer{call.service, false, {}, {}};
  sd_bus* raw = nullptr;
  int result = sd_bus_open_system(&raw);
  const Bus bus(raw);
  if (result >= 0) result = run(raw, call, deadline, answer);
  if (result < 0) answer.error = std::string("the system bus: ") + std::strerror(-result);
  return answer;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) bool kivaNetworkdReport(
    std::vector<HostLinux::ReportedAddress>& addresses, std::string& error) {
  const Answer answer = make({"systemd-networkd",
                              "org.freedesktop.network1",
                              "/org/freedesktop/network1",
                              "org.freedesktop.network1.Manager",
                              "Describe",
                              false,
                              {}},
                             kReportWithin);
  error = answer.error;
  if (error.empty() && answer.text.empty()) error = "unexpected answer";
  if (error.empty()) addresses = HostLinux::addressesIn(answer.text);
  return error.empty();
}

extern "C" __attribute__((visibility("default"))) bool kivaBusCall(const HostLinux::BusCall& call,
                                                                   std::chrono::milliseconds limit,
                                                                   std::string& error) {
  error = make(call, limit).error;
  return error.empty();
}
