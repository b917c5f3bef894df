// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/frame.h"
#include "ui/item_list.h"
#include "ui/text_area.h"

namespace Kiva {

/// A full-screen frame with a menu on the left, a description on the right and a status line below.
/// The full-screen windows that an operator works in derive from it.
class RootWindow : public Frame {
 public:
  explicit RootWindow(Frame& owner);

  /// Fills the panes again from what holds now.
  virtual void Repaint() = 0;

 protected:
  /// Brings the window to the screen: activates it, writes the product banner and fills the panes.
  void Show();

  void SetLeftTitle(const std::string& markup) { leftTitle_->SetText(markup); }
  void SetRightTitle(const std::string& markup) { rightTitle_->SetText(markup); }
  void SetLeftFooter(const std::string& markup) { leftFooter_->SetText(markup); }
  void SetRightFooter(const std::string& markup) { rightFooter_->SetText(markup); }
  void SetRightText(const std::string& markup) { rightText_->SetText(markup); }
  ItemList& Menu() { return *menu_; }
  /// The right pane's text area, for what depends on its size.
  const Window& RightPane() const { return *rightText_; }

 private:
  void AddPanes(Window& main);

  Window* statusLine_ = nullptr;
  ItemList* menu_ = nullptr;
  TextArea* rightText_ = nullptr;
  TextArea* leftTitle_ = nullptr;
  TextArea* rightTitle_ = nullptr;
  TextArea* leftFooter_ = nullptr;
  TextArea* rightFooter_ = nullptr;
};

}  // namespace Kiva
