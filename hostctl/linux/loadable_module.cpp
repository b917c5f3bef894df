// SPDX-License-Identifier: MIT
#include "linux/loadable_module.h"

#include <dlfcn.h>

#include <filesystem>

namespace HostLinux {

namespace fs = std::filesystem;

namespace {

bool isModuleFolder(const fs::path& folder) {
  return folder.filename() == "kiva" && folder.parent_path().filename() == "lib";
}

}  // namespace

void* Module::FindSymbol(const char* symbol) {
  if (!tried_) {
    tried_ = true;
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    const fs::path modules = isModuleFolder(folder) ? folder : folder.parent_path() / "lib/kiva";
    if (!error) handle_ = dlopen((modules / (name_ + ".so")).c_str(), RTLD_NOW | RTLD_LOCAL);
  }
  return handle_ ? dlsym(handle_, symbol) : nullptr;
}

}  // namespace HostLinux
