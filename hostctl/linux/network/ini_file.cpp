// SPDX-License-Identifier: MIT
#include "linux/network/ini_file.h"

#include <algorithm>

#include "hostctl/lib/exception.h"
#include "linux/text.h"

namespace HostLinux {

namespace {

constexpr const char* kOperation = "write a network file";

bool isComment(std::string_view line) {
  line = trim(line);
  return line.starts_with('#') || line.starts_with(';');
}

/// The line at the start of `text` with its end; an assignment goes on behind a backslash, and a
/// comment does not end it.
std::size_t lineLength(std::string_view text) {
  std::size_t length = 0;
  bool goesOn = true;
  while (goesOn && length < text.size()) {
    const auto end = std::min(text.find('\n', length), text.size() - 1) + 1;
    const std::string_view line = text.substr(length, end - length);
    const bool inside = length > 0 && isComment(line);
    goesOn = inside || (!isComment(line) && trim(line).ends_with('\\'));
    length = end;
  }
  return length;
}

std::string joined(std::string_view text) {
  std::string value;
  for (const std::string_view line : lines(text)) {
    if (isComment(line)) continue;
    std::string_view part = trim(line);
    if (part.ends_with('\\')) part.remove_suffix(1);
    value.append(value.empty() ? "" : " ").append(trim(part));
  }
  return value;
}

bool isHeading(std::string_view line) {
  return line.size() > 2 && line.front() == '[' && line.back() == ']';
}

}  // namespace

IniValue::IniValue(std::string text) : text_(std::move(text)) {
  const auto breaks = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; };
  if (std::any_of(text_.begin(), text_.end(), breaks))
    throw HostCtl::Lib::HostCtlException(kOperation, "value", "a value is one line of text");
  if (trim(text_).size() != text_.size() || text_.ends_with('\\'))
    throw HostCtl::Lib::HostCtlException(kOperation, text_, "would not be read as it is written");
}

IniSection::IniSection(std::string name) : name_(std::move(name)) {
  const IniValue heading("[" + name_ + "]");
  lines_.push_back({heading.Text() + "\n", "", ""});
}

/// Where a new assignment goes: behind the last one, else behind the heading.
std::size_t IniSection::End() const {
  const auto last = std::find_if(lines_.rbegin(), lines_.rend(),
                                 [](const Line& line) { return !line.key.empty(); });
  return std::max<std::size_t>(1, static_cast<std::size_t>(lines_.rend() - last));
}

/// Those behind the last assignment, which tell more of what follows than of this section.
std::vector<IniSection::Line> IniSection::Comments() const {
  const auto isComment = [](const Line& line) { return HostLinux::isComment(line.text); };
  const auto end = lines_.begin() + static_cast<std::ptrdiff_t>(End());
  return {std::find_if(end, lines_.end(), isComment), lines_.end()};
}

std::optional<std::string> IniSection::Get(std::string_view key) const {
  const auto found = std::find_if(lines_.rbegin(), lines_.rend(),
                                  [&](const Line& line) { return line.key == key; });
  return found == lines_.rend() ? std::nullopt : std::optional(found->value);
}

std::vector<std::string> IniSection::GetAll(std::string_view key) const {
  std::vector<std::string> values;
  for (const Line& line : lines_) {
    if (line.key != key) continue;
    if (line.value.empty())
      values.clear();
    else
      values.push_back(line.value);
  }
  return values;
}

std::vector<std::string> IniSection::Keys() const {
  std::vector<std::string> keys;
  for (const Line& line : lines_)
    if (!line.key.empty()) keys.push_back(line.key);
  return keys;
}

void IniSection::Set(std::string_view key, const IniValue& value) {
  SetAll(key, {value.Text()});
}

void IniSection::SetAll(std::string_view key, const std::vector<std::string>& values) {
  if (GetAll(key) == values) return;
  Remove(key);
  for (const auto& value : values) Add(key, value);
}

void IniSection::Add(std::string_view key, const IniValue& value) {
  const IniValue line(std::string(key) + "=" + value.Text());
  const std::size_t end = End();
  if (!lines_[end - 1].text.ends_with('\n')) lines_[end - 1].text += '\n';
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(end),
                {line.Text() + "\n", std::string(key), value.Text()});
}

