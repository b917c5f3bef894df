// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <map>
#include <memory>
#include <random>
#include <string>

#include "harness/demo_host.h"
#include "harness/terminal.h"

namespace Harness {

/// An operator who presses anything at all, on a sample host that changes meanwhile. The same seed
/// presses the same keys, as far as time allows.
class RandomOperator {
 public:
  using Environment = std::map<std::string, std::string>;

  /// `environment` is the program's, besides what makes it quick.
  RandomOperator(unsigned long seed, Size size, Environment environment);

  /// Presses so many keys, starting the program again whenever it has ended, and ends it then.
  /// Throws std::runtime_error, with the keys since its start, when it hangs or ends with another
  /// status than 0.
  void Press(unsigned long keys);
  const DemoHost& Host() const { return host_; }

 private:
  template <typename Value>
  Value OneOf(std::initializer_list<Value> values) {
    return values.begin()[Below(values.size())];
  }
  int Below(std::size_t end) { return static_cast<int>(random_() % end); }
  bool HasEnded() const;
  void Restart();
  void Step();
  void PressSome(int count);
  std::string SomeKey();
  void LogIn();
  void ChangeHost();
  void Send(const std::string& bytes, int keys);
  void Settle();
  [[noreturn]] void Fail(const std::string& what);

  std::mt19937_64 random_;
  const Size size_;
  const Environment environment_;
  DemoHost host_;
  std::unique_ptr<Terminal> terminal_;
  unsigned long sent_ = 0;
  std::string recent_;
};

}  // namespace Harness
