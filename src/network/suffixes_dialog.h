// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/field_dialog.h"

namespace Kiva {

/// Asks for the domains that short host names are looked up in. They are taken as they are typed;
/// whoever applies them cuts them apart.
class SuffixesDialog : public FieldDialog {
 public:
  SuffixesDialog(Frame& owner, const std::string& suffixes);

  std::string Suffixes() const { return field_.Value(); }

 private:
  bool Takes(int key) const override;
  bool Accept() override { return true; }

  InputItem& field_;
};

}  // namespace Kiva