void IniSection::Remove(std::string_view key) {
  std::erase_if(lines_, [&](const Line& line) { return line.key == key; });
}

IniFile::IniFile(std::string_view text) {
  while (!text.empty()) {
    const std::string_view raw = text.substr(0, lineLength(text));
    text.remove_prefix(raw.size());
    const std::string_view line = trim(raw);
    IniSection::Line added{std::string(raw), "", ""};
    if (isHeading(line)) {
      sections_.push_back(IniSection());
      sections_.back().name_ = line.substr(1, line.size() - 2);
    } else if (const auto equals = line.find('='); !isComment(line) && equals != line.npos) {
      added.key = trim(line.substr(0, equals));
      added.value = joined(line.substr(equals + 1));
    }
    sections_.back().lines_.push_back(std::move(added));
  }
}

std::optional<std::string> IniFile::Get(std::string_view section, std::string_view key) const {
  std::optional<std::string> value;
  for (const IniSection* one : Sections(section))
    if (auto found = one->Get(key)) value = std::move(found);
  return value;
}

std::vector<std::string> IniFile::GetAll(std::string_view section, std::string_view key) const {
  std::vector<std::string> values;
  for (const IniSection* one : Sections(section))
    for (auto& value : one->GetAll(key)) values.push_back(std::move(value));
  return values;
}

IniSection& IniFile::SectionFor(std::string_view section, std::string_view key) {
  const auto all = Sections(section);
  for (IniSection* one : all)
    if (one->Get(key)) return *one;
  return all.empty() ? AddSection(std::string(section)) : *all.front();
}

void IniFile::Set(std::string_view section, std::string_view key, const IniValue& value) {
  IniSection& chosen = SectionFor(section, key);
  for (IniSection* one : Sections(section))
    if (one != &chosen) one->Remove(key);
  chosen.Set(key, value);
}

void IniFile::SetAll(std::string_view section, std::string_view key,
                     const std::vector<std::string>& values) {
  if (GetAll(section, key) == values) return;
  Remove(section, key);
  for (const auto& value : values) Add(section, key, value);
}

void IniFile::Add(std::string_view section, std::string_view key, const IniValue& value) {
  SectionFor(section, key).Add(key, value);
}

void IniFile::SetOrRemove(std::string_view section, std::string_view key,
                          const std::string& value) {
  if (value.empty())
    Remove(section, key);
  else
    Set(section, key, value);
}

void IniFile::Remove(std::string_view section, std::string_view key) {
  for (IniSection* one : Sections(section)) one->Remove(key);
}

std::vector<IniSection*> IniFile::Sections(std::string_view name) {
  std::vector<IniSection*> found;
  for (IniSection& section : sections_)
    if (section.name_ == name && &section != &sections_.front()) found.push_back(&section);
  return found;
}

std::vector<const IniSection*> IniFile::Sections(std::string_view name) const {
  std::vector<const IniSection*> found;
  for (const IniSection& section : sections_)
    if (section.name_ == name && &section != &sections_.front()) found.push_back(&section);
  return found;
}

IniSection& IniFile::AddSection(const std::string& name) {
  auto& before = sections_.back().lines_;
  if (!before.empty() && !before.back().text.ends_with('\n')) before.back().text += '\n';
  if (!before.empty()) before.push_back({"\n", "", ""});
  return sections_.emplace_back(IniSection(name));
}

void IniFile::RemoveSections(std::string_view name,
                             const std::function<bool(const IniSection&)>& unwanted) {
  for (std::size_t i = sections_.size() - 1; i > 0; --i) {
    IniSection& section = sections_[i];
    if (section.name_ != name || !unwanted(section)) continue;
    const auto behind = section.Comments();
    auto& before = sections_[i - 1].lines_;
    before.insert(before.end(), behind.begin(), behind.end());
    sections_.erase(sections_.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

std::string IniFile::Text() const {
  std::string text;
  for (const IniSection& section : sections_)
    for (const auto& line : section.lines_) text += line.text;
  return text;
}

}  // namespace HostLinux
