// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <syslog.h>

#include <array>

#include "harness/demo_host.h"
#include "harness/hosts/machine.h"
#include "hostctl/lib/exception.h"
#include "hostctl/lib/platform.h"
#include "sample/changes.h"
#include "sample/sample_host.h"
#include "sample/store.h"

namespace {

using Harness::DemoHost;
using HostCtl::Lib::HostCtlException;
using HostCtl::Lib::platform;
using HostSample::Store;

std::string troubleOf(const DemoHost& host) {
  return HostLinux::failureOf([&] { Store store(host.File()); });
}

TEST(SampleStore, NamesTheKeyThatIsWrongAndLeavesTheFile) {
  const std::array<const char*, 3> cases[] = {
      {"/hardware", "{}", "hardware.vendorName is missing"},
      {"/accounts/1/password", "5", "accounts[1].password is not a text"},
      {"/version/buildNumber", "-1",
       "version.buildNumber is not a whole number from 0 to 4294967295"},
      {"/network/ipv6Enabled", "1", "network.ipv6Enabled is not true or false"},
      {"/network/pnics", "{}", "network.pnics is not a list"},
      {"/network/kernelNics/0/running/ipv4/mode", "\"bootp\"",
       "network.kernelNics[0].running.ipv4.mode is not one of none, dhcp, static"},
      {"/network/routing/ipv4Gateway", "\"10.20.30\"",
       "network.routing.ipv4Gateway is not an IPv4 address"},
      {"/options/two\nlines", "true",
       "options.two\\nlines is not a whole number from -9223372036854775807 to "
       "9223372036854775807"},
      {"/tools", R"({"/bin/sh": {}})", "tools./bin/sh.status is missing"},
      {"/faults", "[]", "faults is not an object"}};
  for (const auto& [pointer, value, trouble] : cases) {
    DemoHost host;
    host.Set(pointer, nlohmann::json::parse(value));
    const std::string before = host.Text();
    EXPECT_EQ(troubleOf(host), host.File().string() + ": " + trouble);
    EXPECT_EQ(host.Text(), before);
  }
}

TEST(SampleStore, RefusesWhatIsNoJson) {
  const std::pair<std::string, std::string> cases[] = {
      {"", ": line 1 is not JSON"},
      {"{\n  \"version\": {\n", ": line 3 is not JSON"},
      {"[1]", ": the whole is not an object"},
      {"{\"memory\": 1e999}", ": a number is too large"},
      {std::string(100000, '['), ": line 1 is not JSON"},
      {"{\"version\": \"\xff\"}", ": line 1 is not JSON"}};
  DemoHost host;
  auto json = host.State();
  for (const char* key : {"faults", "tools", "eventLibraryStatus", "systemAlert"}) json.erase(key);
  host.WriteText(json.dump());
  EXPECT_EQ(troubleOf(host), "") << "these may be left out";
  for (const auto& [text, trouble] : cases) {
    host.WriteText(text);
    EXPECT_EQ(troubleOf(host), host.File().string() + trouble);
  }
}

TEST(SampleStore, FollowsTheFileAndOutlivesABadEdit) {
  DemoHost host;
  const std::string good = host.Text();
  Store store(host.File());
  host.Set("/bootOption", 1);
  EXPECT_EQ(store.State().bootOption, 1);

  host.WriteText("{");
  for (int i = 0; i < 2; ++i) EXPECT_THROW(store.State(), HostCtlException);
  EXPECT_EQ(store.LastGoodState().bootOption, 1);
  EXPECT_THROW(raiseAlert(store, "x"), HostCtlException);
  EXPECT_EQ(host.Text(), "{");

  std::filesystem::remove(host.File());
  EXPECT_THROW(store.State(), HostCtlException);
  host.WriteText(good);
  EXPECT_EQ(store.State().bootOption, 0);
}

TEST(SampleStore, KeepsWhatItDoesNotKnowAndTheFilesMode) {
  DemoHost host;
  auto expected = nlohmann::ordered_json::parse(host.Text());
  expected["ourNotes"] = {{"z", 1}, {"a", 2}};
  host.WriteText(expected.dump());
  std::filesystem::permissions(host.File(), std::filesystem::perms(0600));
  Store store(host.File());
  HostSample::changePassword(store, "expired", "a-new-one");
  for (auto& account : expected["accounts"])
    if (account["name"] == "expired")
      account.update({{"password", "a-new-one"}, {"expired", false}});
  EXPECT_EQ(host.Text(), expected.dump(2) + "\n");
  EXPECT_EQ(std::filesystem::status(host.File()).permissions(), std::filesystem::perms(0600));
}

TEST(SampleStore, NeverWritesWhatItCouldNotReadBack) {
  DemoHost host;
  const std::string before = host.Text();
  Store store(host.File());
  EXPECT_THROW(store.Change([](HostSample::Json& json) { return json.erase("memory") > 0; }),
               HostCtlException);
  EXPECT_THROW(HostSample::changePassword(store, "root", "\xff\xfe"), HostCtlException);
  EXPECT_THROW(HostSample::changePassword(store, "nobody", "x"), HostCtlException);
  EXPECT_EQ(host.Text(), before);
}

TEST(SampleHost, JournalsWhatIsLoggedAndLeavesAPamDirectoryOfItsOwnerAlone) {
  DemoHost host;
  HostSample::useSampleHost(host.Directory());
  platform().Log(LOG_INFO, "two\nlines");
  platform().Log(LOG_DEBUG, "dropped");
  platform().Log((12 << 3) | LOG_CRIT, "c");
  EXPECT_EQ(host.Journal(), (std::vector<std::string>{"log.info\ttwo\\nlines", "log.12.crit\tc"}));
  EXPECT_TRUE(std::filesystem::remove(host.Directory() / "pam.d/kiva"));
  HostSample::useSampleHost(host.Directory());
  EXPECT_FALSE(std::filesystem::exists(host.Directory() / "pam.d/kiva"));
}

}  // namespace
