// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "hosttools/tool.h"
#include "sample/sample_tool_host.h"
#include "tests/support/host_file.h"

namespace {

using Harness::DemoHost;
using HostSeam::ToolAnswer;
using TestSupport::hostText;
using TestSupport::setIn;
using Json = nlohmann::json;
using Words = std::vector<std::string>;

constexpr const char* kHmx = "/bin/hmx-cmd";
constexpr const char* kCli = "/bin/halocli";
constexpr const char* kKeygen = "/usr/lib/corvo/openssh/bin/ssh-keygen";
constexpr const char* kOvl = "/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch";
constexpr const char* kVersionLine =
    "let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent | awk '/Version/{ "
    "split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`; (exit $((v < 3)))";

/// Runs a tool on `host` with the words after its name.
ToolAnswer run(const DemoHost& host, const std::string& path, Words words) {
  HostSample::SampleToolHost toolHost(host.Directory());
  words.insert(words.begin(), "name");
  return HostTools::runTool(toolHost, path, words);
}

TEST(SampleTools, Answer) {
  const Words certificate = {"x509", "-in", "/etc/corvo/ssl/rui.crt", "-noout", "-fingerprint"};
  const auto digest = [&](const char* option, const char* file = "/etc/corvo/ssl/rui.crt") {
    Words words = certificate;
    words[2] = file;
    words.push_back(option);
    return words;
  };
  const struct {
    const char* path;
    Words words;
    ToolAnswer answer;
  } cases[] = {
      {kHmx, {"-U", "kiva", "hmxsvc/auth/lockdown_is_enabled"}, {0, "false\n", ""}},
      {kHmx, {"-U", "root", "hmxsvc/auth/lockdown_is_possible"}, {0, "true\n", ""}},
      {kHmx, {"-U", "root", "internalsvc/refresh"}, {0, "", ""}},
      {kHmx,
       {"-U", "operator", "internalsvc/refresh"},
       {255, "", "hmx-cmd: operator may not administer this host\n"}},
      {kHmx,
       {"-U", "", "internalsvc/refresh"},
       {255, "", "hmx-cmd:  may not administer this host\n"}},
      {kHmx, {"-U", "kiva", "hmxsvc/x"}, {1, "", "hmx-cmd: no such query: hmxsvc/x\n"}},
      {kHmx, {"internalsvc/refresh"}, {1, "", "hmx-cmd: expected -U USER QUERY\n"}},
      {"/bin/openssl",
       digest("-sha1"),
       {0, "sha1 Fingerprint=5D:0A:91:7E:C4:38:2F:B6:60:1D:EE:47:93:A8:0C:F5:72:BB:19:D4\n", ""}},
      {"/bin/openssl",
       digest("-sha1", "/none"),
       {1, "", "Could not open file or uri for loading certificate from /none\n"}},
      {"/bin/openssl",
       digest("-md5"),
       {1, "", "openssl: expected x509 -in FILE -noout -fingerprint -sha1|-sha256\n"}},
      {kKeygen,
       {"-l", "-f", "/etc/ssh/ssh_host_rsa_key"},
       {0, "3072 SHA256:q8VZ1nT4cX0mJ7yRkPd2sWb6uLh9eGf3aNo5iKtQxBE root@halo-01 (RSA)\n", ""}},
      {kKeygen,
       {"-l", "-f", "/etc/ssh/ssh_host_dsa_key"},
       {255, "", "ssh-keygen: /etc/ssh/ssh_host_dsa_key: No such file or directory\n"}},
      {kKeygen, {"-t", "rsa"}, {1, "", "ssh-keygen: expected -l -f FILE\n"}},
      {"/sbin/powerOffVms", {"--now"}, {1, "", "powerOffVms: unknown argument --now\n"}},
      {kOvl, {"-m", "-p", "vSwitch1"}, {1, "", std::string(kOvl) + ": missing argument -I\n"}},
      {kOvl,
       {"-m", "-p", "vSwitch1", "-I", "tarn0"},
       {1, "", "ovlcfg-vswitch: ovl-opsagent is not running\n"}},
      {"/bin/sh", {"-c", kVersionLine}, {0, "", ""}},
      {"/bin/sh", {"-c", "echo hello"}, {127, "", "sh: echo hello: not found\n"}},
      {"/bin/sh",
       {"-c", "/etc/init.d/ovl-opsagent status; reboot"},
       {127, "", "sh: /etc/init.d/ovl-opsagent status; reboot: not found\n"}},
      {"/bin/sh", {}, {127, "", "sh: only -c and a line that this host knows\n"}},
      {"/sbin/reboot", {}, {127, "", "/sbin/reboot: no such tool\n"}},
      {"hmx-cmd", {}, {127, "", "hmx-cmd: no such tool\n"}},
      {kCli, {"system", "shutdown"}, {1, "halocli: unknown command\n", ""}},
  };
  DemoHost host;
  const std::string before = hostText(host);
  for (const auto& one : cases) {
    const ToolAnswer answer = run(host, one.path, one.words);
    const std::string called = one.path + (" " + testing::PrintToString(one.words));
    EXPECT_EQ(answer.status, one.answer.status) << called;
    EXPECT_EQ(answer.output, one.answer.output) << called;
    EXPECT_EQ(answer.error, one.answer.error) << called;
  }
  EXPECT_EQ(hostText(host), before) << "none of these changes the host";
}

TEST(SampleTools, EachExplainsItself) {
  DemoHost host;
  for (const HostTools::Tool& tool : HostTools::allTools()) {
    const std::string path(tool.paths.substr(0, tool.paths.find(' ')));
    EXPECT_EQ(run(host, path, {"--help"}), (ToolAnswer{0, std::string(tool.help), ""}));
  }
}

TEST(SampleTools, HalocliChangesTheSwitches) {
  const Words standard = {"network", "vswitch", "standard"};
  const struct {
    Words words;
    int status;
    std::string output;
  } steps[] = {
      {{"add", "-v", "vSwitch2"}, 0, ""},
      {{"add", "-v", "vSwitch2"}, 1, "halocli: There is a standard switch vSwitch2 already.\n"},
      {{"uplink", "remove", "-u", "pnic2", "-v", "vSwitch1"}, 0, ""},
      {{"uplink", "add", "-v", "vSwitch2", "-u", "pnic2"}, 0, ""},
      {{"uplink", "add", "-u", "pnic0", "-v", "vSwitch2"},
       1,
       "halocli: The physical adapter pnic0 is an uplink of vSwitch0 already.\n"},
      {{"uplink", "add", "-u", "pnic9", "-v", "vSwitch2"},
       1,
       "halocli: There is no physical adapter pnic9.\n"},
      {{"uplink", "remove", "-u", "pnic1", "-v", "vSwitch0"},
       1,
       "halocli: The standard switch vSwitch0 has no uplink pnic1.\n"},
      {{"uplink", "add", "-u", "pnic1", "-v", "vSwitch9"},
       1,
       "halocli: There is no standard switch vSwitch9.\n"},
      {{"portgroup", "add", "-p", "Lab net", "-v", "vSwitch2"}, 0, ""},
      {{"portgroup", "add", "-p", "Storage", "-v", "vSwitch2"},
       1,
       "halocli: There is a port group Storage already.\n"},
      {{"uplink", "add", "-u", "pnic1"}, 1, "halocli: missing argument -v\n"},
      {{"add", "-v"}, 1, "halocli: -v needs a value\n"},
      {{"add", "-x", "y"}, 1, "halocli: unknown argument -x\n"},
      {{"add", "-v", "a", "-v", "b"}, 1, "halocli: -v given twice\n"},
  };
  DemoHost host;
  for (const auto& step : steps) {
    Words words = standard;
    words.insert(words.end(), step.words.begin(), step.words.end());
    EXPECT_EQ(run(host, kCli, words), (ToolAnswer{step.status, step.output, ""}))
        << testing::PrintToString(step.words);
  }
  const Json switches = host.State()["network"]["switches"];
  EXPECT_EQ(switches[1]["uplinks"], Json::array());
  EXPECT_EQ(switches[2], Json::parse(R"({"name": "vSwitch2", "uplinks": ["pnic2"],
                                         "portGroups": [{"name": "Lab net", "vlanId": 0}]})"));
}

TEST(SampleTools, TheShellKnowsTheAgentsLines) {
  DemoHost host;
  const auto status = [&](const char* line) { return run(host, "/bin/sh", {"-c", line}).status; };
  const std::string script = "/etc/init.d/ovl-opsagent ";
  const std::pair<const char*, int> steps[] = {{"status", 3}, {"stop", 1},   {"start", 0},
                                               {"status", 0}, {"start", 0},  {"stop", 0},
                                               {"stop", 1},   {"status", 3}, {"start", 0}};
  for (const auto& [action, expected] : steps)
    EXPECT_EQ(status((script + action).c_str()), expected) << action;
  EXPECT_EQ(run(host, kOvl, {"-m", "-p", "tarn0", "-I", "vSwitch1"}), ToolAnswer{});
  EXPECT_EQ(host.State()["network"]["kernelNics"][0]["connection"]["switch"], "vSwitch1");

  setIn(host, "/packages/ovl-opsagent", "2.9");
  EXPECT_EQ(status(kVersionLine), 1);
  setIn(host, "/packages", Json::object());
  EXPECT_EQ(status(kVersionLine), 1);
  setIn(host, "/services", Json::object());
  EXPECT_EQ(status((script + "status").c_str()), 127);
}

TEST(SampleTools, StopMachines) {
  DemoHost host;
  const auto running = [&] {
    Words names;
    const Json machines = host.State()["machines"];
    for (const Json& machine : machines)
      if (machine["running"] == true) names.push_back(machine["name"]);
    return names;
  };
  EXPECT_EQ(run(host, kHmx, {"-U", "root", "hostsvc/autostartmanager/autostop"}), ToolAnswer{});
  EXPECT_EQ(running(), Words{"build-07"});
  EXPECT_EQ(run(host, "/bin/powerOffVms", {"--terminate"}), ToolAnswer{});
  EXPECT_EQ(running(), Words{});
}

TEST(SampleTools, GiveARehearsedAnswer) {
  DemoHost host;
  setIn(host, "/tools",
        {{"/bin/hmx-cmd", {{"status", 7}, {"stdout", "true"}}},
         {"/sbin/reboot", {{"status", 255}, {"stderr", "not now\n"}}}});
  EXPECT_EQ(run(host, kHmx, {"whatever"}), (ToolAnswer{7, "true", ""}));
  EXPECT_EQ(run(host, "/sbin/reboot", {}), (ToolAnswer{255, "", "not now\n"}));
}

}  // namespace
