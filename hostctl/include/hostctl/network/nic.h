// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hostctl/network/ip_config.h"

namespace HostCtl::Network {

/// What a kernel interface is connected to.
enum class ConnecteeType { Unknown = 0, StandardPortGroup = 1, DistributedPort = 2, Opaque = 3 };

/// Where a kernel interface is plugged in. Names are empty where the type has none.
struct ConnectionPoint {
  ConnecteeType type = ConnecteeType::Unknown;
  std::string switchName;
  std::string portGroup;
  bool operator==(const ConnectionPoint&) const = default;
};

/// A kernel network interface that carries traffic of the host itself. Whoever asks the network
/// information for one owns it; its state is the one at that moment until Refresh. Throws
/// HostCtlException when the host fails it.
class TarnNic {
 public:
  virtual ~TarnNic() = default;
  virtual std::string GetName() const = 0;
  /// True when the state was read more than a second ago.
  virtual bool IsStale() const = 0;
  /// Reads the state again; an interface that is gone keeps the last one.
  virtual void Refresh() = 0;
  virtual IpConfig GetConfiguredIpConfig() const = 0;
  /// The configuration that is in force now, addresses given by others included.
  virtual IpConfig GetIpConfig() const = 0;
  virtual ConnectionPoint GetConnectionPoint() const = 0;
};

/// A physical network adapter. Speed is in Mbit/s, 0 when unknown.
struct Pnic {
  std::string name;
  std::string description;
  std::string driver;
  std::string macAddress;
  bool linkUp = false;
  int speed = 0;
  std::string switchName;
  bool operator==(const Pnic&) const = default;
};

}  // namespace HostCtl::Network
