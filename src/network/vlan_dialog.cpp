// SPDX-License-Identifier: MIT
#include "network/vlan_dialog.h"

#include <charconv>

#include "core/keys.h"
#include "ui/message_dialog.h"

namespace Kiva {

namespace {

constexpr int kFieldWidth = 6;
constexpr std::int16_t kAllVlans = 4095;

}  // namespace

VlanDialog::VlanDialog(Frame& owner, std::int16_t vlanId)
    : FieldDialog(owner, {.title = TextId::kVlanOptional,
                          .text = TextId::kSafeToLeaveVlanUnset,
                          .width = 70,
                          .height = 11,
                          .topHeight = 6}),
      vlanId_(vlanId),
      field_(AddField(Text(TextId::kVlanIdLabel), kFieldWidth)) {
  field_.SetValue(vlanId == 0 ? "" : std::to_string(vlanId));
}

bool VlanDialog::Takes(int key) const {
  return Key::isDigit(key);
}

bool VlanDialog::Accept() {
  const auto vlanId = parseVlanId(field_.Value());
  if (!vlanId) return Refuse(field_, TextId::kInvalidVlanId, TextId::kReenterVlanId);
  if (*vlanId == kAllVlans)
    showMessage(*this, TextId::kWarning, Text(TextId::kYouEnteredVlanId4095));
  vlanId_ = *vlanId;
  return true;
}

std::optional<std::int16_t> parseVlanId(const std::string& text) {
  if (text.empty()) return 0;
  std::int16_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  const bool valid = error == std::errc() && stop == end && value >= 1 && value <= kAllVlans;
  return valid ? std::optional(value) : std::nullopt;
}

}  // namespace Kiva
