// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/dialog.h"

namespace Kiva {

/// A text that waits for the operator's Enter; Escape does not close it. Base of the three below.
class AcknowledgeDialog : public Dialog {
 public:
  int Foreground() override;

 protected:
  /// Sized for `body`: 60 columns, 76 for a long one.
  AcknowledgeDialog(Frame& owner, const std::string& body);
  AcknowledgeDialog(Frame& owner, int width, int height, int topHeight);

  /// Fills title, text and footer before the first key.
  virtual void Fill() = 0;

 private:
  struct Size;
  static Size SizeFor(const std::string& body);
  AcknowledgeDialog(Frame& owner, Size size);
};

/// Reports under a title of the catalogue: a result, a warning, an error.
class MessageDialog : public AcknowledgeDialog {
 public:
  MessageDialog(Frame& owner, TextId title, std::string body);

 protected:
  void Fill() override;

 private:
  TextId title_;
  std::string body_;
};

/// Reports under a title of its own.
class NotificationDialog : public AcknowledgeDialog {
 public:
  NotificationDialog(Frame& owner, std::string title, std::string body);

 protected:
  void Fill() override;

 private:
  std::string title_;
  std::string body_;
};

/// Shows the details of an entry; its creator fills it.
class InfoDialog : public AcknowledgeDialog {
 public:
  InfoDialog(Frame& owner, int width, int height, int topHeight);

  using Dialog::SetFooter;
  using Dialog::SetText;
  using Dialog::SetTitle;
  TextArea* Details() { return details_; }

 protected:
  void Fill() override {}

 private:
  TextArea* details_ = nullptr;
};

/// Runs a MessageDialog over `owner`.
void showMessage(Frame& owner, TextId title, const std::string& body);

}  // namespace Kiva
