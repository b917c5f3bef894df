// SPDX-License-Identifier: MIT
#include <arpa/inet.h>

#include <algorithm>
#include <array>

#include "hosttools/tools.h"

namespace HostTools {

namespace {

constexpr int kMostEchoes = 20;
constexpr std::size_t kLongestZone = 15;

/// The name becomes a file's in a folder that the caller chose, and must not lead out of it.
void checkFileName(const std::string& name) {
  if (name.find('/') != std::string::npos || name.starts_with('.'))
    throw UsageError("not the name of a file: " + name);
}

ToolAnswer writeCore(ToolHost& host, const Call& call) {
  checkFileName(call["-o"]);
  if (!call["-d"].starts_with('/') || call["-d"].find("..") != std::string::npos)
    throw UsageError("not the path of a folder: " + call["-d"]);
  return {0, host.WriteLiveCore({call["-n"], call["-o"], call["-d"]}) + "\n", ""};
}

bool isZoneCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
         c == '-' || c == '_';
}

bool isZone(const std::string& zone) {
  return !zone.empty() && zone.size() <= kLongestZone &&
         std::all_of(zone.begin(), zone.end(), isZoneCharacter);
}

bool isAddress(const std::string& text) {
  in6_addr address{};
  if (inet_pton(AF_INET, text.c_str(), &address) == 1) return true;
  const std::size_t percent = std::min(text.find('%'), text.size());
  if (percent < text.size() && !isZone(text.substr(percent + 1))) return false;
  return inet_pton(AF_INET6, text.substr(0, percent).c_str(), &address) == 1;
}

ToolAnswer ping(ToolHost& host, const Call& call) {
  if (!isAddress(call["ADDRESS"]))
    throw UsageError("not an IPv4 or IPv6 address: " + call["ADDRESS"]);
  return host.Ping(call["ADDRESS"], static_cast<int>(readNumber("-c", call["-c"], 1, kMostEchoes)));
}

constexpr std::array<Command<ToolHost>, 1> kCore = {{
    {"-w -n NAME -o OUTPUT -d FOLDER",
     "writes a core of the running process NAME, waits for it, and prints the file that it is",
     Effect::Changes, writeCore},
}};

constexpr std::array<Command<ToolHost>, 1> kPing = {{
    {"-c COUNT ADDRESS", "asks for COUNT echoes, a second apart; status 0 when they came",
     Effect::Reads, ping},
}};

}  // namespace

constinit const Tool<ToolHost> kTarnbacktrace = {
    "/sbin/tarnbacktrace",
    "Shows what a process was doing; the process goes on. The file's name begins with OUTPUT.\n",
    300, kCore};

constinit const Tool<ToolHost> kTarnping = {"/bin/tarnping", "Tries whether an address answers.\n",
                                            60, kPing};

}  // namespace HostTools
