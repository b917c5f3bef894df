// SPDX-License-Identifier: MIT
#include "network/suffixes_dialog.h"

#include "network/field_keys.h"

namespace Kiva {

SuffixesDialog::SuffixesDialog(Frame& owner, const std::string& suffixes)
    : FieldDialog(owner, {.title = TextId::kCustomDnsSuffixes,
                          .text = TextId::kDnsQueriesAppendSpecifiedSuffixes,
                          .width = 78,
                          .height = 13,
                          .topHeight = 8}),
      field_(AddField(Text(TextId::kSuffixesLabel), -1)) {
  field_.SetValue(suffixes, Selection::kNone);
}

bool SuffixesDialog::Takes(int key) const {
  return isHostNameKey(key) || key == ',' || key == ' ';
}

}  // namespace Kiva
