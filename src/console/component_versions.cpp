// SPDX-License-Identifier: MIT
#include <algorithm>

#include "console/host_facts.h"
#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "hostctl/system/host.h"

namespace Kiva {

namespace {

using HostCtl::System::BiosData;
using HostCtl::System::Host;

constexpr const char* kStorageAdapterName = "phba0";
constexpr const char* kLabels[] = {"unknown", "PLSA", "BMC", "BIOS", "asset tag"};

const char* labelOf(int component) {
  const bool known = component >= Component::kStorageAdapter && component <= Component::kAssetTag;
  return kLabels[known ? component : 0];
}

std::string adapterDriverVersion(Host& host) {
  const auto adapters = host.GetStorageInfo()->GetAdapters();
  const auto found = std::find_if(adapters.begin(), adapters.end(), [](const auto& adapter) {
    return adapter.name == kStorageAdapterName;
  });
  if (found == adapters.end()) return {};
  return host.GetSystemInfo()->GetModuleVersion(found->driverName);
}

std::string biosVersion(const BiosData& bios) {
  if (bios.version.empty()) return {};
  return formatted("%s (%d.%d) %s", bios.version.c_str(), bios.majorVersion, bios.minorVersion,
                   bios.releaseDate.c_str());
}

/// Empty where the host does not have it.
std::string readVersion(int component) {
  const auto host = HostCtl::System::HostFactory::GetHost();
  const auto hardware = host->GetHardwareInfo();
  const BiosData bios = hardware->GetBiosData();
  switch (component) {
    case Component::kStorageAdapter:
      return adapterDriverVersion(*host);
    case Component::kBmc:
      return hardware->GetBmcVersion();
    case Component::kBios:
      return biosVersion(bios);
    case Component::kAssetTag:
      return bios.assetTag;
    default:
      logError("Invalid version id: %d requested", component);
      return {};
  }
}

}  // namespace

std::string componentVersion(int component) {
  std::string version;
  try {
    version = readVersion(component);
  } catch (const HostCtl::Lib::HostCtlException& e) {
    logError("Get %s version string failed, err=%s", labelOf(component), e.what());
  }
  return version.empty() ? "N/A" : version;
}

}  // namespace Kiva
