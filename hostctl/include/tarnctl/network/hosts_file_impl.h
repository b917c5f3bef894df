// SPDX-License-Identifier: MIT
#pragma once

#include "hostctl/network/hosts_file.h"

namespace TarnCtl::Network {

/// /etc/hosts of the host that the program runs on. For any thread, one at a time.
class HostsFileImpl : public HostCtl::Network::HostsFile {
 public:
  void RemoveEntryByHostName(const std::string& name) override;
};

}  // namespace TarnCtl::Network
