// SPDX-License-Identifier: MIT
#include "linux/text.h"

#include <strings.h>

#include <charconv>
#include <ctime>

namespace HostLinux {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

std::string unquoted(std::string_view value) {
  const char quote = value.empty() ? '\0' : value.front();
  if (quote != '"' && quote != '\'') return std::string(value);
  std::string text;
  for (std::size_t i = 1; i < value.size() && value[i] != quote; ++i) {
    if (quote == '"' && value[i] == '\\' && i + 1 < value.size()) ++i;
    text += value[i];
  }
  return text;
}

/// What stands before the "=" of a line, or nothing.
std::string_view keyOf(std::string_view line) {
  const auto equals = line.find('=');
  return equals == std::string_view::npos ? std::string_view() : trim(line.substr(0, equals));
}

}  // namespace

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string_view> lines(std::string_view text) {
  std::vector<std::string_view> result;
  while (!text.empty()) {
    const auto end = text.find('\n');
    result.push_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return result;
}

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> result;
  for (text = trim(text); !text.empty(); text = trim(text)) {
    const auto end = text.find_first_of(kBlanks);
    result.push_back(text.substr(0, end));
    text.remove_prefix(result.back().size());
  }
  return result;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

std::string timeText() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  gmtime_r(&now, &parts);
  char text[32];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
  std::int64_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

bool isPlainName(std::string_view name) {
  constexpr std::string_view kAllowed =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
  return !name.empty() && name.front() != '.' && name.front() != '-' &&
         name.find_first_not_of(kAllowed) == std::string_view::npos;
}

Assignments parseAssignments(std::string_view text) {
  Assignments result;
  for (const std::string_view line : lines(text)) {
    const std::string_view key = keyOf(line);
    if (key.empty() || key.front() == '#') continue;
    result[std::string(key)] = unquoted(trim(line.substr(line.find('=') + 1)));
  }
  return result;
}

std::string withAssignment(std::string_view text, std::string_view key, std::string_view value) {
  const std::string assignment = std::string(key).append("=").append(value) + "\n";
  std::string result;
  bool set = false;
  for (const std::string_view line : lines(text)) {
    const bool replaced = keyOf(line) == key;
    if (!replaced) result.append(line).append("\n");
    if (replaced && !set) result += assignment;
    set = set || replaced;
  }
  return set ? result : result + assignment;
}

std::string valueOf(const Assignments& assignments, const std::string& key) {
  const auto found = assignments.find(key);
  return found == assignments.end() ? "" : found->second;
}

}  // namespace HostLinux
