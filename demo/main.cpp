// SPDX-License-Identifier: MIT
#include <cstdio>
#include <exception>
#include <filesystem>

#include "console/console.h"
#include "demo/arguments.h"
#include "demo/temporary_copy.h"
#include "sample/sample_host.h"

namespace {

constexpr int kCannotStart = 2;

constexpr const char* kHelp =
    "kiva-demo [--host DIR] [--clock-speed N] [VT]: the Kiva console on a sample host.\n"
    "\n"
    "  --host DIR  the sample host kept in DIR: host.json is its state, root/ its files, journal\n"
    "              what the program has sent to it\n"
    "  --clock-speed N\n"
    "              the console's clock runs N times as fast, to rehearse dimming and the idle "
    "time-out\n"
    "  VT          the virtual terminal to switch to, 1 to 63 (a sample host has none to switch)\n"
    "  --help      this text\n"
    "\n"
    "Without --host the program works on a fresh copy of its built-in sample, kiva-demo.XXXXXX in\n"
    "TMPDIR, or where that is not set in /dev/shm or /tmp. The copy is removed when the program\n"
    "ends by itself; after a kill or a crash it stays, to be looked at and removed by hand.\n"
    "Log in with F2 as root, password demo.\n";

}  // namespace

int main(int argc, char** argv) {
  Kiva::ConsoleOptions options;
  try {
    const std::span<char* const> given(argv, static_cast<std::size_t>(argc));
    static const Demo::Arguments arguments = Demo::readArguments(given.subspan(argc > 0 ? 1 : 0));
    if (arguments.help) return std::fputs(kHelp, stdout) < 0 ? 1 : 0;
    HostSample::useSampleHost(arguments.host ? std::filesystem::path(*arguments.host)
                                             : Demo::makeTemporaryCopy());
    if (arguments.virtualTerminal) options.virtualTerminal = arguments.virtualTerminal->c_str();
    options.clockSpeed = arguments.clockSpeed;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kiva-demo: %s\n", error.what());
    return kCannotStart;
  }
  return Kiva::runConsole(options);
}
