// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "network/adapter_info_dialog.h"
#include "ui/carousel_item.h"
#include "ui/field_dialog.h"

namespace Kiva {

/// Asks for the name of a new standard switch and an adapter for it, and makes it. Result 1 when it
/// was made, 0 after Escape. The network restore options open it.
class CreateXssDialog : public FieldDialog {
 public:
  explicit CreateXssDialog(Frame& owner);

 private:
  using UplinkRow = CarouselRadioItem<HostCtl::Network::PnicRecord, AdapterInfoDialog>;

  bool Takes(int key) const override;
  void ShowDetails() override;
  bool Accept() override;
  /// False leaves no switch behind, or says in `trouble` that it does.
  bool Create(const std::string& name, const std::string& uplink, std::string& trouble);

  InputItem& name_;
  /// An adapter without a name stands for none.
  UplinkRow& uplink_;
};

}  // namespace Kiva
