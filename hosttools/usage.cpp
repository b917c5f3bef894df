// SPDX-License-Identifier: MIT
#include "hosttools/usage.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <iterator>
#include <optional>
#include <sstream>
#include <system_error>

namespace HostTools {

namespace {

constexpr std::size_t kLongestArgument = 255;

bool isValueName(std::string_view word) {
  return !word.empty() &&
         std::all_of(word.begin(), word.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

bool isOption(std::string_view word) {
  return word.starts_with('-');
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

struct Option {
  bool takesValue = false;
  bool optional = false;
};

/// One usage, and how far a call has followed it.
class Reading {
 public:
  explicit Reading(std::string_view usage);
  /// Throws UsageError.
  void Follow(Arguments arguments);
  const Values& Found() const { return values_; }
  /// How many arguments fitted.
  std::size_t Progress() const { return progress_; }

 private:
  void Add(std::string_view word, std::string_view next, bool optional);
  void TakeOption(const std::string& name, Arguments& rest);
  void TakeWord(const std::string& word);
  void CheckAllThere() const;

  std::map<std::string, Option> options_;
  /// Words and operands that are still to come.
  std::deque<std::string> expected_;
  std::size_t optionalOperands_ = 0;
  Values values_;
  std::size_t progress_ = 0;
};

std::string_view bare(std::string_view word) {
  if (word.starts_with('[')) word.remove_prefix(1);
  if (word.ends_with(']')) word.remove_suffix(1);
  return word;
}

Reading::Reading(std::string_view usage) {
  std::istringstream in{std::string(usage)};
  const std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
  bool optional = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    optional = optional || words[i].starts_with('[');
    Add(bare(words[i]), i + 1 < words.size() ? bare(words[i + 1]) : "", optional);
    if (isOption(bare(words[i])) && options_.at(std::string(bare(words[i]))).takesValue) ++i;
    if (words[i].ends_with(']')) optional = false;
  }
}

void Reading::Add(std::string_view word, std::string_view next, bool optional) {
  if (isOption(word)) {
    options_[std::string(word)] = {isValueName(next), optional};
  } else {
    expected_.emplace_back(word);
    optionalOperands_ += optional ? 1 : 0;
  }
}

void Reading::TakeOption(const std::string& name, Arguments& rest) {
  const auto option = options_.find(name);
  if (option == options_.end()) throw UsageError("unknown argument " + name);
  std::string value;
  if (option->second.takesValue) {
    if (rest.empty() || rest.front().empty()) throw UsageError(name + " needs a value");
    value = rest.front();
    rest = rest.subspan(1);
  }
  if (!values_.emplace(name, value).second) throw UsageError(name + " given twice");
}

void Reading::TakeWord(const std::string& word) {
  if (expected_.empty()) throw UsageError("unknown argument " + word);
  const std::string wanted = expected_.front();
  expected_.pop_front();
  if (isValueName(wanted)) {
    if (word.empty()) throw UsageError(wanted + " is empty");
    values_[wanted] = word;
  } else if (word != wanted) {
    throw UsageError("unknown argument " + word);
  }
}

void Reading::CheckAllThere() const {
  if (expected_.size() > optionalOperands_ && !isValueName(expected_.front()))
    throw UsageError("not a whole command: --help shows them");
  if (expected_.size() > optionalOperands_)
    throw UsageError("missing argument " + expected_.front());
  for (const auto& [name, option] : options_)
    if (!option.optional && values_.count(name) == 0) throw UsageError("missing argument " + name);
}

void Reading::Follow(Arguments arguments) {
  while (!arguments.empty()) {
    const std::string& argument = arguments.front();
    arguments = arguments.subspan(1);
    if (isOption(argument))
      TakeOption(argument, arguments);
    else
      TakeWord(argument);
    ++progress_;
  }
  CheckAllThere();
}

void checkPlain(const std::string& argument) {
  if (argument.size() > kLongestArgument)
    throw UsageError("an argument is longer than 255 characters");
  if (std::any_of(argument.begin(), argument.end(), isControl))
    throw UsageError("an argument has control characters");
}

}  // namespace

Choice chooseUsage(const std::vector<std::string_view>& usages, Arguments arguments) {
  std::for_each(arguments.begin(), arguments.end(), checkPlain);
  std::size_t furthest = 0;
  std::optional<UsageError> reason;
  for (std::size_t i = 0; i < usages.size(); ++i) {
    Reading reading(usages[i]);
    try {
      reading.Follow(arguments);
      return {i, reading.Found()};
    } catch (const UsageError& error) {
      if (reason && reading.Progress() <= furthest) continue;
      furthest = reading.Progress();
      reason = error;
    }
  }
  throw reason.value_or(UsageError("takes no arguments"));
}

std::int64_t readNumber(std::string_view option, const std::string& text, std::int64_t least,
                        std::int64_t most) {
  std::int64_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < least || value > most)
    throw UsageError(std::string(option) + " is a whole number from " + std::to_string(least) +
                     " to " + std::to_string(most));
  return value;
}

}  // namespace HostTools
