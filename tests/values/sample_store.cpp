// SPDX-License-Identifier: MIT
#include "sample/store.h"

#include <gtest/gtest.h>

#include "hostctl/lib/exception.h"
#include "sample/changes.h"
#include "sample/sample_host.h"
#include "tests/support/sample_copy.h"

namespace {

using HostCtl::Lib::HostCtlException;
using HostSample::SampleHostError;
using HostSample::Store;
using TestSupport::SampleCopy;

std::string troubleOf(const SampleCopy& host) {
  try {
    Store store(host.HostFile());
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
    const SampleCopy host;
    host.Set(one.pointer, SampleCopy::Json::parse(one.value));
    const std::string before = SampleCopy::TextOf(host.HostFile());
    EXPECT_EQ(troubleOf(host), host.HostFile().string() + ": " + one.trouble);
    EXPECT_EQ(SampleCopy::TextOf(host.HostFile()), before);
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
    const SampleCopy host;
    host.Write(text);
    EXPECT_EQ(troubleOf(host), host.HostFile().string() + trouble);
  }
  const SampleCopy host;
  std::filesystem::remove(host.HostFile());
  EXPECT_EQ(troubleOf(host), host.HostFile().string() + ": No such file or directory");
}

TEST(SampleStore, LeavesOptionalKeysOut) {
  const SampleCopy host;
  auto json = host.Host();
  for (const char* key : {"faults", "tools", "eventLibraryStatus", "systemAlert"}) json.erase(key);
  host.Write(json.dump());
  EXPECT_EQ(troubleOf(host), "usable");
}

TEST(SampleStore, FollowsTheFileAndOutlivesABadEdit) {
  const SampleCopy host;
  const std::string good = SampleCopy::TextOf(host.HostFile());
  Store store(host.HostFile());
  host.Set("/bootOption", 1);
  EXPECT_EQ(store.State().bootOption, 1);

  host.Write("{");
  for (int i = 0; i < 2; ++i) EXPECT_THROW(store.State(), HostCtlException);
  EXPECT_EQ(store.LastGoodState().bootOption, 1);
  EXPECT_THROW(raiseAlert(store, "x"), HostCtlException);
  EXPECT_EQ(SampleCopy::TextOf(host.HostFile()), "{");

  std::filesystem::remove(host.HostFile());
  EXPECT_THROW(store.State(), HostCtlException);
  host.Write(good);
  EXPECT_EQ(store.State().bootOption, 0);
}

TEST(SampleStore, KeepsWhatItDoesNotKnowAndTheFilesMode) {
  const SampleCopy host;
  host.Set("/ourNotes", {{"z", 1}, {"a", 2}});
  std::filesystem::permissions(host.HostFile(), std::filesystem::perms(0600));
  auto expected = host.Host();
  Store store(host.HostFile());
  HostSample::changePassword(store, "expired", "a-new-one");
  for (auto& account : expected["accounts"])
    if (account["name"] == "expired")
      account.update({{"password", "a-new-one"}, {"expired", false}});
  EXPECT_EQ(host.Host(), expected);
  EXPECT_EQ(host.Host().dump(), expected.dump()) << "the order of keys";
  EXPECT_EQ(std::filesystem::status(host.HostFile()).permissions(), std::filesystem::perms(0600));
}

TEST(SampleStore, NeverWritesWhatItCouldNotReadBack) {
  const SampleCopy host;
  const std::string before = SampleCopy::TextOf(host.HostFile());
  Store store(host.HostFile());
  EXPECT_THROW(store.Change([](HostSample::Json& json) { return json.erase("memory") > 0; }),
               HostCtlException);
  EXPECT_THROW(HostSample::changePassword(store, "root", "\xff\xfe"), HostCtlException);
  EXPECT_THROW(HostSample::changePassword(store, "nobody", "x"), HostCtlException);
  EXPECT_EQ(SampleCopy::TextOf(host.HostFile()), before);
}

TEST(SampleStore, ACardsPinCountsWhileTheCardIsThere) {
  const SampleCopy host;
  Store store(host.HostFile());
  const auto accepts = [&](const char* secret) {
    const auto& state = store.State();
    return acceptsSecret(state, *findAccount(state, "carla"), secret);
  };
  EXPECT_TRUE(accepts("card-holder"));
  EXPECT_FALSE(accepts("4711"));
  host.Set("/smartCardSlots/0/token", {{"label", "Carla's card"}, {"userId", "carla"}});
  EXPECT_TRUE(accepts("4711"));
  EXPECT_FALSE(accepts(""));
}

}  // namespace
