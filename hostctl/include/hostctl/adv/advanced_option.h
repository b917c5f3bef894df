// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

namespace HostCtl::Adv {

using OptionValue = std::variant<std::int64_t, std::string>;

/// A host setting that is known by its path, for example "/UserVars/KivaTimeOut".
class AdvancedOption {
 public:
  explicit AdvancedOption(std::string path) : path_(std::move(path)) {}
  virtual ~AdvancedOption() = default;
  const std::string& GetPath() const { return path_; }

 private:
  std::string path_;
};

class AdvancedIntegerOption : public AdvancedOption {
 public:
  AdvancedIntegerOption(std::string path, std::int64_t value)
      : AdvancedOption(std::move(path)), value_(value) {}
  std::int64_t GetValue() const { return value_; }
  /// Stores the value on the host, where it holds from then on. Throws HostCtlException, with the
  /// old value in force.
  virtual void SetValue(std::int64_t value) { value_ = value; }

 private:
  std::int64_t value_;
};

class AdvancedStringOption : public AdvancedOption {
 public:
  AdvancedStringOption(std::string path, std::string value)
      : AdvancedOption(std::move(path)), value_(std::move(value)) {}
  const std::string& GetValue() const { return value_; }

 private:
  std::string value_;
};

}  // namespace HostCtl::Adv
