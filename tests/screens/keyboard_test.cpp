// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr const char* kEntry = "To select the layout type";
constexpr const char* kFooter =
    "<Up/Down> Select  <Space> Toggle Selected   <Enter> OK  <Esc> Cancel";

void toEntry(Demo& demo) {
  logIn(demo);
  demo.Press("Down", 6);
}

void toLabel(Demo& demo) {
  openLogin(demo);
  demo.Press("Up");
}

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
  const struct {
    void (*reach)(Demo&);
    Json changes;
    Lines steps, lines;
    const char* shows;
  } cases[] = {
      {toEntry, any, {mark, "F2", "Tab", "Down", "Up"}, {}, "(o) English (US)"},
      {toEntry, any, {"Down", mark, "Up", mark}, {}, "( ) Finnish"},
      {toEntry, any, {"Down", mark}, {}, kFooter},
      {toEntry, any, {"Enter"}, us, "  English (US)  "},
      {toEntry, any, {"Down", "Enter"}, us, kEntry},
      {toEntry, any, {"Down", mark, "Enter"}, changedTo("Finnish"), "   Finnish  "},
      {toEntry, any, {"Down", mark, "Esc"}, {}, "  English (US)  "},
      {toEntry, none, {"Down", "Enter"}, {}, "  a (b)  "},
      {toEntry, none, {"Down", mark, "Enter"}, changedTo("map-101"), "   map-101  "},
      {toEntry, empty, {"Down", mark, "Enter"}, {}, kEntry},
      {toEntry, twins, {}, {}, "( ) twin"},
      {toEntry, any, {"type:\n\033"}, us, "  English (US)  "},
      {toLabel, any, {"type:\n\033\033"}, us, "Keyboard (English (US))"},
      {toEntry, layouts("map-111", 60), {"Down", "Down"}, {}, "( ) map-113"},
      {toEntry, layouts("map-159", 60), {"Down"}, {}, "(o) map-159"},
      {toLabel, any, {"Up", mark, "Enter"}, uk, label},
      {toLabel, layouts("Polish", 9), {"Esc"}, {}, "Configured Keyboard (Polish)"},
      {toEntry, fault("GetKeyboardLayouts"), {}, {told}, "Operation Failed"},
      {toEntry, fault("GetKeyboardLayout"), {"Enter"}, {told}, kEntry},
      {toEntry, fault("LoadKeyboardMappings"), {"Enter"}, {told}, "no (answer)"},
      {toEntry, fault("SetKeyboardLayout"), {"Enter", "Enter"}, {us[0], told}, kEntry},
      {toLabel, fault("GetKeyboardLayouts"), {"Enter"}, {told}, "Keyboard (English (US))"},
      {toLabel, fault("GetKeyboardLayout"), {"Enter"}, {told}, "Keyboard ()"},
      {toLabel, fault("SetKeyboardLayout"), {"Enter"}, {us[0], told}, "no (answer)"},
  };
  for (const auto& [reach, changes, steps, lines, shows] : cases) {
    SCOPED_TRACE(changes.dump() + shows);
    Demo demo({}, {.term = "xterm", .environment = kQuickEscape.environment});
    reach(demo);
    demo.host.Change(changes);
    demo.NewLines();
    demo.Press("Enter");
    demo.Do(steps);
    EXPECT_TRUE(demo.Look().Shows(shows)) << demo.Look().Dump();
    EXPECT_EQ(demo.NewLines(), lines);
    EXPECT_EQ(demo.Stop(), 0);
  }
}

}  // namespace
