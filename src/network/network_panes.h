// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "network/adapter_list.h"
#include "network/pending_network.h"

namespace Kiva {

// The texts of the network window's right pane, one a setting: its pending value in white and what
// it is about in light grey. Markup, in which the host's own texts are plain.

/// One adapter a row of `columns`, with what `pnics`, the host's, tell about it.
std::string adaptersPane(const PendingNetwork& pending, Pnics pnics, int columns);
std::string vlanPane(const PendingNetwork& pending);
std::string ipv4Pane(const PendingNetwork& pending);
std::string ipv6Pane(const PendingNetwork& pending);
std::string dnsPane(const PendingNetwork& pending);
std::string suffixesPane(const PendingNetwork& pending);

}  // namespace Kiva
