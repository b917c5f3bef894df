// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "ui/text_id.h"

namespace Kiva {

/// A row of the English catalogue. Texts are markup.
struct CatalogueText {
  TextId id;
  const char* text;
};

/// The rows by subject, in the order of their numbers; together they hold every number once, but
/// for the product banner, which is no fixed text. Only en_US_Factory reads them.
std::span<const CatalogueText> enUsMenuTexts();
std::span<const CatalogueText> enUsNetworkTexts();
std::span<const CatalogueText> enUsRestoreTexts();
std::span<const CatalogueText> enUsSystemTexts();

}  // namespace Kiva
