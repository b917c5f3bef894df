// SPDX-License-Identifier: MIT
#include "network/restore/migration.h"

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "system/ovl_opsagent.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;
using HostCtl::Network::ConnecteeType;
using HostCtl::Network::TarnNic;

namespace {

// The overlay's tool knows switches only, so the host has the last word about the port group.
void handOver(TarnNic& nic, const std::string& switchName) {
  const std::string name = nic.GetInterfaceName();
  if (!MigrateWithOvlCfgVswitch(name, switchName))
    throw HostCtlException("Moving", name, "the network overlay does not hand it over");
}

}  // namespace

bool migrateNic(TarnNic& nic, const std::string& switchName, const std::string& portGroup,
                std::string& trouble) {
  const bool usable = IsOvlOpsAgentUsable();
  const bool stopped = usable && StopOvlOpsAgent();
  bool moved = false;
  try {
    if (usable && nic.GetConnectionPoint().type == ConnecteeType::Opaque) handOver(nic, switchName);
    nic.Migrate(switchName, portGroup);
    moved = true;
  } catch (const HostCtlException& e) {
    trouble = e.what();
    logError("%s", e.what());
  }
  StartOvlOpsAgent(stopped);
  return moved;
}

}  // namespace Kiva
