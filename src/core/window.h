// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/palette.h"
#include "core/screen.h"

struct _win_st;

namespace Kiva {

/// A rectangle of cells, in whole cells from the top left corner of the screen.
struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Rect&) const = default;
};

/// The whole screen.
Rect screenRect();

/// What of `inner` lies within `outer`; without cells where they do not meet.
Rect clipped(const Rect& inner, const Rect& outer);

/// A coloured rectangle of the screen with the windows inside it, which it owns. Base of everything
/// that is drawn; screens and dialogs are made of these. A window that reaches beyond its parent,
/// or the screen, is cut there, and one of which no cell is left draws nothing.
///
/// An inactive window is dark grey on black, whatever its own colours are.
class Window {
 public:
  /// A window of the screen itself.
  Window(const Rect& place, Color background, Color foreground);
  /// A child, at a place relative to its parent; see Make. Colours may be kParentColor.
  Window(Window& parent, const Rect& place, Color background, Color foreground);
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// Makes a child of this window, whose constructor takes the parent first.
  template <typename Child, typename... Arguments>
  Child& Make(Arguments&&... arguments) {
    auto child = std::make_unique<Child>(*this, std::forward<Arguments>(arguments)...);
    Child& made = *child;
    children_.push_back(std::move(child));
    return made;
  }
  /// Destroys the children.
  void RemoveAll() { children_.clear(); }

  /// Draws the window and its children in their colours, or in the inactive look, and drops what
  /// was typed before the change. A window of the screen keeps its cursor while it is inactive.
  virtual void SetActive(bool active);
  /// A smart card was put in or taken out while this window is in the foreground.
  virtual void Notification() {}

  /// Changes the colours of the window and its children; kParentColor takes the parent's.
  void SetColors(Color background, Color foreground);
  /// Puts the program-wide cursor at a cell of this window.
  void MoveCursor(int column, int row);
  static void SetCursorVisible(bool visible);

  void Refresh();
  /// Makes the next update send every cell of the window and its children again.
  void Redraw();
  void Erase();
  /// Text in the window's own colours; nothing when the cell lies outside.
  void Print(int column, int row, const std::string& text);
  /// Text in colours of its own; goes on in the next row where it is longer than the rest of its
  /// row.
  void Print(int column, int row, const std::string& text, Color background, Color foreground);
  void DrawBox();
  void DrawHorizontalLine(int column, int row, int length);

  bool IsActive() const { return active_; }
  int Width() const { return place_.width; }
  int Height() const { return place_.height; }
  Color BackgroundColor() const { return background_; }
  Color ForegroundColor() const { return foreground_; }

 protected:
  /// Gives every cell that no child covers the window's current colours, and keeps what it shows.
  virtual void Recolor();

 private:
  Attribute CurrentAttribute() const;
  /// The column behind the child that covers this cell; `column` itself where none does.
  int BehindChild(int column, int row) const;
  void RecolorCell(int column, int row, Attribute attribute);

  Window* parent_ = nullptr;
  Rect place_;
  Color background_;
  Color foreground_;
  struct Closer {
    void operator()(_win_st* handle) const;
  };
  /// Null exactly when no cell of the window is visible.
  std::unique_ptr<_win_st, Closer> handle_;
  std::vector<std::unique_ptr<Window>> children_;
  bool active_ = true;
  Cursor savedCursor_;
};

}  // namespace Kiva
