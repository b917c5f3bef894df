// SPDX-License-Identifier: MIT
#include "harness/demo.h"

#include <algorithm>
#include <csignal>
#include <iterator>
#include <thread>

#include "harness/readiness.h"

namespace Harness {
namespace {

Launch launch(const DemoHost& host, const Setup& setup) {
  Launch launch = host.Demo(setup.arguments);
  if (!setup.script.empty())
    launch.arguments.insert(launch.arguments.begin(), {"/bin/sh", "-c", setup.script});
  launch.term = setup.term;
  launch.environment = setup.environment;
  return launch;
}

/// How often the program slept and how long it worked so far, in clock ticks.
std::pair<long, long> workOf(pid_t pid) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
  std::string word;
  constexpr int kFieldsToUserTime = 13;
  for (int i = 0; i < kFieldsToUserTime; ++i) file >> word;
  long user = 0, system = 0;
  file >> user >> system;
  return {sleepsOf(pid), user + system};
}

}  // namespace

Demo::Demo(const Setup& setup, DemoHost&& changed)
    : OwnHost{std::move(changed)}, Terminal(launch(host, setup), setup.size) {
  Settle();
}

Lines Demo::NewLines() {
  const Lines all = host.Journal();
  const Lines fresh(all.begin() + static_cast<std::ptrdiff_t>(linesSeen_), all.end());
  linesSeen_ = all.size();
  return fresh;
}

bool Demo::HasLine(std::string_view kind, const std::string& line) const {
  const Lines lines = host.Journal(kind);
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

void Demo::WaitForLine(std::string_view kind, const std::string& line) {
  WaitUntil([&](const Screen&) { return HasLine(kind, line); }, line);
}

int Demo::Stop() {
  Signal(SIGTERM);
  return WaitForExit();
}

int Demo::EndBy(int cause) {
  if (cause == SIGWINCH)
    Resize({43, 132});
  else
    cause == kHangUp ? HangUp() : Signal(cause);
  return WaitForExit();
}

bool Demo::DoesNothing() const {
  const auto before = workOf(Pid());
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  return workOf(Pid()) == before;
}

// A signal may still be on its way through a busy machine; a program that polls never rests.
bool Demo::StaysIdle() {
  for (int i = 0; i < 20; ++i) {
    Settle();
    if (DoesNothing()) return true;
  }
  return false;
}

Json rehearsed(const Json& tools) {
  return {{"tools", tools}};
}

Json failing(const std::string& operation, const std::string& text) {
  return {{"faults", {{operation, text}}}};
}

Json networkWith(const std::string& values) {
  Json changes = Json::array();
  const Json parsed = Json::parse(values);
  for (const auto& [path, value] : parsed.items())
    changes.push_back({{"op", "add"}, {"path", "/network/" + path}, {"value", value}});
  return changes;
}

Lines announced(const std::string& event, const std::string& text) {
  return {"log.info\t" + text, "log.info\tInitializing evbuser library",
          "event\t@&!*@*@(evb.user.kiva." + event + ")" + text};
}

Lines parts(const std::string& text, char separator) {
  Lines found(1);
  for (const char c : text) c == separator ? found.emplace_back() : found.back() += c;
  return found;
}

Lines operator+(Lines lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

Lines operator+(Lines lines, const std::string& more) {
  lines.push_back(more);
  return lines;
}

Lines marked(Lines journal) {
  for (std::string& line : journal)
    for (const auto& [kind, mark] : {std::pair<std::string, const char*>("log.info\t", "- "),
                                     {"log.err\t", "! "},
                                     {"hostctl\t", ""}})
      if (line.starts_with(kind)) line.replace(0, kind.size(), mark);
  return journal;
}

Lines missingFrom(const Screen& screen, const Lines& texts) {
  Lines missing;
  std::copy_if(texts.begin(), texts.end(), std::back_inserter(missing),
               [&](const std::string& text) { return !screen.Shows(text); });
  return missing;
}

Colours coloursOf(const Screen& screen, std::string_view text) {
  const auto place = screen.Find(text);
  return place ? screen.ColoursAt(place->row, place->column) : Colours{};
}

bool isAllIn(const Screen& screen, const Colours& colours) {
  for (int row = 0; row < screen.GetSize().rows; ++row)
    for (int column = 0; column < screen.GetSize().columns; ++column)
      if (screen.ColoursAt(row, column) != colours) return false;
  return true;
}

std::ifstream processFile(const Console& console, const std::string& name) {
  return std::ifstream("/proc/" + std::to_string(console.Pid()) + "/" + name);
}

void openLogin(Console& console) {
  console.WaitFor(kWelcome);
  console.Press("F2");
  console.WaitFor(kLogin);
}

void logIn(Console& console) {
  openLogin(console);
  console.Do({"Enter", "type:demo", "Enter"});
  console.WaitFor(kMenu);
}

void openMenu(Console& console, int downs) {
  logIn(console);
  console.Press("Down", downs);
}

void openTroubleshooting(Console& console, int row) {
  openMenu(console, 9);  // what can be selected at the top differs from host to host
  console.Press("Up", 3);
  console.Do({"Enter", "wait:Troubleshooting Mode Options"});
  console.Press("Down", row);
}

void openNetwork(Console& console, int row) {
  openMenu(console, 2);
  console.Do({"Enter", "wait:<Esc> Exit"});
  console.Press("Down", row);
}

}  // namespace Harness
