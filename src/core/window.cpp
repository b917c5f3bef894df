// SPDX-License-Identifier: MIT
#include "core/window.h"

#include <curses.h>

#include <algorithm>
#include <cassert>

namespace Kiva {

namespace {

_win_st* topLevelHandle(const Rect& place) {
  if (place.width < 1 || place.height < 1) return nullptr;
  return newwin(place.height, place.width, place.y, place.x);
}

_win_st* childHandle(_win_st* parent, const Rect& place) {
  if (!parent || place.width < 1 || place.height < 1) return nullptr;
  return subwin(parent, place.height, place.width, place.y, place.x);
}

Rect moved(Rect place, int columns, int rows) {
  place.x += columns;
  place.y += rows;
  return place;
}

}  // namespace

Rect screenRect() {
  return {0, 0, screenColumns(), screenLines()};
}

Rect clipped(const Rect& inner, const Rect& outer) {
  const int left = std::max(inner.x, outer.x);
  const int top = std::max(inner.y, outer.y);
  const int right = std::min(inner.x + inner.width, outer.x + outer.width);
  const int bottom = std::min(inner.y + inner.height, outer.y + outer.height);
  return {left, top, std::max(0, right - left), std::max(0, bottom - top)};
}

void Window::Closer::operator()(_win_st* handle) const {
  delwin(handle);
}

Window::Window(const Rect& place, Color background, Color foreground)
    : place_(clipped(place, screenRect())),
      background_(background),
      foreground_(foreground),
      handle_(topLevelHandle(place_)) {
  assert(background != kParentColor && foreground != kParentColor);
}

Window::Window(Window& parent, const Rect& place, Color background, Color foreground)
    : parent_(&parent),
      place_(clipped(moved(place, parent.place_.x, parent.place_.y), parent.place_)),
      background_(background == kParentColor ? parent.background_ : background),
      foreground_(foreground == kParentColor ? parent.foreground_ : foreground),
      handle_(childHandle(parent.handle_.get(), place_)),
      active_(parent.active_) {}

Window::~Window() {
  children_.clear();
}

Attribute Window::CurrentAttribute() const {
  return active_ ? colorAttribute(background_, foreground_)
                 : colorAttribute(kInactiveBackground, kInactiveForeground);
}

void Window::SetActive(bool active) {
  const bool changed = active_ != active;
  active_ = active;
  if (!parent_ && !active && changed) savedCursor_ = cursor();
  if (!parent_) cursor() = active ? savedCursor_ : Cursor{};
  Recolor();
  for (const auto& child : children_) child->SetActive(active);
  Refresh();
  if (!parent_) discardTypeAhead();
}

void Window::SetColors(Color background, Color foreground) {
  const auto before = std::pair(background_, foreground_);
  background_ = background == kParentColor && parent_ ? parent_->background_ : background;
  foreground_ = foreground == kParentColor && parent_ ? parent_->foreground_ : foreground;
  if (active_ && before != std::pair(background_, foreground_)) Recolor();
  for (const auto& child : children_) child->SetColors(background, foreground);
}

// A window's background call would leave the cells of a child that shares them as they were, and
// changing attributes over a run loses line-drawing characters; so each cell is written again.
void Window::Recolor() {
  if (!handle_) return;
  const Attribute attribute = CurrentAttribute();
  wbkgdset(handle_.get(), ' ' | attribute);
  for (int row = 0; row < Height(); ++row)
    for (int column = 0; column < Width();) {
      const int behind = BehindChild(column, row);
      if (behind == column) RecolorCell(column++, row, attribute);
      column = std::max(column, behind);
    }
}

int Window::BehindChild(int column, int row) const {
  for (const auto& child : children_) {
    const Rect& place = child->place_;
    const int left = place.x - place_.x;
    const int top = place.y - place_.y;
    if (row >= top && row < top + place.height && column >= left && column < left + place.width)
      return left + place.width;
  }
  return column;
}

void Window::RecolorCell(int column, int row, Attribute attribute) {
  cchar_t cell;
  if (mvwin_wch(handle_.get(), row, column, &cell) == ERR) return;
  wchar_t characters[CCHARW_MAX + 1];
  attr_t old = 0;
  short oldPair = 0;
  getcchar(&cell, characters, &old, &oldPair, nullptr);
  setcchar(&cell, characters, (old & A_ALTCHARSET) | (attribute & ~A_COLOR),
           static_cast<short>(PAIR_NUMBER(attribute)), nullptr);
  wadd_wch(handle_.get(), &cell);
}

void Window::MoveCursor(int column, int row) {
  cursor().column = place_.x + column;
  cursor().row = place_.y + row;
}

void Window::SetCursorVisible(bool visible) {
  cursor().visible = visible;
}

void Window::Refresh() {
  if (!handle_) return;
  wtouchln(handle_.get(), 0, Height(), 1);
  wnoutrefresh(handle_.get());
}

void Window::Redraw() {
  if (handle_) wredrawln(handle_.get(), 0, Height());
  for (const auto& child : children_) child->Redraw();
}

void Window::Erase() {
  if (!handle_) return;
  wbkgdset(handle_.get(), ' ' | CurrentAttribute());
  werase(handle_.get());
}

void Window::Print(int column, int row, const std::string& text) {
  if (!handle_ || wmove(handle_.get(), row, column) == ERR) return;
  wbkgdset(handle_.get(), ' ' | CurrentAttribute());
  waddnstr(handle_.get(), text.c_str(), -1);
}

void Window::Print(int column, int row, const std::string& text, Color background,
                   Color foreground) {
  if (!handle_ || wmove(handle_.get(), row, column) == ERR) return;
  wbkgdset(handle_.get(), ' ' | colorAttribute(background, foreground));
  waddnstr(handle_.get(), text.c_str(), -1);
  wbkgdset(handle_.get(), ' ' | CurrentAttribute());
}

void Window::DrawBox() {
  if (handle_) box(handle_.get(), 0, 0);
}

void Window::DrawHorizontalLine(int column, int row, int length) {
  if (handle_ && length > 0) mvwhline(handle_.get(), row, column, 0, length);
}

}  // namespace Kiva
