// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/frame.h"
#include "ui/text_area.h"

namespace Kiva {

/// A centred frame with a title and a text on dark grey above an amber area, which holds what the
/// dialog asks for and, in its last line, the keys that it takes. Every dialog derives from it.
class Dialog : public Frame {
 public:
  /// Sizes in cells; the top area takes `topHeight` of the rows.
  Dialog(Frame& owner, int width, int height, int topHeight);

  void SetActive(bool active) override;

 protected:
  void SetTitle(const std::string& markup) { title_->SetText(markup); }
  void SetText(const std::string& markup) { body_->SetText(markup); }
  void SetFooter(const std::string& markup) { footer_->SetText(markup); }
  /// Where the dialog puts its items; null when the bottom area has no room for any.
  Window* Content() { return content_; }

 private:
  TextArea* title_ = nullptr;
  TextArea* body_ = nullptr;
  TextArea* footer_ = nullptr;
  Window* content_ = nullptr;
};

/// Rows of a top area that shows `body` in a dialog of `width` columns.
int topHeightFor(const std::string& body, int width);
/// Rows of a bottom area with so many rows of content.
int bottomHeightFor(int contentRows);

}  // namespace Kiva
