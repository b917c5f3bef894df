// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr const char* kEntry = "To select the layout type";
constexpr const char* kFooter =
    "<Up/Down> Select  <Space> Toggle Selected   <Enter> OK  <Esc> Cancel";

const Lines kToEntry = kLogIn + Lines(6, "Down");
const Lines kToLabel = {"F2", "wait:Authentication Required", "Up"};

Json layouts(const char* current, int count) {
  Json names = Json::array();
  for (int i = 0; i < count; ++i) names.push_back("map-" + std::to_string(100 + i));
  return {{"keyboard", {{"current", current}, {"layouts", names}}}};
}

Lines changedTo(const std::string& layout) {
  return {"hostctl\tLoadKeyboardMappings " + layout, "hostctl\tSetKeyboardLayout " + layout,
          "log.info\tKeyboard Layout changed to " + layout};
}

TEST(Keyboard, AppliesTheMarkedLayoutAndTellsWhatTheHostRefused) {
  const Json any = Json::object(), none = layouts("a {b}", 2), empty = layouts("", 0);
  const Json twins = {{"keyboard", {{"current", "twin"}, {"layouts", {"twin", "twin"}}}}};
  const auto fault = [](const char* operation) { return failing(operation, "no {answer}"); };
  const std::string mark = "type: ", told = "log.err\tno {answer}";
  const Lines us = changedTo("English (US)"), uk = changedTo("English (UK)");
  const char* label = "Configured Keyboard (English (UK))";
  const std::tuple<Lines, Json, Lines, Lines, const char*> cases[] = {
      {kToEntry, any, {mark, "F2", "Tab", "Down", "Up"}, {}, "(o) English (US)"},
      {kToEntry, any, {"Down", mark, "Up", mark}, {}, "( ) Finnish"},
      {kToEntry, any, {"Down", mark}, {}, kFooter},
      {kToEntry, any, {"Enter"}, us, "  English (US)  "},
      {kToEntry, any, {"Down", "Enter"}, us, kEntry},
      {kToEntry, any, {"Down", mark, "Enter"}, changedTo("Finnish"), "   Finnish  "},
      {kToEntry, any, {"Down", mark, "Esc"}, {}, "  English (US)  "},
      {kToEntry, none, {"Down", "Enter"}, {}, "  a (b)  "},
      {kToEntry, none, {"Down", mark, "Enter"}, changedTo("map-101"), "   map-101  "},
      {kToEntry, empty, {"Down", mark, "Enter"}, {}, kEntry},
      {kToEntry, twins, {}, {}, "( ) twin"},
      {kToEntry, any, {"type:\n\033"}, us, "  English (US)  "},
      {kToLabel, any, {"type:\n\033\033"}, us, "Keyboard (English (US))"},
      {kToEntry, layouts("map-111", 60), {"Down", "Down"}, {}, "( ) map-113"},
      {kToEntry, layouts("map-159", 60), {"Down"}, {}, "(o) map-159"},
      {kToLabel, any, {"Up", mark, "Enter"}, uk, label},
      {kToLabel, layouts("Polish", 9), {"Esc"}, {}, "Configured Keyboard (Polish)"},
      {kToEntry, fault("GetKeyboardLayouts"), {}, {told}, "Operation Failed"},
      {kToEntry, fault("GetKeyboardLayout"), {"Enter"}, {told}, kEntry},
      {kToEntry, fault("LoadKeyboardMappings"), {"Enter"}, {told}, "no (answer)"},
      {kToEntry, fault("SetKeyboardLayout"), {"Enter", "Enter"}, {us[0], told}, kEntry},
      {kToLabel, fault("GetKeyboardLayouts"), {"Enter"}, {told}, "Keyboard (English (US))"},
      {kToLabel, fault("GetKeyboardLayout"), {"Enter"}, {told}, "Keyboard ()"},
      {kToLabel, fault("SetKeyboardLayout"), {"Enter"}, {us[0], told}, "no (answer)"}};
  for (const auto& [way, changes, steps, lines, shows] : cases) {
    SCOPED_TRACE(changes.dump() + shows);
    Demo demo({}, {.term = "xterm", .environment = kQuickEscape.environment});
    demo.Do(way);
    demo.host.Change(changes);
    demo.NewLines();
    demo.Do(Lines{"Enter"} + steps + (std::string("wait:") + shows));
    EXPECT_EQ(demo.NewLines(), lines);
    EXPECT_EQ(demo.Stop(), 0);
  }
}

}  // namespace
