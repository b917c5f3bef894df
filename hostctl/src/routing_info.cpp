// SPDX-License-Identifier: MIT
#include "src/enter.h"
#include "src/stack.h"
#include "tarnctl/network/network_info_impl.h"

namespace TarnCtl::Network {

using namespace HostCtl::Network;

RoutingInfoImpl::RoutingInfoImpl(const std::string& stack) {
  enterStack("RoutingInfo", stack);
}

Ipv4Address RoutingInfoImpl::GetTarnDefaultGateway() {
  return enter("GetTarnDefaultGateway").ReadRouting().ipv4Gateway;
}

Ipv6Address RoutingInfoImpl::GetTarnIpv6DefaultGateway() {
  return enter("GetTarnIpv6DefaultGateway").ReadRouting().ipv6Gateway;
}

void RoutingInfoImpl::SetTarnDefaultGateway(Ipv4Address gateway, bool) {
  enterChange("SetTarnDefaultGateway", gateway.GetStringAddress())
      .Network()
      .WriteIpv4Gateway(gateway);
}

void RoutingInfoImpl::SetIpv6TarnDefaultGateway(const Ipv6Address& gateway) {
  enterChange("SetIpv6TarnDefaultGateway", gateway.GetScopedAddress())
      .Network()
      .WriteIpv6Gateway(gateway);
}

}  // namespace TarnCtl::Network
