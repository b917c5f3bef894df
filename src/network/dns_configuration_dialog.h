// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string>

#include "network/pending_network.h"
#include "ui/dialog.h"
#include "ui/input_item.h"
#include "ui/item_list.h"

namespace Kiva {

/// Asks where the name servers and the host's name come from. Result 1 with valid servers, 0 after
/// Escape.
class DNSConfigurationDialog : public Dialog {
 public:
  DNSConfigurationDialog(Frame& owner, const PendingNetwork& pending);
  int Foreground() override;

  bool DnsFromDhcp() const { return automatic_->IsSelected(); }
  /// What was accepted; absent where a field was left empty.
  std::optional<HostCtl::Network::IpAddress> PrimaryServer() const;
  std::optional<HostCtl::Network::IpAddress> AlternateServer() const;
  std::string Hostname() const { return hostname_->Value(); }

 private:
  InputItem& AddField(TextId label, const std::string& value);
  void Mark(RadioItem& choice);
  void Handle(int key);
  void Press(int key);
  bool Accept();
  bool IsValid(const InputItem& server);

  ItemList* items_ = nullptr;
  RadioItem* automatic_ = nullptr;
  RadioItem* manual_ = nullptr;
  InputItem* primary_ = nullptr;
  InputItem* alternate_ = nullptr;
  InputItem* hostname_ = nullptr;
};

}  // namespace Kiva
