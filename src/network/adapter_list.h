// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hostctl/network/nic.h"

namespace Kiva {

// The host's physical adapters as operators see them. Texts are safe to put into markup.

using Pnics = std::vector<HostCtl::Network::PnicRecord>;

/// The host's adapters; nothing, which is logged, where it does not tell.
std::optional<Pnics> readPnics();

/// The adapters of `first` in its order, then the others by name, numbers in it counting as
/// numbers. One that the host does not have is a record with nothing but the name.
Pnics ordered(Pnics pnics, const std::vector<std::string>& first);

std::string hardwareLabel(const HostCtl::Network::PnicRecord& pnic);
inline constexpr const char* kDisconnected = "Disconnected";
/// "Connected" or "Disconnected"; empty for an adapter of which only the name is known.
std::string linkStatus(const HostCtl::Network::PnicRecord& pnic);

/// The line above a list of adapters, and an adapter's line in it: name, hardware label with MAC
/// address, and link status in columns. A label without room for the whole of it ends in "(...)".
std::string adapterHeading();
std::string adapterLine(const HostCtl::Network::PnicRecord& pnic);

/// Name, hardware label and link status of each, one a row of `columns`.
std::string adapterSummary(const Pnics& pnics, int columns);

}  // namespace Kiva
