// SPDX-License-Identifier: MIT
#include "console/host_facts.h"

#include <array>

#include "harness/hosts/recording_platform.h"
#include "ui/keyword_table.h"

namespace {

using HostCtl::Network::Ipv4Address;
using Lines = std::vector<std::string>;

constexpr const char* kKeygen = "/usr/lib/corvo/openssh/bin/ssh-keygen";

class HostFactsTest : public TestSupport::OnRecordingHost {
 protected:
  HostFactsTest() {
    Kiva::registerHostFacts();
    driver->version = {"Corvo Halo", "7.0", "", 1234};
    driver->hardware = {"Vendor", "Product", "SN 1",
                        "TAG",    "3.1",     {"Vendor", "2.10", "01/02/2023", "ASSET", 2, 10}};
    driver->memory = {4 * 1024 * 1024 + 1, 4096};
    driver->adapters = {{"phba1", "other"}, {"phba0", "plsa"}};
    driver->moduleVersions = {{"other", "9"}, {"plsa", "1.2.3"}};
    driver->dns = {"host1", "example.org", {}, {}};
    HostSeam::KernelNic nic;
    nic.name = "tarn0";
    nic.setUpByKiva = true;
    nic.configured.SetIpv4Address(Ipv4Address(0x0a000001));
    nic.running.SetIpv4Address(Ipv4Address(0xc0a80105));
    driver->nics = {nic};
    platform->scripts = {{"/bin/openssl",
                          "case $6 in -sha1) echo sha1 Fingerprint=A:1;; *) echo sha256 "
                          "Fingerprint=B:2; esac"},
                         {kKeygen, "echo 3072 SHA256:$3 none"}};
  }
  std::string Value(const std::string& keyword) {
    const auto* value = Kiva::keywordTable().Find(keyword);
    return value ? (*value)() : "no such keyword";
  }
};

TEST_F(HostFactsTest, EveryKeyword) {
  // The second value is that of a host which has none of all this.
  const std::array<const char*, 3> cases[] = {
      {"ip", "192.168.1.5", "0.0.0.0"},
      {"hostname", "host1.example.org", "host1."},
      {"haloproduct", "Corvo Halo", "Corvo Halo"},
      {"haloversion", "7.0 build-01234", "7.0 build-1234567"},
      {"ssl-thumbprint", "A:1", ""},
      {"ssl-thumbprint-256", "B:2", ""},
      {"ssh-dsa-fingerprint", "SHA256:/etc/ssh/ssh_host_dsa_key", ""},
      {"ssh-rsa-fingerprint", "SHA256:/etc/ssh/ssh_host_rsa_key", ""},
      {"serial-number", "SN 1", ""},
      {"memory", "16.2 GB", "0 MB"},
      {"servicetag", "TAG", "N/A"},
      {"assettag", "ASSET", "N/A"},
      {"BIOSversion", "2.10 (2.10) 01/02/2023", "N/A"},
      {"BMCversion", "3.1", "N/A"},
      {"PLSAversion", "1.2.3", "N/A"},
      {"CPLDversion", "N/A", "N/A"},
      {"supportstart", "N/A", "N/A"},
      {"supportperiod", "N/A", "N/A"}};
  for (const auto& [keyword, value, none] : cases) EXPECT_EQ(Value(keyword), value) << keyword;
  const std::string digest =
      "run /bin/openssl openssl x509 -in /etc/corvo/ssl/rui.crt -noout -fingerprint ";
  const std::string key = std::string("run ") + kKeygen + " ssh-keygen -l -f /etc/ssh/ssh_host_";
  EXPECT_EQ(platform->Lines(),
            (Lines{digest + "-sha1", digest + "-sha256", key + "dsa_key", key + "rsa_key"}));
  driver->dns.domain.clear();
  driver->hardware = {};
  driver->memory = {};
  driver->adapters.pop_back();
  driver->nics.clear();
  driver->version.buildNumber = 1234567;
  platform->scripts = {{"/bin/openssl", "echo SHA1 Fingerprint=A:1; exit 1"},
                       {kKeygen, "echo 1 2 3; printf 'no such key' >&2; exit 255"}};
  platform->Clear();
  for (const auto& [keyword, value, none] : cases) EXPECT_EQ(Value(keyword), none) << keyword;
  EXPECT_EQ(platform->Lines().back(), "log.6 Error generating SSH Key Fingerprint: no such key");
}

TEST_F(HostFactsTest, HostThatFails) {
  const std::string failed = " version string failed, err=out of order";
  const std::tuple<const char*, const char*, const char*, Lines> cases[] = {
      {"UpdateManagementInterface", "ip", "0.0.0.0", {}},
      {"GetIpConfig", "ip", "0.0.0.0", {}},
      {"GetVersion", "haloproduct", "", {}},
      {"GetServiceTag", "servicetag", "N/A", {}},
      {"GetBiosData", "assettag", "N/A", {"log.3 Get asset tag" + failed}},
      {"GetHost", "BIOSversion", "N/A", {"log.3 Get BIOS" + failed}},
      {"GetBmcVersion", "BMCversion", "N/A", {"log.3 Get BMC" + failed}},
      {"GetModuleVersion", "PLSAversion", "N/A", {"log.3 Get PLSA" + failed}}};
  for (const auto& [operation, keyword, value, lines] : cases) {
    platform->Clear();
    driver->failing = operation;
    EXPECT_EQ(Value(keyword), value) << operation << " " << keyword;
    EXPECT_EQ(platform->Lines(), lines) << operation << " " << keyword;
  }
}

}  // namespace
