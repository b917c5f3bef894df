// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Harness {

/// One change of a terminal's palette: slot `slot` takes the colour 0xRRGGBB `rgb`, or the whole
/// palette goes back to the terminal's own (slot -1).
struct PaletteChange {
  static constexpr int kWholePalette = -1;

  int slot = kWholePalette;
  std::uint32_t rgb = 0;

  bool operator==(const PaletteChange&) const = default;
};

/// Stands between a program and the terminal emulator and takes the operating-system commands
/// ("ESC ]") out of the stream. The Linux console's palette commands have no terminator, so an
/// emulator that does not know them would swallow the text behind them. A sequence may be split
/// over any number of calls.
class OutputFilter {
 public:
  /// The bytes of `output` that are for the emulator.
  std::string Pass(std::string_view output);

  /// Every palette change since the start, in order.
  const std::vector<PaletteChange>& Changes() const { return changes_; }
  /// The colour that a slot has now, where the program has redefined it.
  std::optional<std::uint32_t> Redefined(int slot) const { return palette_.at(slot); }
  /// The last marker ("ESC ] K;text BEL") that came through. The harness writes markers itself, to
  /// learn that everything written before them has arrived.
  const std::string& Marker() const { return marker_; }

 private:
  bool IsComplete() const;
  void Take();
  void TakeXtermColours(std::string_view arguments);
  void Record(PaletteChange change);

  std::string held_;  ///< The beginning of a command whose end has not come yet.
  std::string marker_;
  std::vector<PaletteChange> changes_;
  std::array<std::optional<std::uint32_t>, 256> palette_{};
};

}  // namespace Harness
