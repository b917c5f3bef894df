// SPDX-License-Identifier: MIT
#include <poll.h>
#include <systemd/sd-bus.h>

#include <chrono>
#include <cstring>
#include <memory>

#include "linux/networkd_describe.h"

// The bus is driven by hand, with one deadline for everything: connecting, the bus' own greeting
// and the answer. The calls that wait by themselves give a bus daemon that hangs up to 90 seconds.

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kAnswerWithin{250};

struct CloseBus {
  void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};
using Bus = std::unique_ptr<sd_bus, CloseBus>;

struct UnrefMessage {
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, UnrefMessage>;

struct Answer {
  bool arrived = false;
  std::string text;
  std::string error;
};

int takeAnswer(sd_bus_message* message, void* into, sd_bus_error*) {
  auto* answer = static_cast<Answer*>(into);
  answer->arrived = true;
  const char* text = nullptr;
  if (const sd_bus_error* error = sd_bus_message_get_error(message))
    answer->error = error->message ? error->message : error->name;
  else if (sd_bus_message_read(message, "s", &text) > 0)
    answer->text = text;
  else
    answer->error = "unexpected answer";
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
  return poll(&wait, 1, milliseconds) < 0 ? -errno : 0;
}

int askForDescription(sd_bus* bus, Answer& answer) {
  constexpr const char* kName = "org.freedesktop.network1";
  sd_bus_message* raw = nullptr;
  int result = sd_bus_message_new_method_call(bus, &raw, kName, "/org/freedesktop/network1",
                                              "org.freedesktop.network1.Manager", "Describe");
  const Message message(raw);
  if (result >= 0) result = sd_bus_message_set_auto_start(raw, 0);
  if (result >= 0) result = sd_bus_call_async(bus, nullptr, raw, takeAnswer, &answer, 0);
  return result;
}

int run(sd_bus* bus, Answer& answer) {
  const auto deadline = Clock::now() + kAnswerWithin;
  int result = askForDescription(bus, answer);
  while (result >= 0 && !answer.arrived) {
    const int remaining = remainingMilliseconds(deadline);
    if (remaining <= 0) return -ETIMEDOUT;
    result = sd_bus_process(bus, nullptr);
    if (result == 0) result = waitForBus(bus, remaining);
  }
  return result;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) bool kivaNetworkdReport(
    std::vector<HostLinux::ReportedAddress>& addresses, std::string& error) {
  sd_bus* raw = nullptr;
  int result = sd_bus_open_system(&raw);
  const Bus bus(raw);
  Answer answer;
  if (result >= 0) result = run(raw, answer);
  error = result < 0 ? std::strerror(-result) : answer.error;
  if (error.empty()) addresses = HostLinux::addressesIn(answer.text);
  return error.empty();
}
