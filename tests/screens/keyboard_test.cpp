// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr const char* kEntry = "To select the layout type";
const Setup kConsole = {.term = "xterm", .environment = {{"ESCDELAY", "25"}}};

void toEntry(Demo& demo) {
  logIn(demo);
  demo.Press("Down", 6);
}

void toLabel(Demo& demo) {
  openLogin(demo);
  demo.Press("Up");
}

Lines changedTo(const std::string& layout) {
  return {"hostctl\tLoadKeyboardMappings " + layout, "hostctl\tSetKeyboardLayout " + layout,
          "log.info\tKeyboard Layout changed to " + layout};
}

struct Case {
  const char* changes;
  Lines steps, lines;
  const char* shows;
};

void expectEach(void (*reach)(Demo&), const std::vector<Case>& cases) {
  for (const auto& [changes, steps, lines, shows] : cases) {
    SCOPED_TRACE(changes + steps.back());
    Demo demo({}, kConsole);
    reach(demo);
    demo.host.Change(Json::parse(changes));
    demo.NewLines();
    demo.Do(steps);
    EXPECT_TRUE(demo.Look().Shows(shows)) << demo.Look().Dump();
    EXPECT_EQ(demo.NewLines(), lines);
    EXPECT_EQ(demo.Stop(), 0);
  }
}

TEST(Keyboard, AppliesTheMarkedLayoutAlone) {
  const char* none = R"({"keyboard": {"current": "a {b}", "layouts": ["Czech", "Danish"]}})";
  expectEach(
      toEntry,
      {{"{}", {"Enter", "type: ", "F2", "type:x", "Down", "Up"}, {}, "(o) English (US)"},
       {"{}", {"Enter", "Enter"}, changedTo("English (US)"), "  English (US)  "},
       {"{}", {"Enter", "Down", "Enter"}, changedTo("English (US)"), kEntry},
       {"{}", {"Enter", "Down", "type: ", "Enter"}, changedTo("Finnish"), "   Finnish   "},
       {"{}", {"Enter", "Down", "type: ", "Up", "Up", "type: ", "Down"}, {}, "( ) English (US)"},
       {"{}", {"Enter", "Down", "type: ", "Esc"}, {}, "  English (US)  "},
       {none, {"Enter", "Down", "Enter"}, {}, "  a (b)  "},
       {none, {"Enter", "Down", "type: ", "Enter"}, changedTo("Danish"), "   Danish   "},
       {R"({"keyboard": {"layouts": []}})", {"Enter", "Down", "type: ", "Enter"}, {}, kEntry}});
  expectEach(toLabel, {{"{}",
                        {"Enter", "Down", "Down", "Down", "type: ", "Enter"},
                        changedTo("German"),
                        "Configured Keyboard (German)"},
                       {R"({"keyboard": {"current": "Polish"}})",
                        {"Enter", "Up", "type: ", "Esc"},
                        {},
                        "Configured Keyboard (Polish)"}});
}

TEST(Keyboard, TellsWhatTheHostRefusedAndGoesOn) {
  const std::string told = "log.err\tno {answer}", loaded = changedTo("English (US)")[0];
  for (const auto& [reach, after] : {std::pair{&toEntry, kEntry}, {&toLabel, kLogin}})
    expectEach(
        reach,
        {{R"({"faults": {"GetKeyboardLayouts": "no {answer}"}})", {"Enter"}, {told}, "no (answer)"},
         {R"({"faults": {"GetKeyboardLayout": "no {answer}"}})", {"Enter", "Enter"}, {told}, after},
         {R"({"faults": {"LoadKeyboardMappings": "no {answer}"}})",
          {"Enter", "Enter"},
          {told},
          "Operation Failed"},
         {R"({"faults": {"SetKeyboardLayout": "no {answer}"}})",
          {"Enter", "Enter", "Enter"},
          {loaded, told},
          after}});
}

TEST(Keyboard, ScrollsThroughManyLayouts) {
  Json layouts = Json::array();
  for (int i = 100; i < 160; ++i) layouts.push_back("map-" + std::to_string(i));
  Demo demo(Json{{"keyboard", {{"current", "map-100"}, {"layouts", layouts}}}}, kConsole);
  toEntry(demo);
  demo.Press("Enter");
  const Screen top = demo.Look();
  EXPECT_EQ(top.Find("Configure Keyboard"), (Position{2, 7}));
  EXPECT_TRUE(top.Shows("<Up/Down> Select  <Space> Toggle Selected   <Enter> OK  <Esc> Cancel"));
  demo.Press("Down", 61);
  EXPECT_TRUE(demo.Look().Shows("( ) map-159") && !demo.Look().Shows("map-147"));
  demo.Do({"Up", "type: ", "Enter", "Enter"});
  EXPECT_TRUE(demo.Look().Shows("(o) map-158")) << "in sight at once";
}

}  // namespace
