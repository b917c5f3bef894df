// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "hostctl/network/ip_config.h"

namespace HostLinux {

/// How a shell script ended, and all that it wrote.
struct Ended {
  int status = -1;
  std::string output;
};

Ended ended(const std::string& script);

/// Runs `body` in a child with network, mounts, processes and host name of its own, so that a test
/// can change them like a whole machine's; everything that it started ends with it. An ordinary
/// user gets them together with a user namespace, where the kernel allows that. Skips the calling
/// test when the machine has no namespaces for us, and fails it when an expectation in `body`
/// failed.
void inNamespaces(const std::function<void()>& body);

/// Runs `work` in a child and kills it when it enters or leaves its system calls for the `step`th
/// time; false when it has ended before.
bool killedAt(int step, const std::function<void()>& work);

/// Runs a shell script; true when it succeeded.
bool shell(const std::string& script);

/// Whether all of these programs, separated by blanks, can be found.
bool installed(const std::string& programs);

/// The path of the PAM module that asks a file of ours; empty where it is not installed.
std::string matrixModule();

/// The text of the exception that ends `action`; empty when it does not fail.
std::string failureOf(const std::function<void()>& action);

/// "10.1.0.5 255.255.240.0 10.1.0.1 static": address, mask, gateway and who gave them; or "none".
std::string ipv4Text(const HostCtl::Network::IpConfig& config);

/// A configuration said in words: "dhcp", "none" or "10.9.0.7/24"; then any of "dhcp6", "ra", "dns"
/// (from DHCP), "off" (no IPv6) and static networks ("fd00::1/64").
HostCtl::Network::IpConfig ipConfig(const std::string& words);

/// Asks `condition` every 20 ms until it holds, for ten seconds at most.
bool waitUntil(const std::function<bool()>& condition);

}  // namespace HostLinux
