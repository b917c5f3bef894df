// SPDX-License-Identifier: MIT
#include "sample/store.h"

#include <gtest/gtest.h>

#include "hostctl/lib/exception.h"
#include "sample/changes.h"
#include "sample/sample_host.h"
#include "tests/support/host_file.h"

namespace {

using Harness::DemoHost;
using HostCtl::Lib::HostCtlException;
using HostSample::SampleHostError;
using HostSample::Store;
using TestSupport::hostFile;
using TestSupport::hostText;
using TestSupport::setIn;
using TestSupport::writeHostText;

std::string troubleOf(const DemoHost& host) {
  try {
    Store store(hostFile(host));
    return "usable";
  } catch (const SampleHostError& error) {
    return error.what();
  }
}

TEST(SampleStore, NamesTheKeyThatIsWrongAndLeavesTheFile) {
  const struct {
    const char* pointer;
    const char* value;
    const char* trouble;
  } cases[] = {
      {"/hardware", "{}", "hardware.vendorName is missing"},
      {"/hardware", "7", "hardware is not an object"},
      {"/hardware/bios/majorVersion", "\"2\"",
       "hardware.bios.majorVersion is not a whole number from 0 to 255"},
      {"/version/buildNumber", "-1",
       "version.buildNumber is not a whole number from 0 to 4294967295"},
      {"/memory/totalPages", "18446744073709551615",
       "memory.totalPages is not a whole number from 0 to 17592186044416"},
      {"/memory/totalPages", "1.5",
       "memory.totalPages is not a whole number from 0 to 17592186044416"},
      {"/network/ipv6Enabled", "1", "network.ipv6Enabled is not true or false"},
      {"/network/pnics", "{}", "network.pnics is not a list"},
      {"/network/pnics/2/name", "null", "network.pnics[2].name is missing"},
      {"/network/kernelNics/0/running/ipv4/mode", "\"bootp\"",
       "network.kernelNics[0].running.ipv4.mode is not one of none, dhcp, static"},
      {"/network/kernelNics/0/configured/ipv4/mode", "\"static\"",
       "network.kernelNics[0].configured.ipv4.address is missing"},
      {"/network/routing/ipv4Gateway", "\"10.20.30\"",
       "network.routing.ipv4Gateway is not an IPv4 address"},
      {"/network/dns/nameServers/0", "\"\"", "network.dns.nameServers[0] is not an IP address"},
      {"/options/two\nlines", "true",
       "options.two\\nlines is not a whole number from -9223372036854775807 to "
       "9223372036854775807"},
      {"/tools", R"({"/bin/sh": {}})", "tools./bin/sh.status is missing"},
      {"/faults", "[]", "faults is not an object"},
  };
  for (const auto& one : cases) {
    DemoHost host;
    setIn(host, one.pointer, nlohmann::json::parse(one.value));
    const std::string before = hostText(host);
    EXPECT_EQ(troubleOf(host), hostFile(host).string() + ": " + one.trouble);
    EXPECT_EQ(hostText(host), before);
  }
}

TEST(SampleStore, RefusesWhatIsNoJson) {
  const std::pair<std::string, std::string> cases[] = {
      {"", ": line 1 is not JSON"},
      {"{\n  \"version\": {\n", ": line 3 is not JSON"},
      {"[1]", ": the whole is not an object"},
      {"{\"memory\": 1e999}", ": a number is too large"},
      {std::string(100000, '['), ": line 1 is not JSON"},
      {"{\"version\": \"\xff\"}", ": line 1 is not JSON"},
  };
  for (const auto& [text, trouble] : cases) {
    DemoHost host;
    writeHostText(host, text);
    EXPECT_EQ(troubleOf(host), hostFile(host).string() + trouble);
  }
  DemoHost host;
  std::filesystem::remove(hostFile(host));
  EXPECT_EQ(troubleOf(host), hostFile(host).string() + ": No such file or directory");
}

TEST(SampleStore, LeavesOptionalKeysOut) {
  DemoHost host;
  auto json = host.State();
  for (const char* key : {"faults", "tools", "eventLibraryStatus", "systemAlert"}) json.erase(key);
  writeHostText(host, json.dump());
  EXPECT_EQ(troubleOf(host), "usable");
}

TEST(SampleStore, FollowsTheFileAndOutlivesABadEdit) {
  DemoHost host;
  const std::string good = hostText(host);
  Store store(hostFile(host));
  setIn(host, "/bootOption", 1);
  EXPECT_EQ(store.State().bootOption, 1);

  writeHostText(host, "{");
  for (int i = 0; i < 2; ++i) EXPECT_THROW(store.State(), HostCtlException);
  EXPECT_EQ(store.LastGoodState().bootOption, 1);
  EXPECT_THROW(raiseAlert(store, "x"), HostCtlException);
  EXPECT_EQ(hostText(host), "{");

  std::filesystem::remove(hostFile(host));
  EXPECT_THROW(store.State(), HostCtlException);
  writeHostText(host, good);
  EXPECT_EQ(store.State().bootOption, 0);
}

TEST(SampleStore, KeepsWhatItDoesNotKnowAndTheFilesMode) {
  DemoHost host;
  auto expected = nlohmann::ordered_json::parse(hostText(host));
  expected["ourNotes"] = {{"z", 1}, {"a", 2}};
  writeHostText(host, expected.dump());
  std::filesystem::permissions(hostFile(host), std::filesystem::perms(0600));
  Store store(hostFile(host));
  HostSample::changePassword(store, "expired", "a-new-one");
  for (auto& account : expected["accounts"])
    if (account["name"] == "expired")
      account.update({{"password", "a-new-one"}, {"expired", false}});
  EXPECT_EQ(hostText(host), expected.dump(2) + "\n");
  EXPECT_EQ(std::filesystem::status(hostFile(host)).permissions(), std::filesystem::perms(0600));
}

TEST(SampleStore, NeverWritesWhatItCouldNotReadBack) {
  DemoHost host;
  const std::string before = hostText(host);
  Store store(hostFile(host));
  EXPECT_THROW(store.Change([](HostSample::Json& json) { return json.erase("memory") > 0; }),
               HostCtlException);
  EXPECT_THROW(HostSample::changePassword(store, "root", "\xff\xfe"), HostCtlException);
  EXPECT_THROW(HostSample::changePassword(store, "nobody", "x"), HostCtlException);
  EXPECT_EQ(hostText(host), before);
}

TEST(SampleStore, ACardsPinCountsWhileTheCardIsThere) {
  DemoHost host;
  Store store(hostFile(host));
  const auto accepts = [&](const char* secret) {
    const auto& state = store.State();
    return acceptsSecret(state, *findAccount(state, "carla"), secret);
  };
  EXPECT_TRUE(accepts("card-holder"));
  EXPECT_FALSE(accepts("4711"));
  setIn(host, "/smartCardSlots/0/token", {{"label", "Carla's card"}, {"userId", "carla"}});
  EXPECT_TRUE(accepts("4711"));
  EXPECT_FALSE(accepts(""));
}

}  // namespace
