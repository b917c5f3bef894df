// SPDX-License-Identifier: MIT
#include "linux/loadable_module.h"

#include <dlfcn.h>

#include <filesystem>

namespace HostLinux {

namespace fs = std::filesystem;

namespace {

void* load(const std::string& file) {
  std::error_code error;
  const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
  if (error) return nullptr;
  for (const fs::path& place : {folder, folder.parent_path() / "lib/kiva"})
    if (void* handle = dlopen((place / file).c_str(), RTLD_NOW | RTLD_LOCAL)) return handle;
  return nullptr;
}

}  // namespace

void* Module::FindSymbol(const char* symbol) {
  if (!tried_) handle_ = load(name_ + ".so");
  tried_ = true;
  return handle_ ? dlsym(handle_, symbol) : nullptr;
}

}  // namespace HostLinux
