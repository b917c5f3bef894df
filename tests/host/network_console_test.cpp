// SPDX-License-Identifier: MIT
// The console of a machine of its own, whose management network an operator tests and changes.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <map>
#include <thread>

#include "harness/demo.h"
#include "harness/hosts/lab_console.h"
#include "linux/files.h"

using namespace HostLinux;
using Harness::Lines;
using Harness::Screen;
using Clock = std::chrono::steady_clock;

namespace {

constexpr const char* kHosts = "127.0.0.1 localhost\n10.9.0.5 machine.lab.example machine\n";

// At the menu of a machine set up by hand whose hosts file knows its own name.
void setUpByHand(LabConsole::Escape escape,
                 const std::function<void(const NetworkLab&, LabConsole&)>& body) {
  const auto setUp = [&](const NetworkLab& lab) {
    lab.Configure("eth0.network",
                  "[Match]\nName=eth0\n[Network]\nAddress=10.9.0.5/24\nGateway=10.9.0.1\n"
                  "Address=fd00:9::5/64\n");
    lab.StartNetworkd();
    std::ofstream("/etc/hosts") << kHosts;
    std::ofstream("/etc/resolv.conf")
        << "search lab.example\nnameserver 10.9.0.1\noptions timeout:2 attempts:1\n";
    LabConsole console(lab, escape);
    console.LogIn();
    body(lab, console);
  };
  inLab(setUp, LabConsole::Obstacle());
}

bool isRunning(const Screen& screen) {
  return screen.Shows("Testing Management Network") && screen.Shows("<Esc> Cancel");
}

// "OK. Failed. ": what the test says of each line, once all of it is there.
std::string results(LabConsole& console) {
  const Screen screen = console.WaitUntil(
      [](const Screen& now) { return now.Shows("Testing Management") && !isRunning(now); },
      "the end of the test");
  std::string words;
  for (int row = 0; row < screen.GetSize().rows; ++row)
    for (const char* word : {" OK. ", " Failed. "})
      if (screen.Row(row).find(word) != std::string::npos) words += word + 1;
  return words;
}

TEST(NetworkConsole, TestsTheNetwork) {
  setUpByHand(LabConsole::Escape::Quick, [](const NetworkLab& lab, LabConsole& console) {
    console.Do({"choose:Test Management Network", "wait:machine.lab.example"});
    const std::tuple<const char*, Lines, const char*> cases[] = {
        {"dns", {"10.99.0.1", "fd00:9::1"}, "OK. OK. OK. "},
        {"refuse", {"10.9.0.200", "fd00:9::200"}, "Failed. Failed. Failed. "},
        {"", {"10.9.0.1", ""}, "OK. Failed. "}};
    for (const auto& [services, addresses, expected] : cases) {
      lab.Serve(services);
      for (const std::string& address : addresses) {
        console.Press("Backspace", 12);
        console.Do({"type:" + address, "Down"});
      }
      console.Press("Enter");
      EXPECT_EQ(results(console), expected) << services << console.Look().Dump();
      EXPECT_EQ(Files().Read("/etc/hosts"), kHosts);
      console.Do({"Enter", "Up", "Up"});
    }
  });
}

// The fastest of some: any one of them may have had to wait for other work of this machine.
std::chrono::milliseconds escapeFrom(LabConsole& console, const std::string& hanging) {
  auto fastest = Clock::duration::max();
  for (int i = 0; i < 5; ++i) {
    console.Press("Enter");
    console.WaitForPassing(hanging);
    const auto start = Clock::now();
    console.Send(Harness::keyBytes("Esc"));
    console.WaitUntil([](const Screen& now) { return !isRunning(now); }, "the end of the test");
    fastest = std::min(fastest, Clock::now() - start);
  }
  return duration_cast<std::chrono::milliseconds>(fastest);
}

TEST(NetworkConsole, CanBeInterruptedWhileNobodyAnswers) {
  setUpByHand(LabConsole::Escape::Usual, [](const NetworkLab& lab, LabConsole& console) {
    console.Do({"choose:Test Management Network", "wait:machine.lab.example"});
    lab.AnswerPings(false);
    lab.Serve("hang");
    EXPECT_LT(escapeFrom(console, "Pinging address #1").count(), 50);
    console.Press("Backspace", 12);
    console.Press("Down");
    console.Press("Backspace", 12);
    EXPECT_LT(escapeFrom(console, "Resolving hostname").count(), 50);
    EXPECT_TRUE(waitUntil([] { return Files().Read("/etc/hosts") == kHosts; }));
  });
}

// What is asked on the bus while something is done: lines of a monitor, between two questions of
// our own, whose askers do not count.
Lines callsDuring(const std::function<void()>& action) {
  const auto mark = [](const std::string& name) {
    const std::string call =
        "busctl --quiet call org.freedesktop.DBus / org.freedesktop.DBus NameHasOwner s " + name;
    return waitUntil([&] { return shell(call + " && grep -q " + name + " /run/lab/heard"); });
  };
  shell("dbus-monitor --system >/run/lab/heard 2>&1 & echo $! >/run/lab/listener");
  EXPECT_TRUE(mark("begin.now"));
  action();
  EXPECT_TRUE(mark("end.now"));
  shell("kill $(cat /run/lab/listener)");
  std::ifstream heard("/run/lab/heard");
  std::map<std::string, Lines> callsOf;
  for (std::string line; std::getline(heard, line);)
    if (line.starts_with("method call"))
      callsOf[line.substr(line.find("sender="), 13)].push_back(line);
  Lines calls;
  for (const auto& [sender, lines] : callsOf)
    if (lines.back().find("NameHasOwner") == std::string::npos)
      calls.insert(calls.end(), lines.begin(), lines.end());
  return calls;
}

TEST(NetworkConsole, OpensTheWindowWithFewQuestionsToTheBus) {
  setUpByHand(LabConsole::Escape::Quick, [](const NetworkLab&, LabConsole& console) {
    // An answer is not asked for again within two seconds, and the menu has asked.
    std::this_thread::sleep_for(std::chrono::milliseconds(2200));
    const Lines calls = callsDuring([&] {
      console.Do({"choose:Configure Management Network", "wait:Network Adapters"});
    });
    EXPECT_FALSE(calls.empty());
    EXPECT_LE(calls.size(), 3u) << testing::PrintToString(calls);
  });
}

// What an operator chooses in the network window, and scripts that succeed on the machine and on
// the peer's network once that is so.
struct Change {
  const char *what, *services, *steps;
  std::string here, atPeer;
};
const std::string kShow = "ip addr show tarn0 | grep -w ", kPing = "ping -c 1 -W 1 ",
                  kOnlyOne =
                      "! ip link show eth0 | grep master && ip link show eth1 | grep 'master "
                      "vSwitch0'";

const Change kChanges[] = {
    {"static IPv4", "dns",
     "choose:IPv4;focus:Set static;Space;Down;type:10.9.0.20;Down;type:255.255.255.0;Down;"
     "type:10.9.0.1;Enter",
     kShow + "10.9.0.20/24 && " + kPing + "10.99.0.1", kPing + "10.9.0.20"},
    {"names", "dns",
     "choose:DNS;wait:Primary;Down;type:10.9.0.1;Down;Down;type:alpha.lab.example;Enter;"
     "choose:Custom;wait:Suffixes:;type:b.lan,  c.lan;Enter",
     "test $(hostname) = alpha.lab.example && getent hosts machine && "
     "grep 'search.* b.lan c.lan' /etc/resolv.conf",
     "true"},
    {"static IPv6", "dns",
     "choose:IPv6;focus:Set static;Space;Down;type:fd00:9::20/64;Down;Down;Down;type:fd00:9::1;"
     "Enter",
     kShow + "fd00:9::20/64 && " + kPing + "fd00:99::1", kPing + "fd00:9::20"},
    {"another uplink", "dns",
     "choose:Network Adapters;focus:[X] pnic0;Space;focus:[ ] pnic1;Space;Enter", kOnlyOne,
     kPing + "10.9.0.20 && ip neigh show 10.9.0.20 | grep 00:16:3e:00:00:01"},
    {"two uplinks, which this kernel cannot join", "dns",
     "choose:Network Adapters;focus:[ ] pnic0;Space;Enter", kOnlyOne, kPing + "10.9.0.20"},
    {"DHCPv6 alone", "dhcp6", "choose:IPv6;wait:Use DHCPv6;Up;Space;Down;Space;Enter",
     "ip addr show tarn0 | grep fd00:9::5", "true"},
    {"advertised IPv6", "ra", "choose:IPv6;wait:Use DHCPv6;Down;Space;Enter",
     kShow + "fd00:9::216:3eff:fe00:1/64 && " + kPing + "fd00:99::1",
     kPing + "fd00:9::216:3eff:fe00:1"},
    {"DHCP", "dhcp4 ra dns", "choose:IPv4;wait:Subnet;Up;Space;Enter",
     kShow + "10.9.0.5[0-9]/24 && ! " + kShow + "10.9.0.20/24 && " + kPing + "10.99.0.1",
     "for leased in $(awk '/10.9.0/ {print $3}' /run/lab/leases); do " + kPing +
         "$leased && exit; done; false"}};

void expectSoon(const std::string& script, const std::string& what) {
  EXPECT_TRUE(waitUntil([&] { return shell("( " + script + " ) >/dev/null 2>&1"); }))
      << what << ": " << script
      << ended("ip addr; ip route; ip -6 route; hostname; cat /etc/resolv.conf").output;
}

TEST(NetworkConsole, ChangesTheNetwork) {
  const auto make = [](const NetworkLab& lab) {
    lab.StartNetworkd();
    lab.StartHostnamed();
    lab.Serve("dhcp4");
    LabConsole console(lab);
    ASSERT_TRUE(shell("halocli network restore"));
    console.LogIn();
    for (const Change& change : kChanges) {
      lab.Serve(change.services);
      console.Do({"choose:Configure Management Network", "wait:Network Adapters"});
      console.Do(Harness::parts(change.steps));
      console.Do({"Esc", "wait:Apply changes and restart", "type:y", "wait:System Customization"});
      const auto expectChanged = [&](const std::string& when) {
        expectSoon(change.here, change.what + when);
        EXPECT_TRUE(waitUntil([&] { return lab.Peer(change.atPeer).status == 0; }))
            << change.what << when << " at the peer";
      };
      expectChanged("");
      lab.StartAfresh();
      lab.StartHostnamed();
      expectChanged(" after a restart");
    }
    const int released = lab.Logged("DHCPRELEASE"), leased = lab.Logged("DHCPACK");
    console.Do({"choose:Restart Management Network", "wait:Restart management network now?", "F11",
                "wait:<Enter> OK", "Enter", "gone:Starting management network."});
    EXPECT_EQ(lab.Logged("DHCPRELEASE"), released + 1);
    EXPECT_TRUE(waitUntil([&] { return lab.Logged("DHCPACK") > leased; }));
  };
  inLab(make, LabConsole::Obstacle());
}

}  // namespace
