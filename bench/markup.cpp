// SPDX-License-Identifier: MIT
// What it costs to lay out and to paint a text that fills a screen of 80 x 25, with keywords,
// colours and aligned spans in every line.
#include <benchmark/benchmark.h>

#include <string>

#include "ui/markup_layout.h"
#include "ui/markup_paint.h"

namespace {

constexpr int kWidth = 80;
constexpr int kHeight = 25;

std::string fullScreen() {
  std::string text;
  for (int row = 0; row < kHeight; ++row) {
    text +=
        "{color:white}{hostname}{/color} serves {align:padding:20}{product}{/align} "
        "{color:dark-grey}and more{/color}{align:right}{color:black}<F2>{/color} OK{/align}\n";
  }
  return text;
}

Kiva::KeywordTable keywords() {
  Kiva::KeywordTable table;
  table.Register("hostname", [] { return std::string("host.example.org"); });
  table.Register("product", [] { return std::string("Console 1.0"); });
  return table;
}

void layOut(benchmark::State& state) {
  const std::string text = fullScreen();
  const Kiva::KeywordTable table = keywords();
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(Kiva::layOutMarkup(text, kWidth, table));
  }
  state.SetBytesProcessed(static_cast<long>(state.iterations() * text.size()));
}
BENCHMARK(layOut);

void paint(benchmark::State& state) {
  const std::string text = Kiva::layOutMarkup(fullScreen(), kWidth, keywords());
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(Kiva::paintMarkup(text, {.width = kWidth, .height = kHeight}));
  }
  state.SetBytesProcessed(static_cast<long>(state.iterations() * text.size()));
}
BENCHMARK(paint);

}  // namespace

BENCHMARK_MAIN();
