// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

#include <utility>

namespace HostCtl::Lib {

/// Owns a file descriptor and closes it; negative means none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { Close(); }

  int Get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  void Close() {
    if (number_ >= 0) close(std::exchange(number_, -1));
  }

 private:
  int number_ = -1;
};

}  // namespace HostCtl::Lib
