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

Json faulty(const char* operation) {
  return {{"faults", {{operation, "no {answer}"}}}};
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
  const Json any = Json::object(), none = layouts("a {b}", 2);
  const std::string told = "log.err\tno {answer}", loaded = changedTo("English (US)")[0];
  const struct {
    void (*reach)(Demo&);
    Json changes;
    Lines steps, lines;
    const char* shows;
  } cases[] = {
      {toEntry, any, {"Enter", "type: ", "F2", "Tab", "Down", "Up"}, {}, "(o) English (US)"},
      {toEntry, any, {"Enter", "Enter"}, changedTo("English (US)"), "  English (US)  "},
      {toEntry, any, {"Enter", "Down", "Enter"}, changedTo("English (US)"), kEntry},
      {toEntry, any, {"Enter", "Down", "type: ", "Enter"}, changedTo("Finnish"), "   Finnish  "},
      {toEntry, any, {"Enter", "Down", "type: ", "Up", "type: "}, {}, "( ) Finnish"},
      {toEntry, any, {"Enter", "Down", "type: ", "Esc"}, {}, "  English (US)  "},
      {toEntry, none, {"Enter", "Down", "Enter"}, {}, "  a (b)  "},
      {toEntry, none, {"Enter", "Down", "type: ", "Enter"}, changedTo("map-101"), "   map-101  "},
      {toEntry, layouts("", 0), {"Enter", "Down", "type: ", "Enter"}, {}, kEntry},
      {toEntry, any, {"Enter"}, {}, kFooter},
      {toEntry, layouts("map-111", 60), {"Enter", "Down", "Down"}, {}, "( ) map-113"},
      {toEntry, layouts("map-159", 60), {"Enter"}, {}, "(o) map-159"},
      {toLabel,
       any,
       {"Enter", "Up", "type: ", "Enter"},
       changedTo("English (UK)"),
       "Configured Keyboard (English (UK))"},
      {toLabel, layouts("Polish", 9), {"Enter", "Esc"}, {}, "Configured Keyboard (Polish)"},
      {toEntry, faulty("GetKeyboardLayouts"), {"Enter"}, {told}, "Operation Failed"},
      {toEntry, faulty("GetKeyboardLayout"), {"Enter", "Enter"}, {told}, kEntry},
      {toEntry, faulty("LoadKeyboardMappings"), {"Enter", "Enter"}, {told}, "no (answer)"},
      {toEntry, faulty("SetKeyboardLayout"), {"Enter", "Enter", "Enter"}, {loaded, told}, kEntry},
      {toLabel,
       faulty("GetKeyboardLayouts"),
       {"Enter", "Enter"},
       {told},
       "Keyboard (English (US))"},
      {toLabel, faulty("GetKeyboardLayout"), {"Enter", "Enter"}, {told}, "Keyboard ()"},
      {toLabel, faulty("SetKeyboardLayout"), {"Enter", "Enter"}, {loaded, told}, "no (answer)"},
  };
  for (const auto& [reach, changes, steps, lines, shows] : cases) {
    SCOPED_TRACE(changes.dump() + shows);
    Demo demo({}, {.term = "xterm", .environment = {{"ESCDELAY", "25"}}});
    reach(demo);
    demo.host.Change(changes);
    demo.NewLines();
    demo.Do(steps);
    const Screen screen = demo.Look();
    EXPECT_TRUE(screen.Shows(shows)) << screen.Dump();
    EXPECT_EQ(demo.NewLines(), lines);
    EXPECT_EQ(demo.Stop(), 0);
  }
}

}  // namespace
