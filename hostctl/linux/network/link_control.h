// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace HostLinux {

// What networkd does not do with links when its files change, done over rtnetlink. Each call is in
// force when it returns, and throws HostCtlException of `operation` on the link with the kernel's
// words, or that there is no such link.

void setLinkUp(const std::string& operation, const std::string& link, bool up);
/// Takes the link out of its bridge or bond.
void releaseLink(const std::string& operation, const std::string& link);
/// A driver that refuses to while the link is up has it down for a moment.
void setLinkAddress(const std::string& operation, const std::string& link,
                    const std::string& address);
/// Nothing where there is no such link.
void deleteLink(const std::string& operation, const std::string& link);

/// Found out by making a bond and deleting it.
bool kernelHasBonding(const std::string& operation);

/// Until it filters, a bridge takes no notice of its ports' VLANs; ports that come get none.
enum class VlanFiltering { Off, On };
void setVlanFiltering(const std::string& operation, const std::string& bridge,
                      VlanFiltering filtering);
/// The bridge gives its ports no VLAN by itself. Whoever calls this sets its ports' VLANs
/// afterwards.
void clearDefaultVlan(const std::string& operation, const std::string& bridge);

/// The VLANs of a bridge's port: frames without a tag belong to `untagged`, frames with one pass if
/// it is among `tagged`, inclusive ranges in ascending order.
struct PortVlans {
  struct Range {
    int first = 0;
    int last = 0;
    bool operator==(const Range&) const = default;
  };
  int untagged = 0;
  std::vector<Range> tagged;
  bool operator==(const PortVlans&) const = default;
};

/// These, and no others.
void setPortVlans(const std::string& operation, const std::string& port, const PortVlans& vlans);

}  // namespace HostLinux
