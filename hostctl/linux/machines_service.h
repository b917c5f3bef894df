// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <future>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "linux/files.h"
#include "linux/loadable_module.h"

namespace HostLinux {

/// How this machine's virtual machines are reached and ordered: the file /etc/corvo/virtualisation
/// with lines such as
///
///   URI=qemu:///system
///   ORDER=database, mail server
///
/// ORDER names machines that autostart manages, first things first: libvirt has no order of its
/// own. Those that it does not name come after them, by their names.
struct MachineSettings {
  std::string uri = "qemu:///system";
  std::vector<std::string> order = {};
};

MachineSettings readMachineSettings(const Files& files);

/// How long libvirt may take to answer.
inline constexpr std::chrono::seconds kMachinesAnswerWithin{10};

/// The virtualisation service of this machine, which may be missing, or hang: nobody waits for it
/// longer than he says. Every failure is an HostCtlException of `operation`.
class MachinesService {
 public:
  MachinesService(const Files& files, std::string operation);

  /// A function of its module; null on a machine without libvirt.
  template <class Function>
  Function Find(const char* symbol) const {
    return TheModule().Find<Function>(symbol);
  }

  /// A connection for a function of the module; null where no daemon runs.
  void* Open(std::chrono::milliseconds within) const;

  /// What `ask` fills in, an `Answer` with a text `error`. Work that hangs is left behind on its
  /// thread, because libvirt has no other way to give up: `ask` owns what it needs.
  template <class Answer, class Work>
  Answer Ask(std::chrono::milliseconds within, Work ask) const {
    std::packaged_task<Answer()> task([ask = std::move(ask)] {
      Answer filled;
      ask(filled);
      return filled;
    });
    auto future = task.get_future();
    try {
      std::thread(std::move(task)).detach();
    } catch (const std::system_error& error) {
      Fail(error.what());
    }
    if (future.wait_for(within) != std::future_status::ready)
      Fail("the virtualisation service does not answer");
    Answer answer = future.get();
    if (!answer.error.empty()) Fail(answer.error);
    return answer;
  }

 private:
  static Module& TheModule();
  [[noreturn]] void Fail(const std::string& cause) const;

  std::string operation_;
  std::string uri_;
};

}  // namespace HostLinux
