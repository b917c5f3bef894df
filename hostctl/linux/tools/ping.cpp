// SPDX-License-Identifier: MIT
#include "linux/tools/ping.h"

#include "linux/run_program.h"

namespace HostLinux {

namespace {

constexpr const char* kPing = "/bin/ping";
/// For a name to be resolved, and the last echo to come back.
constexpr std::chrono::seconds kBesides{12};
constexpr int kTrouble = 2;

}  // namespace

HostSeam::ToolAnswer ping(const std::string& address, int count) {
  const HostCtl::Lib::Program program = {
      kPing, {"ping", "-n", "-c", std::to_string(count), "-W", "2", "--", address}};
  const auto result = runProgram(program, std::chrono::seconds(count) + kBesides);
  if (result.status < 0) return {kTrouble, "", result.output + "\n"};
  return {result.status, result.output, ""};
}

}  // namespace HostLinux
