// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace HostLinux {

/// A part of the program that is loaded when it is first needed, because the libraries behind it
/// cost more start-up time than the first screen may take: NAME.so in ../lib/kiva beside the
/// program's own folder, where programs that nobody calls by their own name lie too. A module that
/// was loaded stays; one that is missing, or whose libraries are, is tried once.
class Module {
 public:
  explicit Module(std::string name) : name_(std::move(name)) {}

  /// The function called `symbol`, or null.
  template <class Function>
  Function Find(const char* symbol) {
    return reinterpret_cast<Function>(FindSymbol(symbol));
  }

 private:
  void* FindSymbol(const char* symbol);

  std::string name_;
  bool tried_ = false;
  void* handle_ = nullptr;
};

}  // namespace HostLinux
