// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace HostLinux {

/// A text that may be a value in one of networkd's files: a single line that ends there. Whatever
/// would be read as more than one line, or as less than was written, throws
/// HostCtl::Lib::HostCtlException on its way into a file.
class IniValue {
 public:
  IniValue(std::string text);
  IniValue(const char* text) : IniValue(std::string(text)) {}

  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

/// One section of such a file, from its heading to the next one. What it holds besides assignments,
/// and how they are written, stays as it is; a value that is what it was changes no byte.
class IniSection {
 public:
  explicit IniSection(std::string name);

  const std::string& Name() const { return name_; }
  /// The last value of `key`; nothing when the section does not set it.
  std::optional<std::string> Get(std::string_view key) const;
  /// All of them in their order. An empty value takes back those before it, as networkd reads it.
  std::vector<std::string> GetAll(std::string_view key) const;
  /// What it sets, in its order.
  std::vector<std::string> Keys() const;
  /// Makes `value` the one value of `key`.
  void Set(std::string_view key, const IniValue& value);
  /// Makes `values` all values of `key`.
  void SetAll(std::string_view key, const std::vector<std::string>& values);
  void Add(std::string_view key, const IniValue& value);
  void Remove(std::string_view key);

 private:
  friend class IniFile;
  /// An assignment, or with an empty key what is none: a heading, a comment, an empty line, and
  /// what nobody understands. `text` is the line, or the lines that a backslash joins.
  struct Line {
    std::string text;
    std::string key;
    std::string value;
  };

  IniSection() = default;
  std::size_t End() const;
  std::vector<Line> Comments() const;

  std::string name_;
  std::vector<Line> lines_;
};

/// A `.network` or `.netdev` file as networkd reads it: sections of assignments, of which some
/// ([Address], [Route], [BridgeVLAN]) may come many times, each for itself. Whoever changes a file
/// of ours does it through this, so that what an operator or a later version wrote into it stays.
class IniFile {
 public:
  IniFile() = default;
  explicit IniFile(std::string_view text);

  /// Of the last section of that name that sets it.
  std::optional<std::string> Get(std::string_view section, std::string_view key) const;
  /// Of all sections of that name, one after the other.
  std::vector<std::string> GetAll(std::string_view section, std::string_view key) const;
  /// In the section that sets it, else the first of that name, else a new one at the end.
  void Set(std::string_view section, std::string_view key, const IniValue& value);
  /// Makes `values` all values of `key`.
  void SetAll(std::string_view section, std::string_view key,
              const std::vector<std::string>& values);
  void Add(std::string_view section, std::string_view key, const IniValue& value);
  /// An empty value takes the key away.
  void SetOrRemove(std::string_view section, std::string_view key, const std::string& value);
  /// From all sections of that name.
  void Remove(std::string_view section, std::string_view key);

  /// The sections of that name; the pointers are good until a section comes or goes.
  std::vector<IniSection*> Sections(std::string_view name);
  std::vector<const IniSection*> Sections(std::string_view name) const;
  IniSection& AddSection(const std::string& name);
  /// Removes those sections of that name that `unwanted` says, but for comments at their end.
  void RemoveSections(std::string_view name,
                      const std::function<bool(const IniSection&)>& unwanted);

  std::string Text() const;

 private:
  IniSection& SectionFor(std::string_view section, std::string_view key);

  /// The first is what stands before any heading.
  std::vector<IniSection> sections_ = std::vector<IniSection>{IniSection()};
};

}  // namespace HostLinux
