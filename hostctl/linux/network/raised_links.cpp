// SPDX-License-Identifier: MIT
#include "linux/network/raised_links.h"

#include <syslog.h>

#include <algorithm>
#include <exception>

#include "linux/network/link_control.h"
#include "linux/network_tables.h"

namespace HostLinux {

RaisedLinks::~RaisedLinks() {
  for (const auto& link : raised_) Lower(link);
}

void RaisedLinks::Raise(const std::string& link) {
  const auto links = readLinks(operation_);
  const auto isUp = [&](const LinkRow& row) { return row.name == link && row.up; };
  if (std::any_of(links.begin(), links.end(), isUp)) return;
  setLinkUp(operation_, link, true);
  raised_.push_back(link);
}

void RaisedLinks::Lower(const std::string& link) const try {
  setLinkUp(operation_, link, false);
} catch (const std::exception& error) {
  syslog(LOG_USER | LOG_ERR, "%s", error.what());
}

}  // namespace HostLinux
