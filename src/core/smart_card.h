// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace Kiva {

// The cards in the host's readers, as far as logging in and out needs them. A lookup that the host
// fails is logged and counts as no card.

/// The account of the first card that stands for one.
std::optional<std::string> presentSmartCardUser();

/// True while a card of that account is in a reader.
bool isSmartCardPresent(const std::string& userId);

/// For the key wait, when a card came or went: without a session notes whose card is there; with a
/// session that a card opened, ends the program once that card is gone.
void checkSmartCard();

}  // namespace Kiva
