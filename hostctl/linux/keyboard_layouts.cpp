// SPDX-License-Identifier: MIT
#include "linux/keyboard_layouts.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "hostctl/lib/exception.h"
#include "linux/replace_file.h"
#include "linux/run_program.h"
#include "linux/text.h"

namespace HostLinux {

namespace fs = std::filesystem;
using HostCtl::Lib::HostCtlException;

namespace {

constexpr std::chrono::seconds kLoadLimit{20};

void requireLayout(const Files& files, const char* operation, const std::string& layout) {
  const auto known = readKeyboardLayouts(files);
  if (std::find(known.begin(), known.end(), layout) == known.end())
    throw HostCtlException(operation, layout, "there is no such keyboard layout");
}

}  // namespace

std::vector<std::string> readKeyboardLayouts(const Files& files) {
  constexpr std::string_view kSuffix = ".kmap.gz";
  std::set<std::string> names;
  std::error_code error;
  fs::recursive_directory_iterator entry(files.Path("/usr/share/keymaps"),
                                         fs::directory_options::skip_permission_denied, error);
  for (const fs::recursive_directory_iterator end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.size() > kSuffix.size() && name.ends_with(kSuffix))
      names.insert(name.substr(0, name.size() - kSuffix.size()));
  }
  return {names.begin(), names.end()};
}

std::string readKeyboardLayout(const Files& files) {
  const auto value = [&](const char* file, const char* key) {
    return valueOf(parseAssignments(files.Read(file).value_or("")), key);
  };
  const std::string layout = value("/etc/default/keyboard", "XKBLAYOUT");
  if (!layout.empty()) return std::string(trim(layout.substr(0, layout.find(','))));
  return value("/etc/vconsole.conf", "KEYMAP");
}

void loadKeyboardMappings(const Files& files, const std::string& layout) {
  requireLayout(files, "LoadKeyboardMappings", layout);
  const ProgramResult result =
      runProgram({"/usr/bin/loadkeys", {"loadkeys", "-q", "-C", "/dev/tty0", layout}}, kLoadLimit);
  if (result.status != 0) throw HostCtlException("LoadKeyboardMappings", layout, causeOf(result));
}

void writeKeyboardLayout(const Files& files, const std::string& layout) try {
  requireLayout(files, "SetKeyboardLayout", layout);
  replaceFile(files.Path("/etc/vconsole.conf"), "KEYMAP=" + layout + "\n");
} catch (const std::system_error& error) {
  throw HostCtlException("SetKeyboardLayout", layout, error.code().message());
}

}  // namespace HostLinux
