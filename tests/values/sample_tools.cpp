// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <iomanip>
#include <set>
#include <sstream>

#include "harness/demo_host.h"
#include "hosttools/program.h"
#include "sample/file_tools.h"
#include "sample/sample_host.h"
#include "sample/sample_tool_host.h"

namespace {

using Harness::DemoHost;
using HostSeam::ToolAnswer;
using Json = nlohmann::json;

const std::string kOvl = "/usr/lib64/corvo/ovl-opsagent/bin/ovlcfg-vswitch ";
const std::string kHmx = "/bin/hmx-cmd -U root ";
const std::string kSwitch = "/bin/halocli network vswitch standard ";
const std::string kSet = "/bin/halocli system settings advanced set -o ";
const std::string kCore = "/sbin/tarnbacktrace -w -n mgmtd ";
const std::string kKeygen = "/usr/lib/corvo/openssh/bin/ssh-keygen -l -f ";
const std::string kShell = "/bin/sh -c %";
const std::string kAskVersion =
    "/bin/sh -c %let v=`halocli --formatter=keyvalue software pak get -n ovl-opsagent | awk "
    "'/Version/{ split($0, kv, \"=\"); split(kv[2], ver, \".\"); print ver[1] }'`; (exit $((v < "
    "3)))%";

/// The sample host for somebody who may not change it.
struct PowerlessHost : HostSample::SampleToolHost {
  using SampleToolHost::SampleToolHost;
  bool MayChange() override { return false; }
};

/// A tool's path and words, separated by blanks; percent signs stand around a word with blanks.
template <typename ToolHost = HostSample::SampleToolHost>
ToolAnswer run(const DemoHost& host, const std::string& call) {
  std::istringstream in(call);
  std::string path, word;
  std::vector<std::string> words = {"name"};
  for (in >> path; in >> std::quoted(word, '%');) words.push_back(word);
  ToolHost toolHost(host.Directory());
  return HostTools::runTool(toolHost, path, words);
}

using Call = std::pair<std::string, ToolAnswer>;

ToolAnswer says(const std::string& text) {
  return {0, text + "\n", ""};
}

ToolAnswer refuses(const std::string& text, int status = 1) {
  return {status, "", text + "\n"};
}

/// What halocli says, where its callers log it.
ToolAnswer denies(const std::string& text) {
  return {1, "halocli: " + text + "\n", ""};
}

void expectAnswers(const DemoHost& host, const std::string& tool, const std::vector<Call>& calls) {
  for (const auto& [words, expected] : calls) {
    const ToolAnswer answer = run(host, tool + words);
    EXPECT_EQ(answer, expected) << tool << words << "\n" << answer.output << answer.error;
  }
}

TEST(SampleTools, AnswerWithoutChangingTheHost) {
  DemoHost host;
  const std::string before = host.Text(), most(255, 'x'), add = "network vswitch standard add ";
  const auto notAsThatUser = refuses("hmx-cmd: that user may not administer this host", 255);
  expectAnswers(
      host, "/bin/hmx-cmd ",
      {{"-U root hmxsvc/auth/lockdown_is_possible", says("true")},
       {"-U operator internalsvc/refresh", notAsThatUser},
       {"-U %% internalsvc/refresh", notAsThatUser},
       {"internalsvc/refresh", refuses("hmx-cmd: missing argument -U")},
       {"-U kiva hostsvc/start_sh", refuses("hmx-cmd: unknown argument hostsvc/start_sh")}});
  expectAnswers(host, "/bin/tarnping ",
                {{"2001:db8:20::53 -c 20", says("2001:db8:20::53 answers")},
                 {"-c 3 fe80::1%tarn0", {1, "fe80::1%tarn0 does not answer\n", ""}},
                 {"-c 3 10.20.30", refuses("tarnping: not an IPv4 or IPv6 address: 10.20.30")},
                 {"-c 21 ::1", refuses("tarnping: -c is a whole number from 1 to 20")}});
  expectAnswers(
      host, "",
      {{"/bin/openssl x509 -in /etc/corvo/ssl/rui.crt -noout -fingerprint -sha1",
        says("sha1 Fingerprint=5D:0A:91:7E:C4:38:2F:B6:60:1D:EE:47:93:A8:0C:F5:72:BB:19:D4")},
       {"/bin/openssl x509 -in /none -noout -fingerprint -sha256",
        refuses("Could not open file or uri for loading certificate from /none")},
       {kKeygen + "/etc/ssh/ssh_host_rsa_key",
        says("3072 SHA256:q8VZ1nT4cX0mJ7yRkPd2sWb6uLh9eGf3aNo5iKtQxBE root@halo-01 (RSA)")},
       {kKeygen + "/none", refuses("ssh-keygen: /none: No such file or directory", 255)},
       {"/sbin/services.sh status", says("mgmtd is running\nevbd is running")},
       {"/etc/init.d/SSH stop", ToolAnswer{1, "SSH is not running\n", ""}},
       {kCore + "-o ../up -d /var/log", refuses("tarnbacktrace: not the name of a file: ../up")},
       {kCore + "-o up -d /var/..", refuses("tarnbacktrace: not the path of a folder: /var/..")}});
  expectAnswers(
      host, "/bin/halocli ",
      {{"", denies("not a whole command: --help shows them")},
       {add + "-v " + most,
        denies("a switch's name has at most 10 letters, digits, dots, underscores and "
               "hyphens, with neither a dot nor a hyphen in front; it is no number, neither "
               "\"all\" nor \"default\", and ends neither in \"-bond\" nor in \"-port\"")},
       {add + "-v " + most + "x", denies("an argument is longer than 255 characters")},
       {add + "-v %a\nb%", denies("an argument has control characters")},
       {add + "-v %%", denies("-v needs a value")},
       {add + "-v a -v b", denies("-v given twice")},
       {add + "-v a b", denies("unknown argument b")}});
  for (const char* number : {"86401", "-1", "99999999999999999999", "6o"})
    EXPECT_EQ(run(host, kSet + "/UserVars/KivaTimeOut -i " + number),
              denies("/UserVars/KivaTimeOut is a whole number from 0 to 86400"));
  expectAnswers(
      host, "",
      {{kSet + "/UserVars/KivaTimeOut -s 60", denies("/UserVars/KivaTimeOut is a number: use -i")},
       {kSet + "/UserVars/None -i 1", denies("no such option: /UserVars/None")},
       {kSwitch + "add -v vSwitch1", denies("There is a standard switch vSwitch1 already.")},
       {kSwitch + "uplink add -u pnic0 -v vSwitch1",
        denies("The physical adapter pnic0 is an uplink of vSwitch0 already.")},
       {kSwitch + "portgroup set -p Backup -v vSwitch1 -i 4096",
        denies("-i is a whole number from 0 to 4095")},
       {kSwitch + "remove -v vSwitch0", denies("The kernel interface tarn0 is on vSwitch0.")},
       {kSwitch + "portgroup remove -p %Management Network% -v vSwitch0",
        denies("The kernel interface tarn0 is on Management Network.")},
       {kSwitch + "portgroup remove -p Backup -v vSwitch0",
        denies("There is no port group of vSwitch0 named Backup.")},
       {kSwitch + "uplink remove -u pnic1 -v vSwitch0",
        denies("The standard switch vSwitch0 has no uplink pnic1.")}});
  for (const char* name : {"../x", "% %", "..", "%a %", "Ü"})
    EXPECT_EQ(run(host, kSwitch + "portgroup add -v vSwitch1 -p " + name).status, 1) << name;
  EXPECT_EQ(host.Text(), before);
}

TEST(SampleTools, ListTheNetwork) {
  DemoHost host;
  HostSample::openSampleHost(host.Directory());
  host.Set("/network/pnics/1/description", "two\nlines");
  host.Set("/network/switches/1/portGroups", Json::array());
  host.Set("/network/switches/0/portGroups/0/name", "Verwaltung Ü");
  host.Set("/network/kernelNics/0/configured/ipv6/networks/0/prefix", 56);
  host.Set("/network/routing/ipv6Gateway", "::");
  expectAnswers(
      host, "/bin/halocli network ",
      {{"ip list", says(R"(Interface  Setting       Configured          Running
tarn0      Connection    -                   standard vSwitch0 Management Network
tarn0      MAC address   -                   9e:3e:41:07:21:a8
tarn0      IPv4          dhcp                dhcp
tarn0      IPv4 address  -                   10.20.30.40
tarn0      IPv4 netmask  -                   255.255.255.0
tarn0      Name servers  dhcp                dhcp
tarn0      IPv6          on dhcp advertised  on dhcp advertised
tarn0      IPv6 address  -                   2001:db8:20::40/64
tarn0      IPv6 address  -                   2001:db8:20::1:7f3a/128 dhcp
tarn0      IPv6 address  -                   2001:db8:20:0:9c3e:41ff:fe07:21a8/64 advertised
tarn0      IPv6 address  2001:db8:20::40/56  -)")},
       {"ip route list", says(R"(Protocol  Default Gateway
IPv4      10.20.30.1
IPv6      -)")},
       {"dns list", says(R"(Setting        Value
Host name      halo-01
Domain         example.test
Name server    10.20.30.2
Name server    2001:db8:20::53
Search domain  example.test
Search domain  lab.example.test)")},
       {"nic list", says(R"(Adapter  Driver  MAC Address        Link  Mbit/s  Switch    Description
pnic0    qln10   9e:3e:41:07:21:a8  up    10000   vSwitch0  Quillon 10G Dual Port Adapter
pnic1    qln10   9e:3e:41:07:21:a9  up    10000   -         two?lines
pnic2    qln1    9e:3e:41:55:0c:10  up    1000    vSwitch1  Quillon 1G Quad Port Adapter
pnic3    qln1    9e:3e:41:55:0c:11  down  -       -         Quillon 1G Quad Port Adapter)")},
       {"vswitch standard list", says(R"(Switch    Uplinks  Port Group    VLAN  Active Uplinks
vSwitch0  pnic0    Verwaltung Ü  0     pnic0
vSwitch0  pnic0    VM Network    0     pnic0
vSwitch1  pnic2    -             -     -)")}});
  host.Set("/network/distributedSwitches",
           Json::parse(R"([{"name": "xds0", "uplinks": ["pnic1", "pnic3"], "ports": [
               {"name": "mgmt", "nic": "tarn1", "vlanId": 30, "blocked": true,
                "uplinks": ["pnic3"]}, {"name": "host-local-0"}]},
             {"name": "xds1", "thirdParty": true, "uplinks": [], "ports": []}])"));
  expectAnswers(
      host, "/bin/halocli network vswitch distributed ",
      {{"list",
        says(
            R"(Switch  Third Party  Uplinks      Port          Interface  VLAN  Blocked  Port's Uplinks
xds0    no           pnic1 pnic3  mgmt          tarn1      30    yes      pnic3
xds0    no           pnic1 pnic3  host-local-0  -          0     no       pnic1 pnic3
xds1    yes          -            -             -          -     -        -)")}});
  host.Set("/faults", {{"GetPnics", "no answer"}});
  expectAnswers(host, "/bin/halocli network nic ", {{"list", denies("no answer")}});
}

TEST(SampleTools, FailAsRehearsedForTheNearestCall) {
  DemoHost host;
  host.Set("/tools", {{"/bin/halocli network", {{"status", 2}}},
                      {"/bin/halocli network vswitch standard add", {{"status", 3}}}});
  expectAnswers(host, "/bin/halocli network ",
                {{"vswitch standard add -v vSwitch7", {3, "", ""}}, {"ip list", {2, "", ""}}});
  EXPECT_EQ(run(host, "/sbin/localcli network vswitch standard add -v vSwitch7"), ToolAnswer{});
}

TEST(SampleTools, HelpFitsWhatACallerReads) {
  DemoHost host;
  for (const auto& tool : HostTools::toolsOf(HostSample::SampleToolHost(host.Directory())))
    for (const std::string& path : tool.paths) {
      const ToolAnswer help = run(host, path + " --help");
      EXPECT_NE(help.output.find("\n  " + HostTools::lastComponent(path) + " "), std::string::npos);
      EXPECT_LE(help.output.size(), 4096U) << path;
    }
}

/// Calls in their order, and what each leaves at a place of host.json.
const std::array<std::string, 3> kChanges[] = {
    {kHmx + "hmxsvc/auth/lockdown_mode_enter", "/lockdown/enabled", "true"},
    {kHmx + "hmxsvc/auth/lockdown_mode_exit", "/lockdown/enabled", "false"},
    {kHmx + "hostsvc/start_halo_shell", "/services/HaloShell/running", "true"},
    {kHmx + "hostsvc/enable_halo_shell", "/services/HaloShell/enabled", "true"},
    {kHmx + "hostsvc/stop_halo_shell", "/services/HaloShell/running", "false"},
    {kHmx + "hostsvc/disable_halo_shell", "/services/HaloShell/enabled", "false"},
    {kHmx + "hostsvc/start_ssh", "/services/SSH/running", "true"},
    {kHmx + "hostsvc/start_ssh", "/firewallRulesets/0/enabled", "true"},
    {kHmx + "hostsvc/enable_ssh", "/services/SSH/enabled", "true"},
    {"/bin/sh /etc/init.d/SSH stop", "/services/SSH/running", "false"},
    {kHmx + "hostsvc/stop_ssh", "/firewallRulesets/0/enabled", "false"},
    {kHmx + "hostsvc/disable_ssh", "/services/SSH/enabled", "false"},
    {"/bin/sh /etc/init.d/HaloShell restart", "/services/HaloShell/running", "true"},
    {kShell + "/bin/sh /sbin/services.sh stop%", "/services/mgmtd/running", "false"},
    {kShell + "/bin/sh /sbin/services.sh start%", "/services/evbd/running", "true"},
    {"/sbin/services.sh restart", "/services/mgmtd/running", "true"},
    {"/sbin/localcli system settings advanced set -i 1 -o PXEBootEnabled",
     "/options/PXEBootEnabled", "1"},
    {kSwitch + "add -v vSwitch2", "/network/switches/2/name", "\"vSwitch2\""},
    {kSwitch + "uplink remove -u pnic2 -v vSwitch1", "/network/switches/1/uplinks", "[]"},
    {kSwitch + "uplink add -v vSwitch2 -u pnic2", "/network/switches/2/uplinks", "[\"pnic2\"]"},
    {kSwitch + "portgroup add -p %Lab net% -v vSwitch2", "/network/switches/2/portGroups",
     R"([{"name": "Lab net", "vlanId": 0}])"},
    {kShell + "/etc/init.d/ovl-opsagent start%", "/services/ovl-opsagent/running", "true"},
    {kSwitch + "portgroup set -p %Lab net% -v vSwitch2 -i 4095",
     "/network/switches/2/portGroups/0/vlanId", "4095"},
    {kOvl + "-m -p tarn0 -I vSwitch2", "/network/kernelNics/0/connection/portGroup", "\"Lab net\""},
    {kSwitch + "portgroup remove -p Backup -v vSwitch1", "/network/switches/1/portGroups",
     R"([{"name": "Storage", "vlanId": 110}])"},
    {kSwitch + "remove -v vSwitch1", "/network/switches/1/name", "\"vSwitch2\""},
    {"/bin/halocli network restore", "/network/kernelNics/0/connection/switch", "\"vSwitch0\""},
    {kShell + "/etc/init.d/ovl-opsagent stop%", "/services/ovl-opsagent/running", "false"},
    {kHmx + "hostsvc/autostartmanager/autostop", "/machines/1/running", "false"},
    {"/bin/powerOffVms", "/machines/2/running", "false"},
    {"/sbin/powerOffVms --terminate", "/machines/0/running", "false"},
    {kShell + "poweroff%", "/power", "\"off\""},
    {kShell + "reboot -f%", "/power", "\"restarting\""},
};

TEST(SampleTools, ChangeTheHost) {
  DemoHost host;
  for (const auto& [call, pointer, value] : kChanges) {
    const ToolAnswer answer = run(host, call);
    EXPECT_EQ(answer.status, 0) << call << "\n" << answer.output << answer.error;
    const Json now = host.State().at(Json::json_pointer(pointer));
    EXPECT_EQ(now, Json::parse(value)) << call;
  }
  EXPECT_EQ(host.Journal(), std::vector<std::string>{});
}

TEST(SampleTools, ChangeNothingForThoseWhoMayNot) {
  DemoHost host;
  host.Set("/services/ovl-opsagent/running", true);
  const std::string before = host.Text();
  std::vector<std::string> calls = {kCore + "-o a -d /var/log", "/sbin/backup.sh 0",
                                    "/sbin/firmwareConfig.py --reset-only"};
  for (const auto& change : kChanges) calls.push_back(change[0]);
  for (const std::string& call : calls) {
    const ToolAnswer answer = run<PowerlessHost>(host, call);
    EXPECT_EQ(answer.status, 1) << call;
    EXPECT_NE((answer.output + answer.error).find(": only root may change this host\n"),
              std::string::npos)
        << call;
  }
  EXPECT_EQ(host.Text(), before);
  EXPECT_FALSE(std::filesystem::exists(host.Directory() / "backup"));
}

TEST(SampleTools, RefuseWhatTheHostDoesNotAllow) {
  DemoHost host;
  host.Set("/lockdown/possible", false);
  host.Set("/services", Json::object());
  expectAnswers(
      host, "",
      {{kHmx + "hmxsvc/auth/lockdown_mode_enter",
        refuses("hmx-cmd: This host cannot be locked down.")},
       {kHmx + "hostsvc/start_ssh", refuses("hmx-cmd: There is no service SSH.")},
       {"/etc/init.d/SSH restart", refuses("SSH is not installed", 5)},
       {"/sbin/services.sh status", {}},
       {kCore + "-o a -d /var/log", refuses("tarnbacktrace: There is no running process mgmtd.")}});
}

TEST(SampleTools, TheShellRunsPlainLinesOnly) {
  DemoHost host;
  const std::string silent = " > /dev/null 2>&1%";
  const auto unknown = [](const std::string& line) -> Call {
    return {line + "%", refuses("sh: " + line + ": not found", 127)};
  };
  expectAnswers(
      host, kShell,
      {{kCore + "-o mgmtd-restart\\% -d /var/log/%", says("/var/log/mgmtd-restart%.core")},
       {"/etc/init.d/ovl-opsagent status%", ToolAnswer{3, "ovl-opsagent is not running\n", ""}},
       {"/bin/sh /etc/init.d/SSH status" + silent, {3, "", ""}},
       {"/no/such" + silent, {127, "", ""}},
       unknown("/etc/init.d/SSH status; reboot"),
       unknown("/sbin/backup.sh 0 > /etc/passwd"),
       {"halocli system%", ToolAnswer{1, "halocli: not a whole command: --help shows them\n", ""}},
       {"halt%", refuses("/sbin/halt: no such tool", 127)},
       {" %", refuses("sh: : not found", 127)}});
  expectAnswers(host, "/bin/sh ",
                {{"", refuses("sh: missing argument -c", 127)},
                 {"/etc/init.d/SSH status now", refuses("sh: unknown argument now", 127)}});
  const std::pair<Json, int> versions[] = {{"3.2.1", 0}, {"2.9", 1}, {Json(), 1}};
  for (const auto& [version, status] : versions) {
    host.Change({{"packages", {{"ovl-opsagent", version}}}});
    EXPECT_EQ(run(host, kAskVersion).status, status) << version;
  }
}

TEST(SampleTools, SaveAndResetTheConfiguration) {
  DemoHost host;
  const Json delivered = host.State();
  host.Change({{"bootOption", 7}, {"faults", {{"GetHostname", "no"}}}});
  const std::string changed = host.Text();
  for (int i = 1; i <= 11; ++i)
    EXPECT_EQ(run(host, "/sbin/backup.sh 0"), says("saved host-" + std::to_string(i) + ".json"));
  EXPECT_EQ(run(host, kShell + "/sbin/firmwareConfig.py --reset-only > /dev/null 2>&1%"),
            ToolAnswer{});
  Json expected = delivered;
  expected["faults"]["GetHostname"] = "no";
  EXPECT_EQ(host.State(), expected) << "all but what is rehearsed";
  std::set<std::string> kept;
  for (const auto& copy : std::filesystem::directory_iterator(host.Directory() / "backup")) {
    kept.insert(copy.path().filename());
    EXPECT_EQ(HostSample::readFile(copy.path()), changed);
  }
  EXPECT_EQ(kept.size(), 10U);
  EXPECT_EQ(kept.count("host-2.json"), 0U);
}

TEST(ToolProgram, EndsWhenItsTimeIsOver) {
  EXPECT_EXIT((HostTools::boundTime("slow", 1), pause()), testing::ExitedWithCode(124),
              "^slow: gave up after 1 seconds\n$");
}

}  // namespace
