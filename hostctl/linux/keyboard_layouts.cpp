// SPDX-License-Identifier: MIT
#include "linux/keyboard_layouts.h"

#include <fcntl.h>
#include <linux/kd.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>

#include "hostctl/lib/descriptor.h"
#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/run_program.h"
#include "linux/text.h"

namespace HostLinux {

namespace fs = std::filesystem;
using HostCtl::Lib::Descriptor;
using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;

namespace {

constexpr std::chrono::seconds kLoadLimit{20};
constexpr const char* kStoredLayout = "/etc/vconsole.conf";
constexpr const char* kLoader = "/usr/bin/loadkeys";

// Of a file that it cannot unpack the loader takes what it gets, complains and ends well; so it
// reads every keymap once before it may change anything, and both times it must not say a word.
constexpr const char* kParseOnly = "-qp";
constexpr const char* kLoad = "-q";

constexpr std::array<std::string_view, 7> kOtherFolders = {"amiga", "atari", "include", "mac",
                                                           "pine",  "ppc",   "sun"};
constexpr std::array<std::string_view, 4> kSuffixes = {".kmap.gz", ".kmap", ".map.gz", ".map"};

/// The layout whose keymap lies in `file`; empty for any other file.
std::string layoutIn(const std::string& file) {
  for (const std::string_view suffix : kSuffixes)
    if (file.ends_with(suffix)) return file.substr(0, file.size() - suffix.size());
  return "";
}

bool isPassedOver(const std::string& name) {
  return !isPlainName(name) ||
         std::find(kOtherFolders.begin(), kOtherFolders.end(), name) != kOtherFolders.end();
}

/// The file of each layout.
std::map<std::string, std::string> findKeymaps(const Files& files) {
  std::map<std::string, std::string> keymaps;
  std::error_code error;
  fs::recursive_directory_iterator entry(files.Path("/usr/share/keymaps"),
                                         fs::directory_options::skip_permission_denied, error);
  for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (isPassedOver(name))
      entry.disable_recursion_pending();
    else if (const std::string layout = layoutIn(name); !layout.empty())
      keymaps.emplace(layout, entry->path().string());
  }
  return keymaps;
}

std::string requireKeymap(const Files& files, const char* operation, const std::string& layout) {
  const auto keymaps = findKeymaps(files);
  const auto found = keymaps.find(layout);
  if (found == keymaps.end())
    throw HostCtlException(operation, layout, "there is no such keyboard layout");
  return found->second;
}

bool isVirtualTerminal(const std::string& device) {
  const Descriptor opened(open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  char type = 0;
  return opened && ioctl(opened.Get(), KDGKBTYPE, &type) == 0;
}

}  // namespace

std::vector<std::string> readKeyboardLayouts(const Files& files) {
  std::vector<std::string> names;
  for (const auto& [layout, file] : findKeymaps(files)) names.push_back(layout);
  return names;
}

std::string readKeyboardLayout(const Files& files) {
  const auto value = [&](const char* file, const char* key) {
    return valueOf(parseAssignments(files.Read(file).value_or("")), key);
  };
  if (std::string stored = value(kStoredLayout, "KEYMAP"); !stored.empty()) return stored;
  const std::string layouts = value("/etc/default/keyboard", "XKBLAYOUT");
  return std::string(trim(layouts.substr(0, layouts.find(','))));
}

std::string findConsoleDevice(int terminal) {
  char own[64] = "";
  ttyname_r(terminal, own, sizeof own);
  for (const char* device :
       {static_cast<const char*>(own), "/dev/tty0", "/dev/tty1", "/dev/console"})
    if (isVirtualTerminal(device)) return device;
  return "";
}

void loadKeyboardMappings(const Files& files, const std::string& layout) {
  const std::string keymap = requireKeymap(files, "LoadKeyboardMappings", layout);
  const std::string device = findConsoleDevice(STDOUT_FILENO);
  if (device.empty())
    throw HostCtlException("LoadKeyboardMappings", layout, "this machine has no virtual terminal");
  for (const char* step : {kParseOnly, kLoad}) {
    const ProgramResult result = runProgram(
        {files.Path(kLoader), {"loadkeys", step, "-C", device, "--", keymap}}, kLoadLimit);
    if (result.status != 0 || !result.output.empty())
      throw HostCtlException("LoadKeyboardMappings", layout, causeOf(result));
  }
}

void writeKeyboardLayout(const Files& files, const std::string& layout) try {
  requireKeymap(files, "SetKeyboardLayout", layout);
  replaceFile(files.Path(kStoredLayout),
              withAssignment(files.Read(kStoredLayout).value_or(""), "KEYMAP", layout));
} catch (const std::system_error& error) {
  throw HostCtlException("SetKeyboardLayout", layout, error.code().message());
}

}  // namespace HostLinux
