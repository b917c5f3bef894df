// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

#include "harness/demo_host.h"
#include "hosttools/tool.h"
#include "sample/sample_tool_host.h"

namespace {

using Harness::DemoHost;
using HostSeam::ToolAnswer;
using Json = nlohmann::json;

const std::string kOvl = "/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch ";
const std::string kAskVersion =
    "/bin/sh -c %let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent | awk "
    "'/Version/{ split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`; (exit $((v < "
    "3)))%";

const ToolAnswer kNotAsThatUser = {255, "", "hmx-cmd: that user may not administer this host\n"};

/// A tool's path and words, separated by blanks; percent signs stand around a word with blanks.
ToolAnswer run(const DemoHost& host, const std::string& call) {
  std::istringstream in(call);
  std::string path, word;
  std::vector<std::string> words = {"name"};
  for (in >> path; in >> std::quoted(word, '%');) words.push_back(word);
  HostSample::SampleToolHost toolHost(host.Directory());
  return HostTools::runTool(toolHost, path, words);
}

struct Call {
  std::string words;
  ToolAnswer answer;
};

void expectAnswers(const DemoHost& host, const std::string& tool, const std::vector<Call>& calls) {
  for (const auto& [words, expected] : calls) {
    const ToolAnswer answer = run(host, tool + words);
    EXPECT_EQ(answer, expected) << tool << words << "\n" << answer.output << answer.error;
  }
}

TEST(SampleTools, Answer) {
  DemoHost host;
  const std::string before = host.Text();
  expectAnswers(host, "/bin/hmx-cmd ",
                {{"-U kiva hmxsvc/auth/lockdown_is_enabled", {0, "false\n", ""}},
                 {"-U root hmxsvc/auth/lockdown_is_possible", {0, "true\n", ""}},
                 {"-U root internalsvc/refresh", {}},
                 {"-U operator internalsvc/refresh", kNotAsThatUser},
                 {"-U %% internalsvc/refresh", kNotAsThatUser},
                 {"internalsvc/refresh", {1, "", "hmx-cmd: missing argument -U\n"}}});
  const std::string digest = "sha1 Fingerprint=";
  expectAnswers(
      host, "/bin/openssl x509 -in ",
      {
          {"/etc/corvo/ssl/rui.crt -noout -fingerprint -sha1",
           {0, digest + "5D:0A:91:7E:C4:38:2F:B6:60:1D:EE:47:93:A8:0C:F5:72:BB:19:D4\n", ""}},
          {"/none -noout -fingerprint -sha1",
           {1, "", "Could not open file or uri for loading certificate from /none\n"}},
      });
  expectAnswers(
      host, "/usr/lib/corvo/openssh/bin/ssh-keygen ",
      {{"-l -f /etc/ssh/ssh_host_rsa_key",
        {0, "3072 SHA256:q8VZ1nT4cX0mJ7yRkPd2sWb6uLh9eGf3aNo5iKtQxBE root@halo-01 (RSA)\n", ""}},
       {"-l -f /none", {255, "", "ssh-keygen: /none: No such file or directory\n"}}});
  expectAnswers(
      host, "",
      {{"/sbin/powerOffVms --now", {1, "", "powerOffVms: unknown argument --now\n"}},
       {kOvl + "-m -p vSwitch1 -I tarn0", {1, "", "ovlcfg-vswitch: ovl-opsagent is not running\n"}},
       {kAskVersion, {}},
       {"/bin/sh -c %/etc/init.d/ovl-opsagent status; reboot%",
        {127, "", "sh: /etc/init.d/ovl-opsagent status; reboot: not found\n"}},
       {"/sbin/reboot", {127, "", "/sbin/reboot: no such tool\n"}},
       {"/bin/halocli system shutdown", {1, "halocli: unknown argument shutdown\n", ""}}});
  EXPECT_EQ(host.Text(), before) << "none of these changes the host";
  for (const auto& tool : HostTools::toolsOf(HostSample::SampleToolHost(host.Directory())))
    for (const std::string& path : tool.paths)
      EXPECT_EQ(run(host, path + " --help"), (ToolAnswer{0, tool.help, ""}));
}

TEST(SampleTools, HalocliChangesTheSwitches) {
  DemoHost host;
  const auto refused = [](const char* why) {
    return ToolAnswer{1, std::string("halocli: ") + why + "\n", ""};
  };
  expectAnswers(
      host, "/bin/halocli network vswitch standard ",
      {{"add -v vSwitch2", {}},
       {"add -v vSwitch2", refused("There is a standard switch vSwitch2 already.")},
       {"uplink remove -u pnic2 -v vSwitch1", {}},
       {"uplink add -v vSwitch2 -u pnic2", {}},
       {"uplink add -u pnic0 -v vSwitch2",
        refused("The physical adapter pnic0 is an uplink of vSwitch0 already.")},
       {"uplink remove -u pnic1 -v vSwitch0",
        refused("The standard switch vSwitch0 has no uplink pnic1.")},
       {"uplink add -u pnic1 -v vSwitch9", refused("There is no standard switch vSwitch9.")},
       {"portgroup add -p %Lab net% -v vSwitch2", {}},
       {"add -v a -v b", refused("-v given twice")}});
  const Json switches = host.State()["network"]["switches"];
  EXPECT_EQ(switches[1]["uplinks"], Json::array());
  EXPECT_EQ(switches[2], Json::parse(R"({"name": "vSwitch2", "uplinks": ["pnic2"],
                                         "portGroups": [{"name": "Lab net", "vlanId": 0}]})"));
}

TEST(SampleTools, TheShellKnowsTheAgentsLines) {
  DemoHost host;
  const auto status = [&](const std::string& action) {
    return run(host, "/bin/sh -c %/etc/init.d/ovl-opsagent " + action + "%").status;
  };
  const std::pair<const char*, int> steps[] = {{"status", 3}, {"stop", 1},  {"start", 0},
                                               {"status", 0}, {"start", 0}, {"stop", 0},
                                               {"status", 3}, {"start", 0}};
  for (const auto& [action, expected] : steps) EXPECT_EQ(status(action), expected) << action;
  EXPECT_EQ(run(host, kOvl + "-m -p tarn0 -I vSwitch1"), ToolAnswer{});
  EXPECT_EQ(host.State()["network"]["kernelNics"][0]["connection"]["switch"], "vSwitch1");

  host.Set("/packages/ovl-opsagent", "2.9");
  EXPECT_EQ(run(host, kAskVersion).status, 1);
  host.Set("/packages", Json::object());
  EXPECT_EQ(run(host, kAskVersion).status, 1);
  host.Set("/services", Json::object());
  EXPECT_EQ(status("status"), 5);
}

TEST(SampleTools, StopMachinesAndGiveRehearsedAnswers) {
  DemoHost host;
  const auto running = [&] {
    std::string names;
    const Json machines = host.State()["machines"];
    for (const Json& machine : machines)
      if (machine["running"] == true) names += machine["name"].get<std::string>() + " ";
    return names;
  };
  EXPECT_EQ(run(host, "/bin/hmx-cmd -U root hostsvc/autostartmanager/autostop"), ToolAnswer{});
  EXPECT_EQ(running(), "build-07 ");
  EXPECT_EQ(run(host, "/bin/powerOffVms --terminate"), ToolAnswer{});
  EXPECT_EQ(running(), "");

  host.Set("/tools", {{"/bin/hmx-cmd", {{"status", 7}, {"stdout", "true"}}},
                      {"/sbin/reboot", {{"status", 255}, {"stderr", "not now\n"}}}});
  expectAnswers(host, "",
                {{"/bin/hmx-cmd x", {7, "true", ""}}, {"/sbin/reboot", {255, "", "not now\n"}}});
}

}  // namespace
