// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "harness/hosts/machine.h"
#include "harness/temporary_folder.h"

namespace HostLinux {

/// A machine of our own with two physical NICs, eth0 (00:16:3e:00:00:00) and eth1 (...:01), whose
/// cables end in a peer's switch. Made within inNamespaces, once in each; it goes with them. /etc,
/// /usr and /var are real ones, and what is written there stays in the lab. networkd and hostnamed
/// are the real ones on a real bus; of this machine's own configuration networkd sees nothing.
///
/// The peer is 10.9.0.1/24 and fd00:9::1/64, and the way to 10.99.0.1 and fd00:99::1. Verbs throw
/// std::runtime_error when they fail.
class NetworkLab {
 public:
  /// Why this machine cannot have one; empty where it can. A test skips with this.
  static std::string Obstacle();

  /// With the bus, without networkd, hostnamed and any service of the peer.
  NetworkLab();

  /// Writes a file of /etc/systemd/network, readable by networkd.
  void Configure(const std::string& name, const std::string& text) const;
  void StartNetworkd() const { Verb("networkd"); }
  void StartHostnamed() const { Verb("hostnamed"); }
  /// Why this machine cannot have Open vSwitch in the lab; empty where it can.
  static std::string ObstacleForOpenVswitch();
  /// The real one, in user space, with a bridge dvs0 that has a controller: its ports are eth0,
  /// eth1 and the internal interface mgmt0 (00:16:3e:00:00:50), which is up and has no address.
  void StartOpenVswitch() const { Verb("openvswitch"); }
  /// Its daemon stays but does nothing any more; or goes on.
  void HangOpenVswitch(bool hang) const { Verb(hang ? "switching STOP" : "switching CONT"); }
  /// Puts in the host tools of the build, the defaults of the package, and a login at the console
  /// as root with the password "secret", through a PAM module that asks a file.
  void InstallTools(const std::string& matrixModule) const;
  /// Starts the machine's network as a restart of the machine would: devices, addresses and what
  /// networkd kept in /run are gone, and it starts with what stands in files, as Open vSwitch does.
  /// hostnamed is gone.
  void StartAfresh() const { Verb("afresh"); }
  /// The bus daemon stays but answers nobody any more; or it goes.
  void HangBus() const { Verb("hang_bus"); }
  void StopBus() const { Verb("stop_bus"); }

  /// Gives the peer these services, separated by blanks, and no other: "dhcp4" (from 10.9.0.50),
  /// "dhcp6" (from fd00:9::50), "ra", and one of "dns" (knows machine.lab.example as 10.9.0.50, and
  /// that there is no other name below lab.example), "refuse" (a name server that says so to every
  /// question) and "hang" (one that says nothing). `lease` is how long IPv4 leases run: seconds, or
  /// "infinite".
  void Serve(const std::string& services, const std::string& lease = "600") const;
  /// Whether the peer answers pings; it does at first.
  void AnswerPings(bool answer) const { Verb(answer ? "echoes on" : "echoes off"); }
  /// The peer's end of the cable of NIC 0 or 1.
  void PullCable(int nic) const { Verb("cable " + std::to_string(nic) + " down"); }
  /// A third NIC, eth2, which cannot be brought up.
  void PlugInBroken() const { Verb("plug_in_broken"); }
  void PlugIn(int nic) const { Verb("cable " + std::to_string(nic) + " up"); }
  /// What a script says that runs on the peer's network, such as "ip neigh".
  Ended Peer(const std::string& script) const;
  /// How often the peer's DHCP server has logged a text ("DHCPREQUEST").
  int Logged(const std::string& text) const;

 private:
  void Verb(const std::string& words) const;
};

/// Runs `body` in namespaces with a lab of their own; skips the calling test where there is an
/// obstacle.
void inLab(const std::function<void(const NetworkLab&)>& body,
           const std::string& obstacle = NetworkLab::Obstacle());

}  // namespace HostLinux
