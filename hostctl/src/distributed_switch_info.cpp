// SPDX-License-Identifier: MIT
#include "src/enter.h"
#include "tarnctl/network/virtual_switch_info_impl.h"

namespace TarnCtl::Network {

using namespace HostCtl::Network;

namespace {

class DistributedSwitchImpl : public DistributedSwitch {
 public:
  explicit DistributedSwitchImpl(HostSeam::DistributedSwitchRecord record)
      : record_(std::move(record)) {}

  std::string GetName() const override { return record_.name; }
  bool IsThirdParty() const override { return record_.thirdParty; }
  std::vector<std::string> GetUplinks() const override { return record_.uplinks; }
  std::vector<DistributedPort> GetPorts() const override { return record_.ports; }
  void AddUplink(const std::string& pnic) override {
    enterChange("AddDistributedUplink", record_.name, pnic)
        .Network()
        .AddDistributedUplink(record_.name, pnic);
  }
  void RemoveUplink(const std::string& pnic) override {
    enterChange("RemoveDistributedUplink", record_.name, pnic)
        .Network()
        .RemoveDistributedUplink(record_.name, pnic);
  }

 private:
  const HostSeam::DistributedSwitchRecord record_;
};

}  // namespace

std::vector<std::unique_ptr<DistributedSwitch>>
DistributedSwitchInfoImpl::GetDistributedSwitches() {
  std::vector<std::unique_ptr<DistributedSwitch>> switches;
  for (auto& record : enter("GetDistributedSwitches").ReadDistributedSwitches())
    switches.push_back(std::make_unique<DistributedSwitchImpl>(std::move(record)));
  return switches;
}

}  // namespace TarnCtl::Network
