// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string>

#include "hostctl/network/nic.h"
#include "hostseam/network.h"

namespace TarnCtl::Network {

/// A kernel interface as the driver reported it.
class TarnNicImpl : public HostCtl::Network::TarnNic {
 public:
  explicit TarnNicImpl(HostSeam::KernelNic nic) : nic_(std::move(nic)) {}
  std::string GetInterfaceName() const override { return nic_.name; }
  bool IsStale() const override;
  void Refresh() override;
  HostCtl::Network::IpConfig GetConfiguredIpConfig() const override;
  HostCtl::Network::IpConfig GetIpConfig() const override;
  HostCtl::Network::ConnectionPoint GetConnectionPoint() const override;
  std::string GetMacAddress() const override;
  void SetIpConfig(const HostCtl::Network::IpConfig& config) override;
  void RenewLease(HostCtl::Network::LeaseRenewal what) override;
  void ReleaseLease() override;
  void Disable() override;
  void Enable() override;
  void Restart() override;
  void SetMacAddressFromPnic(const HostCtl::Network::Pnic* pnic) override;
  void SetMacAddress(const std::string& macAddress) override;
  void Migrate(const std::string& switchName, const std::string& portGroup) override;
  void MoveToHostLocalPort(const HostCtl::Network::HostLocalPort& port) override;

 private:
  using Clock = std::chrono::steady_clock;
  HostSeam::KernelNic nic_;
  Clock::time_point readAt_ = Clock::now();
};

}  // namespace TarnCtl::Network
