// SPDX-License-Identifier: MIT
#include "sample/repair_changes.h"

#include "hostctl/lib/exception.h"

namespace HostSample {

using HostCtl::Lib::HostCtlException;

void moveNic(Store&, const std::string&, const HostSeam::PortGroupName&) {
  throw HostCtlException("cannot be done yet");
}
void moveNicToPort(Store&, const std::string&, const HostCtl::Network::HostLocalPort&) {
  throw HostCtlException("cannot be done yet");
}
void addDistributedUplink(Store&, const std::string&, const std::string&) {
  throw HostCtlException("cannot be done yet");
}
void removeDistributedUplink(Store&, const std::string&, const std::string&) {
  throw HostCtlException("cannot be done yet");
}
void disableNetDumper(Store&) {
  throw HostCtlException("cannot be done yet");
}
void clearNetwork(Store&) {
  throw HostCtlException("cannot be done yet");
}
void autoConfigureNetwork(Store&) {
  throw HostCtlException("cannot be done yet");
}

}  // namespace HostSample
