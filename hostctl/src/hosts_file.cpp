// SPDX-License-Identifier: MIT
#include "hostctl/network/hosts_file.h"

#include <strings.h>

#include <algorithm>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/platform.h"
#include "hostctl/lib/whole_file.h"
#include "src/enter.h"
#include "tarnctl/network/hosts_file_impl.h"

namespace HostCtl::Network {

namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";

bool sameName(std::string_view one, std::string_view other) {
  return !one.empty() && one.size() == other.size() &&
         strncasecmp(one.data(), other.data(), one.size()) == 0;
}

/// What is kept of an entry, which goes up to the line's comment or end. Each of its words is
/// looked at together with the blanks before it; the first is the address.
std::string shortened(std::string_view entry, std::string_view name) {
  std::string kept;
  int words = 0, gone = 0;
  for (std::size_t at = 0; at < entry.size();) {
    const auto begin = std::min(entry.find_first_not_of(kBlanks, at), entry.size());
    const auto end = std::min(entry.find_first_of(kBlanks, begin), entry.size());
    const bool goes = words > 0 && sameName(entry.substr(begin, end - begin), name);
    if (!goes) kept += entry.substr(at, end - at);
    gone += goes ? 1 : 0;
    words += begin < end ? 1 : 0;
    at = end;
  }
  return gone > 0 && gone == words - 1 ? std::string() : kept;
}

/// The first line of `text`, which is not empty, with its line break.
std::string_view firstLine(std::string_view text) {
  return text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
}

/// Where `text` has this whole line; npos where it does not.
std::size_t findLine(std::string_view text, std::string_view line) {
  for (std::size_t at = 0; !line.empty() && at < text.size();) {
    const auto found = firstLine(text.substr(at));
    if (found == line) return at;
    at += found.size();
  }
  return text.npos;
}

}  // namespace

std::string withoutHostName(std::string_view text, std::string_view name) {
  std::string result;
  while (!text.empty()) {
    const auto line = firstLine(text);
    const auto entry = line.substr(0, std::min(line.find_first_of("#\n"), line.size()));
    const std::string kept = shortened(entry, name);
    const auto rest = line.substr(entry.size());
    result += kept;
    if (!kept.empty() || entry.empty() || rest.starts_with('#')) result += rest;
    text.remove_prefix(line.size());
  }
  return result;
}

std::string withHostNameOf(std::string_view text, std::string_view before, std::string_view name) {
  std::string result(text);
  if (withoutHostName(text, name) != text) return result;
  while (!before.empty()) {
    const auto line = firstLine(before);
    const std::string left = withoutHostName(line, name);
    if (left != line) {
      if (const auto at = findLine(result, left); at != result.npos)
        result.replace(at, left.size(), line);
      else
        result.append(result.empty() || result.back() == '\n' ? "" : "\n").append(line);
    }
    before.remove_prefix(line.size());
  }
  return result;
}

}  // namespace HostCtl::Network

namespace TarnCtl::Network {

void HostsFileImpl::RemoveEntryByHostName(const std::string& name) try {
  enterChange("RemoveEntryByHostName", name);
  const std::string path = HostCtl::Lib::platform().HostPath("/etc/hosts");
  const std::string text = HostCtl::Lib::readFile(path);
  const std::string without = HostCtl::Network::withoutHostName(text, name);
  if (without != text) HostCtl::Lib::changeFile(path, without);
} catch (const std::system_error& error) {
  throw HostCtl::Lib::HostCtlException("RemoveEntryByHostName", name, error.code().message());
}

}  // namespace TarnCtl::Network
