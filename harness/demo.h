// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "harness/demo_host.h"
#include "harness/terminal.h"

namespace Harness {

using Json = nlohmann::json;
using Lines = std::vector<std::string>;

/// How kiva-demo is started; `script` is a shell's, in which "$0" "$@" is its command line.
struct Setup {
  Size size = {24, 80};
  std::optional<std::string> term = "xterm-256color";
  Lines arguments = {};
  std::map<std::string, std::string> environment = {};
  std::string script = {};
};

/// A lone Escape is told from a key's sequence by the time that follows it: here a short one.
inline const Setup kQuickEscape{.environment = {{"ESCDELAY", "25"}}};

/// A cause of an end beside the signals: the terminal is gone.
inline constexpr int kHangUp = -1;

struct OwnHost {
  DemoHost host;
};

/// A running kiva-demo on a sample host of its own.
class Demo : public OwnHost, public Terminal {
 public:
  explicit Demo(const Json& changes = Json::object(), const Setup& setup = {})
      : Demo(setup, DemoHost(changes)) {}
  /// The same on a host whose files a test has changed.
  Demo(const Setup& setup, DemoHost&& changed);

  /// The journal's lines since the last call, or since the start.
  Lines NewLines();
  bool HasLine(std::string_view kind, const std::string& line) const;
  void WaitForLine(std::string_view kind, const std::string& line);
  /// Stops the program with SIGTERM: its exit status.
  int Stop();
  /// Sends a signal, a new size (132x43) for SIGWINCH, or the end of the line: the exit status.
  int EndBy(int cause);
  /// Whether the program does nothing at all for a while.
  bool DoesNothing() const;
  /// The same once it waits for a key.
  bool StaysIdle();

 private:
  std::size_t linesSeen_ = 0;
};

/// Changes for a host whose tools answer as rehearsed: {"/path": {"status": 1}, ...}.
Json rehearsed(const Json& tools);
/// Rehearsals of a tool that is killed, and of one that is not there.
inline const Json kDies = {{"signal", 9}}, kGone = {{"missing", true}};
/// Changes for a host whose library operation of that name fails with that text.
Json failing(const std::string& operation, const std::string& text);
/// Changes for a host with these values below "/network": {"dns/hostname": "alpha", ...}.
Json networkWith(const std::string& values);
/// What the host is told when an operation begins: a line of the log, and the event of that name.
Lines announced(const std::string& event, const std::string& text);
/// What is logged when the console's child is killed.
inline constexpr const char* kKilled = "log.err\tRun Command did not terminate normally";

/// What stands between the separators of a text.
Lines parts(const std::string& text, char separator = ';');
Lines operator+(Lines lines, const Lines& more);
Lines operator+(Lines lines, const std::string& more);
/// The journal's lines with "- " before information, "! " before errors, and the calls bare.
Lines marked(Lines journal);
/// Those of the texts that the screen does not show.
Lines missingFrom(const Screen& screen, const Lines& texts);
/// The colours in which a text begins; none where it is not shown.
Colours coloursOf(const Screen& screen, std::string_view text);
/// Whether every cell has these colours.
bool isAllIn(const Screen& screen, const Colours& colours);
/// What the kernel tells about the program in a file of /proc.
std::ifstream processFile(const Console& console, const std::string& name);

/// A text that only this screen shows.
inline constexpr const char* kWelcome = "Shut Down/Restart";
inline constexpr const char* kLogin = "Authentication Required";
inline constexpr const char* kMenu = "System Customization";

/// The way from the welcome screen to the menu.
inline const Lines kLogIn = {"F2", "Enter", "type:demo", "Enter", "wait:System Customization"};

void openLogin(Console& console);
/// From the welcome screen to the menu, as the user that the dialog offers.
void logIn(Console& console);
/// From the welcome screen to the menu, so many steps down.
void openMenu(Console& console, int downs);
/// From the welcome screen to the troubleshooting options, with the entry `row` (from 0) selected.
void openTroubleshooting(Console& console, int row);
/// From the welcome screen to the network window, with the entry `row` (from 0) selected.
void openNetwork(Console& console, int row);

}  // namespace Harness
