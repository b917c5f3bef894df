// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace HostLinux {

/// Links that a change brings up: they go down again with this, but for those that it keeps. For
/// changes that may fail, or that only look whether a link has a carrier.
class RaisedLinks {
 public:
  explicit RaisedLinks(std::string operation) : operation_(std::move(operation)) {}
  ~RaisedLinks();
  RaisedLinks(const RaisedLinks&) = delete;
  RaisedLinks& operator=(const RaisedLinks&) = delete;

  /// Nothing for a link that is up. Throws HostCtlException.
  void Raise(const std::string& link);
  void Keep(const std::string& link) { std::erase(raised_, link); }

 private:
  void Lower(const std::string& link) const;

  std::string operation_;
  std::vector<std::string> raised_;
};

}  // namespace HostLinux
