// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/text_id.h"

namespace Kiva {

/// The catalogue of fixed texts in one language. A factory lives as long as the process, and so do
/// its texts.
class StringFactory {
 public:
  /// The markup of a number; the empty text beyond the last one.
  virtual const char* GetString(unsigned id) = 0;
  const char* GetString(TextId id) { return GetString(static_cast<unsigned>(id)); }

 protected:
  ~StringFactory() = default;
};

/// The English catalogue.
class en_US_Factory final : public StringFactory {
 public:
  using StringFactory::GetString;
  const char* GetString(unsigned id) override;
};

/// The factory in use. The first call with "en_US" puts the English one into use; until then, other
/// locales have none.
StringFactory* getStringFactory(const std::string& locale);

/// A text in the language of the console.
const char* catalogueText(TextId id);

}  // namespace Kiva
