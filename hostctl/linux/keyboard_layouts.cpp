// SPDX-License-Identifier: MIT
#include "linux/keyboard_layouts.h"

#include <filesystem>
#include <set>

#include "linux/text.h"

namespace HostLinux {

namespace fs = std::filesystem;

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

}  // namespace HostLinux
