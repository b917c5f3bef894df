// SPDX-License-Identifier: MIT
#include "linux/network/distributed_switches.h"

#include "hostctl/lib/exception.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

std::vector<HostSeam::DistributedSwitchRecord> readDistributedSwitches(const Files&) {
  return {};
}

void moveNicToPort(const Files&, const std::string& nic, const HostCtl::Network::HostLocalPort&) {
  throw HostCtlException("MoveToHostLocalPort", nic, "cannot be done yet");
}

void addDistributedUplink(const Files&, const std::string& switchName, const std::string&) {
  throw HostCtlException("AddDistributedUplink", switchName, "cannot be done yet");
}

void removeDistributedUplink(const Files&, const std::string& switchName, const std::string&) {
  throw HostCtlException("RemoveDistributedUplink", switchName, "cannot be done yet");
}

}  // namespace HostLinux
