// SPDX-License-Identifier: MIT
#include "tests/vm/installed_machine.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "harness/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using Harness::Machine;
using Harness::MachineParts;

constexpr const char* kPlain = "plain";
constexpr const char* kInstalled = "installed";

fs::path folder() {
  const char* path = std::getenv("KIVA_VM");
  if (!path) throw std::runtime_error("script/test-vm makes a machine and runs these tests");
  return fs::absolute(path);
}

void succeed(Machine& machine, const std::string& script) {
  const auto [status, output] = machine.Shell(script);
  if (status != 0) throw std::runtime_error(script + ": " + output);
}

void saveAndSwitchOff(Machine& machine, const std::string& name) {
  if (const std::string error = machine.Monitor("savevm " + name); !error.empty())
    throw std::runtime_error(error);
}

/// A disk with the snapshot of the server before anything was installed; it stays for later runs.
fs::path plainDisk() {
  fs::path disk = folder() / "plain.qcow2";
  if (fs::exists(disk)) return disk;
  const fs::path fresh = folder() / "new.qcow2";
  const std::string make = "qemu-img create -q -f qcow2 -F raw -b '" +
                           (folder() / "disk.ext4").string() + "' '" + fresh.string() + "'";
  if (std::system(make.c_str()) != 0) throw std::runtime_error(make);
  {
    Machine machine(MachineParts{folder(), fresh, folder() / "payload.tar"});
    machine.WaitForShell();
    succeed(machine, "systemctl is-system-running --wait && sync");
    saveAndSwitchOff(machine, kPlain);
  }
  fs::rename(fresh, disk);
  return disk;
}

/// This run's own disk, with a snapshot of the server just after the package was installed.
const fs::path& installedDisk() {
  static const Harness::TemporaryFolder ours;
  static const fs::path made = [] {
    fs::path disk = ours.Path() / "disk.qcow2";
    fs::copy_file(plainDisk(), disk);
    Machine machine(MachineParts{folder(), disk, folder() / "payload.tar", kPlain});
    succeed(machine, "cd /root && tar -xf /dev/vdb && dpkg -i kiva.deb && rm kiva.deb");
    machine.WaitFor("Shut Down/Restart");
    saveAndSwitchOff(machine, kInstalled);
    return disk;
  }();
  return made;
}

}  // namespace

void InstalledMachine::SetUp() {
  machine_.emplace(MachineParts{folder(), installedDisk(), folder() / "payload.tar", kInstalled});
}

void InstalledMachine::LogIn(const std::string& password) {
  machine_->Do({"F2", "wait:Authentication Required", "Down", "type:" + password, "Enter",
                "wait:System Customization"});
}

std::string InstalledMachine::Shell(const std::string& script) {
  const auto [status, output] = machine_->Shell(script);
  EXPECT_EQ(status, 0) << script << "\n" << output;
  return output;
}
