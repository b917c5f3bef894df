// SPDX-License-Identifier: MIT
// The test of the management network: its form, its runs, and what an abandoned one leaves behind.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include "harness/demo.h"

using namespace Harness;

namespace {

constexpr const char* kForm = "Resolve Hostname";
constexpr const char* kRun = "Testing Management Network";
constexpr const char* kEntry = "10.20.30.40\thalo-01.example.test halo-01\n";

std::string pinged(const std::string& address) {
  return "run\t/bin/sh sh -c /bin/tarnping -c 3 " + address;
}

const Lines kResolved = {"hostctl\tRemoveEntryByHostName halo-01.example.test",
                         "resolve\thalo-01.example.test"};
const Json kHangingPing = rehearsed({{"/bin/tarnping", {{"status", 0}, {"seconds", 20}}}});

void openForm(Demo& demo) {
  logIn(demo);
  demo.Press("Down", 4);
  demo.Do({"Enter", std::string("wait:") + kForm});
  demo.NewLines();
}

/// Replaces what the fields hold, from the first one on.
void fill(Demo& demo, const Lines& values) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    demo.Press("Delete", i == 0 ? 1 : 1);
    demo.Type(values[i]);
    demo.Press("Down");
  }
}

std::string hostsOf(const Demo& demo) {
  return contentOf(demo.host.Root("/etc/hosts"));
}

TEST(NetworkTestForm, TakesAddressesAndANameAndNothingElse) {
  Demo demo;
  openForm(demo);
  EXPECT_EQ(missingFrom(demo.Look(),
                        {"Ping Address #1:        [ 10.20.30.1 ", "#2:        [ 2001:db8:20::1 ",
                         "#3:        [ 10.20.30.2 ", "Resolve Hostname        [ halo-01.example.test",
                         "<Up/Down> Select", "<Enter> OK  <Esc> Cancel"}),
            Lines{});
  fill(demo, {"g1%.;2:aF` z$", "", "", "a b\t{c};%é"});
  EXPECT_EQ(missingFrom(demo.Look(), {"[ 1.2:aF  ", "#2:        [    ", "[ ab;%"}), Lines{});
  demo.Press("Up", 5);
  const char* invalid[] = {"1.2.3",    "1.2.3.4.5", "256.1.1.1", "1::2::3", "::fffff",
                           ".",        "1.2.3.",    "1:2:3:4:5:6:7:8:9", "::1.2.3",
                           "1111111111111111111111111111111111111111111111111111111111111111111"};
  for (const char* address : invalid) {
    SCOPED_TRACE(address);
    demo.Press("Down");
    demo.Type(address);
    demo.Press("Up");
    demo.Press("Enter");
    EXPECT_EQ(missingFrom(demo.Look(), {"Invalid IP address", "Invalid IP or IPv6 address."}),
              Lines{});
    demo.Press("Enter");
    const Screen screen = demo.WaitFor("#2:        [ " + std::string(address).substr(0, 45));
    EXPECT_EQ(screen.cursor.row, screen.Find("#2:").value().row);
    EXPECT_TRUE(screen.cursorVisible);
    demo.Press("Home");
    demo.Press("Delete", 70);
    demo.Press("Up");
  }
  EXPECT_EQ(demo.NewLines(), Lines{});
  demo.Do({"Esc", "gone:Resolve Hostname"});
}

}  // namespace
