// SPDX-License-Identifier: MIT
#include "harness/vm/machine.h"

#include <cctype>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "harness/console.h"
#include "harness/steps.h"
#include "harness/virtual_terminal.h"

namespace Harness {
namespace {

using Clock = std::chrono::steady_clock;
using Json = nlohmann::json;
using Milliseconds = Machine::Milliseconds;

/// Other work on this host may slow an emulated machine down a lot.
constexpr Milliseconds kDeadline{120000};
/// Unpacking the kernel alone takes a minute where a snapshot was loaded before.
constexpr Milliseconds kStartDeadline{300000};
constexpr Milliseconds kStartLimit{20000};
constexpr Milliseconds kBetweenLooks{50};
constexpr Milliseconds kKeyHeld{20};

/// The shell's line behind the output of a script; the status follows.
constexpr std::string_view kEnded = "@ended ";

constexpr std::size_t kTextMemory = 0xb8000;
constexpr std::size_t kTextMemorySize = 0x8000;

/// The command line of QEMU; it also dies with the thread that starts it.
std::vector<std::string> qemu(const MachineParts& parts, const std::filesystem::path& folder) {
  const std::string sockets = folder.string() + "/";
  std::vector<std::string> arguments = {
      "/usr/bin/setpriv", "--pdeathsig", "KILL", "/usr/bin/qemu-system-x86_64", "-nodefaults",
      "-no-user-config",
      // The kernel of a build machine may offer KVM and yet not run a guest.
      "-accel", "tcg,thread=multi", "-cpu", "max", "-smp", "2", "-m", "512", "-display", "none",
      "-vga", "std",
      // No "quiet": every line of the kernel that nobody keeps away is to be seen.
      "-kernel", parts.folder / "vmlinuz", "-initrd", parts.folder / "initrd", "-append",
      "root=/dev/vda rw", "-drive",
      "if=virtio,format=qcow2,cache=unsafe,file=" + parts.disk.string(), "-drive",
      "if=virtio,format=raw,readonly=on,file=" + (parts.folder / "payload.tar").string(), "-netdev",
      "user,id=net,restrict=on,hostfwd=tcp:127.0.0.1:0-:22", "-device",
      "virtio-net-pci,netdev=net,mac=52:54:00:00:00:00", "-qmp",
      "unix:" + sockets + "monitor,server=on,wait=off", "-serial",
      "unix:" + sockets + "shell,server=on,wait=off"};
  for (const char* number : {"1", "2", "3"}) {
    const std::string name = std::string("nic") + number;
    arguments.insert(arguments.end(),
                     {"-netdev", "hubport,hubid=0,id=" + name, "-device",
                      "virtio-net-pci,netdev=" + name + ",mac=52:54:00:00:00:0" + number});
  }
  if (!parts.snapshot.empty()) arguments.insert(arguments.end(), {"-loadvm", parts.snapshot});
  return arguments;
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

Child start(const MachineParts& parts, const TemporaryFolder& folder) {
  folder.Write("log", "");
  return {{qemu(parts, folder.Path())}, folder.Path() / "log"};
}

LineSocket connectTo(const std::string& name, const TemporaryFolder& folder, Child& child) {
  const auto end = Clock::now() + kStartLimit;
  while (true) {
    try {
      return LineSocket(folder.Path() / name);
    } catch (const std::system_error& error) {
      if (child.Ended() || Clock::now() > end)
        throw std::runtime_error(std::string("QEMU: ") + error.what() + "\n" +
                                 readFile(folder.Path() / "log"));
      std::this_thread::sleep_for(Milliseconds(10));
    }
  }
}

/// What QEMU calls a key of ours.
std::string keyCode(const std::string& name) {
  static const std::map<std::string, std::string> kOwnNames = {
      {"Enter", "ret"}, {"PageUp", "pgup"}, {"PageDown", "pgdn"}, {"Space", "spc"},
      {" ", "spc"},     {"-", "minus"},     {".", "dot"},         {":", "shift-semicolon"},
      {"/", "slash"}};
  if (const auto own = kOwnNames.find(name); own != kOwnNames.end()) return own->second;
  std::string code;
  for (const unsigned char letter : name) code += static_cast<char>(std::tolower(letter));
  return name.size() == 1 && code != name ? "shift-" + code : code;
}

/// A cell of the graphics card's text memory. Its own font stands behind the numbers.
Cell cellOf(unsigned char character, unsigned char attribute) {
  static const std::map<int, const char*> kLines = {{0xda, "┌"}, {0xbf, "┐"}, {0xc0, "└"},
                                                    {0xd9, "┘"}, {0xc4, "─"}, {0xb3, "│"}};
  Cell cell;
  cell.colours = coloursOfAttribute(attribute);
  if (const auto line = kLines.find(character); line != kLines.end()) {
    cell.text = line->second;
  } else if (character != 0) {
    cell.text = utf8(character >= ' ' && character <= '~' ? character : 0xfffd);
  }
  return cell;
}

Screen screenOf(const std::string& memory, std::size_t origin) {
  Screen screen;
  const auto [rows, columns] = screen.GetSize();
  for (int i = 0; i < rows * columns; ++i) {
    const auto byte = [&](std::size_t at) {
      return static_cast<unsigned char>(memory.at((2 * (origin + i) + at) % kTextMemorySize));
    };
    screen.At(i / columns, i % columns) = cellOf(byte(0), byte(1));
  }
  return screen;
}

}  // namespace

Machine::Machine(const MachineParts& parts)
    : child_(start(parts, folder_)),
      monitor_(connectTo("monitor", folder_, child_)),
      shell_(connectTo("shell", folder_, child_)) {
  monitor_.Send(R"({"execute": "qmp_capabilities"})");
  AnswerOfMonitor();
}

void Machine::ReadUntil(LineSocket& socket, const std::function<bool(const std::string&)>& isWanted,
                        const std::string& what, Milliseconds limit) {
  const auto end = Clock::now() + limit;
  while (Clock::now() < end) {
    const auto line = socket.ReadLine(duration_cast<Milliseconds>(end - Clock::now()));
    if (!line) break;
    if (isWanted(*line)) return;
  }
  throw WaitFailed("waited in vain for " + what + "; QEMU says:\n" + readFile(File("log")));
}

void Machine::NoteEvent(const std::string& line) {
  const Json event = Json::parse(line);
  if (event.value("event", "") == "SHUTDOWN") shutdownReason_ = event["data"]["reason"];
}

std::string Machine::AnswerOfMonitor() {
  Json answer;
  const auto isAnswer = [&](const std::string& line) {
    answer = Json::parse(line);
    NoteEvent(line);
    return answer.contains("return") || answer.contains("error");
  };
  ReadUntil(monitor_, isAnswer, "an answer of the monitor", kDeadline);
  if (answer.contains("error")) throw std::runtime_error("QEMU: " + answer["error"].dump());
  return answer["return"].is_string() ? answer["return"].get<std::string>() : "";
}

std::string Machine::Monitor(const std::string& command) {
  monitor_.Send(
      Json{{"execute", "human-monitor-command"}, {"arguments", {{"command-line", command}}}}
          .dump());
  return AnswerOfMonitor();
}

int Machine::DisplayRegister(int number) {
  Monitor("o /b 0x3d4 " + std::to_string(number));
  const std::string answer = Monitor("i /b 0x3d5");  // "portb[0x03d5] = 0x0c"
  return std::stoi(answer.substr(answer.find('=') + 2), nullptr, 16);
}

Screen Machine::Look() {
  Monitor("stop");
  const std::string selected = Monitor("i /b 0x3d4");
  // The kernel scrolls by moving the start of what is shown.
  const int origin = DisplayRegister(0x0c) << 8 | DisplayRegister(0x0d);
  Monitor("o /b 0x3d4 " + selected.substr(selected.find('=') + 2));
  std::ostringstream save;
  save << "pmemsave " << kTextMemory << ' ' << kTextMemorySize << " \"" << File("memory") << '"';
  Monitor(save.str());
  Monitor("cont");
  return screenOf(readFile(File("memory")), origin);
}

Screendump Machine::Photograph() {
  Monitor("screendump \"" + File("screen") + "\"");
  return Screendump(File("screen"));
}

void Machine::Press(const std::string& key) {
  Monitor("sendkey " + keyCode(key) + " " + std::to_string(kKeyHeld.count()));
  std::this_thread::sleep_for(2 * kKeyHeld);  // QEMU holds it and lets go of it behind our back
}

void Machine::Type(std::string_view text) {
  for (const char character : text) Press(std::string(1, character));
}

void Machine::Do(const std::vector<std::string>& steps) {
  takeSteps(*this, steps);
}

Screen Machine::WaitUntil(const std::function<bool(const Screen&)>& isTrue,
                          const std::string& what) {
  const auto end = Clock::now() + kDeadline;
  Screen before;
  while (true) {
    Screen screen = Look();
    if (screen == before && isTrue(screen)) return screen;
    if (Clock::now() > end)
      throw WaitFailed("waited in vain for " + what + ", the screen is:\n" + screen.Dump());
    before = std::move(screen);
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

Screen Machine::WaitFor(const std::string& text) {
  return WaitUntil([&](const Screen& screen) { return screen.Shows(text); }, '"' + text + '"');
}

Screen Machine::WaitForGone(const std::string& text) {
  return WaitUntil([&](const Screen& screen) { return !screen.Shows(text); },
                   '"' + text + "\" to go");
}

void Machine::WaitForShell() {
  const auto isReady = [](const std::string& line) { return line == "ready"; };
  ReadUntil(shell_, isReady, "the machine's shell", kStartDeadline);
}

std::string Machine::WaitForPowerOff() {
  const auto isOff = [&](const std::string& line) {
    NoteEvent(line);
    return !shutdownReason_.empty();
  };
  ReadUntil(monitor_, isOff, "the machine to be off", kDeadline);
  const auto end = Clock::now() + kStartLimit;
  while (!child_.Ended() && Clock::now() < end) std::this_thread::sleep_for(Milliseconds(10));
  return child_.Ended() == 0 ? shutdownReason_ : "QEMU did not end by itself";
}

ShellAnswer Machine::Shell(const std::string& script) {
  shell_.Send("( " + script + "\n) </dev/null 2>&1; status=$?; echo; echo \"" +
              std::string(kEnded) + "$status\"\n");
  ShellAnswer answer;
  const auto isEnd = [&](const std::string& line) {
    if (line.starts_with(kEnded)) {
      answer.status = std::stoi(line.substr(kEnded.size()));
      return true;
    }
    answer.output += line + "\n";
    return false;
  };
  ReadUntil(shell_, isEnd, "the end of " + script, kDeadline);
  answer.output.erase(answer.output.find_last_not_of('\n') + 1);
  return answer;
}

int Machine::SshPort() {
  std::istringstream words(Monitor("info usernet"));
  for (std::string word; words >> word;) {
    std::string descriptor, address;
    int port = 0;
    if (word.starts_with("TCP[HOST_FORWARD]") && words >> descriptor >> address >> port)
      return port;
  }
  throw std::runtime_error("QEMU forwards no port");
}

}  // namespace Harness
