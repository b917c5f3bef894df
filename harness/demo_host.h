// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "harness/child.h"
#include "harness/temporary_folder.h"

namespace Harness {

/// The bytes of a file; none where there is no file.
std::string contentOf(const std::filesystem::path& file);

/// A sample host of a test's own: a copy of the built-in sample in a temporary folder, which goes
/// with this object. Change it before the program starts, read its journal afterwards.
class DemoHost {
 public:
  /// `changes` as for Change.
  explicit DemoHost(const nlohmann::json& changes = nlohmann::json::object());

  const std::filesystem::path& Directory() const { return folder_.Path(); }
  /// The file that the program sees at an absolute path.
  std::filesystem::path Root(std::string_view absolutePath) const;
  /// How to start kiva-demo on this host, with further arguments.
  Launch Demo(const std::vector<std::string>& arguments = {}) const;

  nlohmann::json State() const;
  /// Changes host.json: an object is a merge patch (null removes a key), an array is a JSON patch
  /// of operations with "op", "path" and "value" (for what lies within an array).
  void Change(const nlohmann::json& changes);
  /// Sets one value of host.json by its JSON pointer.
  void Set(const std::string& pointer, const nlohmann::json& value);

  /// From now on nobody can change host.json through the program: it is not written any more.
  void Freeze();

  std::filesystem::path File() const { return Directory() / "host.json"; }
  /// host.json as it is, also where it is no JSON.
  std::string Text() const;
  void WriteText(std::string_view text);

  /// The lines of the journal so far; the host's own folder reads "HOST" in them.
  std::vector<std::string> Journal() const;
  /// The lines of the journal that are of one kind ("hostctl", "run", "event", "audit", or
  /// "log.info" and the other priorities), without the kind and the tab.
  std::vector<std::string> Journal(std::string_view kind) const;

 private:
  TemporaryFolder folder_;
};

}  // namespace Harness
