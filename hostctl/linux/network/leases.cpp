// SPDX-License-Identifier: MIT
#include "linux/network/leases.h"

#include <syslog.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "hostctl/lib/exception.h"
#include "hostctl/lib/whole_file.h"
#include "linux/network/dhcp_release.h"
#include "linux/network/foreign.h"
#include "linux/network/ip_file.h"
#include "linux/network/ip_settings.h"
#include "linux/network/link_control.h"
#include "linux/network/networkd_bus.h"
#include "linux/network/own_files.h"
#include "linux/network/settle.h"
#include "linux/network/wait.h"
#include "linux/network_file.h"
#include "linux/network_tables.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::replaceFile;
using HostCtl::Network::LeaseRenewal;
namespace fs = std::filesystem;

namespace {

// Volatile, so that it cannot outlive a restart of the host.
const std::string kDropIns = "/run/systemd/network/";
constexpr const char* kAskNobody = "[Network]\nDHCP=no\n";

std::string dropInName(const std::string& interface) {
  return "kiva-released-" + interface + ".conf";
}

/// A file of others may be in force for other interfaces as well.
bool isOurOwn(const std::string& fileInForce, const std::string& interface) {
  return fs::path(fileInForce) == fs::path(kNetworkFolder) / ownFileName(interface, "network");
}

std::string dropInPath(const std::string& interface) {
  return kDropIns + ownFileName(interface, "network") + ".d/" + dropInName(interface);
}

void tellServer(const Files& files, const std::string& operation, const std::string& interface,
                int index) try {
  const auto state = files.Read("/run/systemd/netif/leases/" + std::to_string(index));
  const auto lease = parseLease(state.value_or(""));
  const auto hardware =
      MacAddress::FromString(files.ReadLine("/sys/class/net/" + interface + "/address"));
  if (lease && hardware) sendRelease(files, operation, interface, *lease, *hardware);
} catch (const HostCtlException& error) {
  syslog(LOG_USER | LOG_INFO, "The DHCP server was not told: %s", error.what());
}

void askNobody(const Files& files, const std::string& operation, const std::string& interface,
               const std::string& dropIn) {
  const auto sole = OwnFiles(files).Lock();
  makeReadableFolder(fs::path(files.Path(dropIn)).parent_path());
  replaceFile(files.Path(dropIn), kAskNobody);
  try {
    reloadFor(files, operation, interface);
  } catch (const HostCtlException&) {
    takeReleaseBack(files, interface);
    throw;
  }
}

/// False where no lease was given back.
bool askAgain(const Files& files, const std::string& operation, const std::string& interface) {
  const auto sole = OwnFiles(files).Lock();
  const bool released = takeReleaseBack(files, interface);
  if (released) reloadFor(files, operation, interface);
  return released;
}

bool hasCarrier(const std::string& operation, const std::string& interface) {
  const auto links = readLinks(operation);
  return std::any_of(links.begin(), links.end(),
                     [&](const LinkRow& link) { return link.name == interface && link.carrier; });
}

void takeUp(const Files& files, const std::string& operation, const std::string& interface) {
  setLinkUp(operation, interface, true);
  askAgain(files, operation, interface);
  const bool came = waitFor(kInForceWithin, [&] { return hasCarrier(operation, interface); });
  reconfigureLink(operation, interface, indexOf(files, interface));
  if (!came)
    throw HostCtlException(operation, interface, "the link did not come up within 10 seconds");
  const OwnFiles own(files);
  waitForStaticAddresses(files, operation, interface,
                         ipConfigIn(own.Read(ownFileName(interface, "network"))));
}

// An interface that comes up while networkd still takes its old addresses away stays without them.
void takeDown(const Files& files, const std::string& operation, const std::string& interface) {
  letNetworkdFinish(files, interface);
  setLinkUp(operation, interface, false);
  letNetworkdSeeItDown(files, interface);
}

}  // namespace

bool takeReleaseBack(const Files& files, const std::string& interface) {
  bool taken = false;
  for (const auto& folder : files.List(kDropIns))
    if (folder.ends_with(".network.d"))
      taken = fs::remove(files.Path(kDropIns + folder + "/" + dropInName(interface))) || taken;
  return taken;
}

void renewLease(const Files& files, const std::string& interface, LeaseRenewal what) try {
  const char* operation = "RenewLease";
  refuseForeign(files, operation, interface);
  const int index = indexOf(files, interface);
  if (askAgain(files, operation, interface)) return;
  if (what == LeaseRenewal::Ipv4)
    renewLink(operation, interface, index);
  else
    reconfigureLink(operation, interface, index);
} catch (const std::system_error& error) {
  throw HostCtlException("RenewLease", interface, error.what());
}

void releaseLease(const Files& files, const std::string& interface) try {
  const char* operation = "ReleaseLease";
  refuseForeign(files, operation, interface);
  const int index = indexOf(files, interface);
  const std::string inForce = networkFileOf(files, index);
  if (inForce.empty())
    throw HostCtlException(operation, interface, "is not managed by systemd-networkd");
  const std::string dropIn = dropInPath(interface);
  if (files.Exists(dropIn)) return;
  tellServer(files, operation, interface, index);
  if (isOurOwn(inForce, interface)) askNobody(files, operation, interface, dropIn);
} catch (const std::system_error& error) {
  throw HostCtlException("ReleaseLease", interface, error.what());
}

void setNicUp(const Files& files, const std::string& interface, bool up) try {
  const char* operation = up ? "Enable" : "Disable";
  refuseForeign(files, operation, interface);
  if (up)
    takeUp(files, operation, interface);
  else
    takeDown(files, operation, interface);
} catch (const std::system_error& error) {
  throw HostCtlException(up ? "Enable" : "Disable", interface, error.what());
}

}  // namespace HostLinux
