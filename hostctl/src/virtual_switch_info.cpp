// SPDX-License-Identifier: MIT
#include "tarnctl/network/virtual_switch_info_impl.h"

#include <algorithm>

#include "src/enter.h"

namespace TarnCtl::Network {

using namespace HostCtl::Network;

namespace {

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const auto& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

class PortGroupImpl : public PortGroup {
 public:
  PortGroupImpl(std::string switchName, HostSeam::PortGroupRecord record)
      : switchName_(std::move(switchName)), record_(std::move(record)) {}

  std::string GetName() const override { return record_.name; }
  std::int16_t GetVlanId() const override { return enter("GetVlanId"), record_.vlanId; }
  void SetVlanId(std::int16_t vlanId) override;
  NicTeamingPolicy GetNicTeamingPolicy() const override {
    return enter("GetNicTeamingPolicy"), NicTeamingPolicy(record_.activeUplinks);
  }
  void SetNicTeamingPolicy(const NicTeamingPolicy& policy) override;

 private:
  std::string switchName_;
  HostSeam::PortGroupRecord record_;
};

void PortGroupImpl::SetVlanId(std::int16_t vlanId) {
  enterChange("SetVlanId", record_.name, std::to_string(vlanId))
      .Network()
      .WriteVlanId({switchName_, record_.name}, vlanId);
  record_.vlanId = vlanId;
}

void PortGroupImpl::SetNicTeamingPolicy(const NicTeamingPolicy& policy) {
  const auto active = policy.GetActiveUplinks();
  enterChange("SetNicTeamingPolicy", record_.name, joined(active))
      .Network()
      .WriteActiveUplinks({switchName_, record_.name}, active);
  record_.activeUplinks = active;
}

class VirtualSwitchImpl : public VirtualSwitch {
 public:
  explicit VirtualSwitchImpl(HostSeam::SwitchRecord record) : record_(std::move(record)) {}

  std::string GetName() const override { return record_.name; }
  std::vector<std::string> GetUplinks() const override { return record_.uplinks; }
  void AddUplink(const std::string& pnic) override {
    enterChange("AddUplink", record_.name, pnic).Network().AddUplink(record_.name, pnic);
  }
  void RemoveUplink(const std::string& pnic) override {
    enterChange("RemoveUplink", record_.name, pnic).Network().RemoveUplink(record_.name, pnic);
  }
  std::vector<std::unique_ptr<PortGroup>> GetPortGroups() const override;

 private:
  HostSeam::SwitchRecord record_;
};

std::vector<std::unique_ptr<PortGroup>> VirtualSwitchImpl::GetPortGroups() const {
  std::vector<std::unique_ptr<PortGroup>> groups;
  for (const auto& group : record_.portGroups)
    groups.push_back(std::make_unique<PortGroupImpl>(record_.name, group));
  return groups;
}

}  // namespace

std::vector<std::unique_ptr<VirtualSwitch>> VirtualSwitchInfoImpl::GetVirtualSwitches() {
  std::vector<std::unique_ptr<VirtualSwitch>> switches;
  for (auto& record : enter("GetVirtualSwitches").ReadSwitches())
    switches.push_back(std::make_unique<VirtualSwitchImpl>(std::move(record)));
  return switches;
}

}  // namespace TarnCtl::Network

namespace HostCtl::Network {

std::vector<std::string> NicTeamingPolicy::GetActiveUplinks() const {
  const auto most = static_cast<std::size_t>(std::max(maxActive_, 0));
  return {order_.begin(),
          order_.begin() + static_cast<std::ptrdiff_t>(std::min(most, order_.size()))};
}

}  // namespace HostCtl::Network
