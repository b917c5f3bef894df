// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <sstream>

#include "hosttools/service_names.h"
#include "hosttools/tools.h"

namespace HostTools {

namespace {

constexpr std::string_view kShellPath = "/bin/sh";
constexpr std::string_view kSilently = " > /dev/null 2>&1";

/// A line that is no plain call of one tool. There is no shell behind it: it is known letter for
/// letter, or not run.
struct Line {
  std::string_view text;
  ToolAnswer (*run)(StandInHost& host);
};

/// Status 0 when the agent's installed version has a major number of 3 or more.
ToolAnswer checkOvlAgentVersion(StandInHost& host) {
  const std::string version = host.FindPackageVersion(kOvlAgent).value_or("");
  return {std::atoi(version.c_str()) < 3 ? 1 : 0, "", ""};
}

constexpr std::array<Line, 1> kLines = {{
    {"let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent | awk '/Version/{ "
     "split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`; (exit $((v < 3)))",
     checkOvlAgentVersion},
}};

ToolAnswer notFound(const std::string& text) {
  return {kNoSuchTool, "", "sh: " + text + ": not found\n"};
}

/// Whether the shell would leave a word made of these as it is.
bool isPlain(std::string_view text) {
  constexpr std::string_view kOthers = " /_.,:=+@%-";
  return std::all_of(text.begin(), text.end(), [&](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           kOthers.find(c) != std::string_view::npos;
  });
}

ToolAnswer callTool(StandInHost& host, std::vector<std::string> words) {
  if (words.size() > 1 && words.front() == kShellPath) words.erase(words.begin());
  if (words.empty()) return notFound("");
  const std::string path = (words.front().starts_with('/') ? "" : "/sbin/") + words.front();
  return runTool(host, path, words);
}

ToolAnswer runLine(StandInHost& host, const Call& call) {
  const std::string& text = call["-c"];
  const auto* line =
      std::find_if(kLines.begin(), kLines.end(), [&](const Line& one) { return one.text == text; });
  if (line != kLines.end()) return line->run(host);
  const bool silent = text.ends_with(kSilently);
  std::istringstream in(text.substr(0, text.size() - (silent ? kSilently.size() : 0)));
  if (!isPlain(in.str())) return notFound(text);
  const ToolAnswer answer = callTool(host, {std::istream_iterator<std::string>(in), {}});
  return silent ? ToolAnswer{answer.status, "", ""} : answer;
}

ToolAnswer runFile(StandInHost& host, const Call& call) {
  std::vector<std::string> words = {call["FILE"]};
  if (call.Has("ACTION")) words.push_back(call["ACTION"]);
  return callTool(host, words);
}

constexpr std::array<Command<StandInHost>, 2> kCalls = {{
    {"-c LINE", "runs a line that calls one tool, by its path or from /sbin, with plain words",
     Effect::Reads, runLine},
    {"FILE [ACTION]", "runs the tool at FILE", Effect::Reads, runFile},
}};

ToolAnswer shell(StandInHost& host, Commands<StandInHost> commands, const std::string& name,
                 Arguments arguments) try {
  return runCommand(host, commands, name, arguments);
} catch (const UsageError& error) {
  return {kNoSuchTool, "", name + ": " + error.what() + "\n"};
}

}  // namespace

constinit const Tool<StandInHost> kShell = {
    kShellPath,
    "Stands in for the shell, for the lines that the console uses; any other is status 127.\n", 600,
    kCalls, shell};

}  // namespace HostTools
