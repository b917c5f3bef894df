// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "linux/card_user.h"
#include "linux/network_file.h"
#include "linux/os_version.h"
#include "linux/platform.h"
#include "linux/processors.h"
#include "linux/resolver.h"
#include "linux/settings.h"

using namespace HostLinux;

namespace {

using HostCtl::Adv::OptionValue;

TEST(LinuxVersion, FromOsReleaseAndKernel) {
  using Text = const char*;
  const std::tuple<Text, Text, Text, Text, unsigned> cases[] = {
      {"NAME=\"Debian GNU/Linux\"\nVERSION_ID='12'\nID=debian\n", "#17 SMP PREEMPT_DYNAMIC",
       "Debian GNU/Linux", "12", 17},
      {"# NAME=no\nNAME=Corvo\nVERSION=7.0 U1\nBUILD_ID=1234", "#17 SMP", "Corvo", "7.0 U1", 1234},
      {"PRETTY_NAME=\"A \\\"b\\\" c\"\nBUILD_ID=rolling", "#3-Ubuntu SMP", "A \"b\" c", "6.1.0", 3},
      {"", "no number", "Linux", "6.1.0", 0},
      {"BUILD_ID=99999999999999999999\nNAME=\"open", "#4294967296", "open", "6.1.0", 0}};
  for (const auto& [osRelease, kernelVersion, product, version, build] : cases) {
    SCOPED_TRACE(osRelease);
    const auto record = versionFrom(osRelease, "6.1.0", kernelVersion);
    EXPECT_EQ(record.productName, product);
    EXPECT_EQ(record.version, version);
    EXPECT_EQ(record.buildNumber, build);
  }
}

TEST(LinuxProcessors, EveryKindOfCpuinfo) {
  const std::tuple<const char*, const char*, int> cases[] = {
      {"processor\t: 0\nmodel name\t: AMD EPYC  7543\nphysical id\t: 0\n\nprocessor\t: 1\n"
       "model name\t: AMD EPYC  7543\nphysical id\t: 1\n\nprocessor\t: 2\nphysical id\t: 1\n",
       "AMD EPYC  7543", 2},
      {"processor\t: 0\nBogoMIPS\t: 50.00\nCPU implementer\t: 0x41\nCPU part\t: 0xd0c\n",
       "ARM processor 0x41:0xd0c", 1},
      {"processor\t: 0\nmodel name\t: ARMv7 rev 4\nHardware\t: BCM2835\nModel\t: A Pi\n",
       "ARMv7 rev 4", 1},
      {"processor\t: 0\nmodel\t: 2.3\nmodel name\t:\ncpu\t\t: POWER9\n", "POWER9", 1},
      {"", "", 1}};
  for (const auto& [text, model, packages] : cases) {
    const auto record = processorsFrom(text);
    EXPECT_EQ(record.modelName, model);
    EXPECT_EQ(record.packages, packages) << model;
  }
  EXPECT_EQ(memoryFrom("MemFree: 8 kB\nMemTotal:   24684096 kB\n", 4096).totalPages, 6171024u);
  EXPECT_EQ(memoryFrom("MemTotal: -5 kB\n", 4096).totalPages, 0u);
}

TEST(LinuxResolver, FileAndHostName) {
  const auto resolver = parseResolverFile(
      "# nameserver 9.9.9.9\ndomain old.example\nsearch one.example . two.example ; three\n"
      " nameserver 10.0.0.1\nnameserver fe80::1%eth0\nnameserver nonsense\nnameserver\n");
  ASSERT_EQ(resolver.nameServers.size(), 2u);
  EXPECT_EQ(toString(resolver.nameServers[0]), "10.0.0.1");
  EXPECT_EQ(toString(resolver.nameServers[1]), "fe80::1%eth0");
  EXPECT_EQ(resolver.search, (std::vector<std::string>{"one.example", "two.example"}));
  EXPECT_EQ(parseResolverFile("search a b\ndomain c d\n").search, std::vector<std::string>{"c"});

  const auto name = [&](const char* hostname, const ResolverFile& file) {
    const auto record = dnsFrom(hostname, file);
    return record.hostname + "|" + record.domain;
  };
  EXPECT_EQ(name("node7.lab.example", resolver), "node7|lab.example");
  EXPECT_EQ(name("", resolver), "|one.example");
  EXPECT_EQ(name("node7", {}), "node7|");
}

TEST(LinuxNetworkFile, AsksForDhcpv4) {
  for (const char* text : {"[Network]\nDHCP=yes", "[Match]\nName=e*\n[Network]\n DHCP = IPv4 \n",
                           "[Network]\nDHCP=no\nDHCP=true\n", "[Network]\nDHCP=both\n"})
    EXPECT_TRUE(asksForDhcpv4(text)) << text;
  for (const char* text : {"", "DHCP=yes", "[Match]\nDHCP=yes\n[Network]\n", "[Network]\n#DHCP=yes",
                           "[Network]\nDHCP=ipv6", "[Network]\nDHCP=yes\nDHCP=\n",
                           "[Network]\nDHCPServer=yes\n", "[Network]\n[DHCP]\nDHCP=yes\n"})
    EXPECT_FALSE(asksForDhcpv4(text)) << text;
}

TEST(LinuxOptions, ValuesAndPaths) {
  const std::pair<const char*, OptionValue> cases[] = {
      {"600\n", std::int64_t{600}}, {" -1 ", std::int64_t{-1}},
      {"\"600\"\n", "600"},         {"\" a \"", " a "},
      {"10 min\n", "10 min"},       {"9999999999999999999", "9999999999999999999"}};
  for (const auto& [text, value] : cases) EXPECT_EQ(parseOption(text), value) << text;

  EXPECT_EQ(optionFile("/UserVars/KivaTimeOut"), "/etc/corvo/options/UserVars/KivaTimeOut");
  EXPECT_EQ(optionFile("PXEBootEnabled"), "/etc/corvo/options/PXEBootEnabled");
  for (const char* path : {"", "/", "//a", "/a//b", "/a/", "/..", "/../shadow", "/a/../../b", "/.a",
                           "/a b", "/a\nb", "/\xc3\xa4"})
    EXPECT_EQ(optionFile(path), std::nullopt) << path;
}

TEST(LinuxPlatformText, AuditValuesCannotForgePairsOrLines) {
  EXPECT_EQ(auditLine({"login", "a\" outcome=1\n\\", false, {{"reason", "b \""}}}),
            "audit login user=\"a\\\" outcome=1?\\\\\" outcome=0 reason=\"b \\\"\"");
}

std::string der(int tag, const std::string& content) {
  std::string length(1, static_cast<char>(content.size()));
  if (content.size() > 127) length.insert(0, 1, '\x81');
  return std::string(1, static_cast<char>(tag)) + length + content;
}

std::string name(const std::string& identifier, const std::string& text) {
  return der(0x30, der(0x31, der(0x30, der(0x06, identifier) + der(0x0c, text))));
}

TEST(LinuxCardUser, FromCertificate) {
  const std::string commonName = "\x55\x04\x03", organisation = "\x55\x04\x0a";
  const std::string alternative = der(0x06, "\x55\x1d\x11");
  const std::string principal = "\x2b\x06\x01\x04\x01\x82\x37\x14\x02\x03";
  const std::string upn =
      der(0xa0, der(0x06, principal) + der(0xa0, der(0x0c, "carol@corp.example")));
  const std::string mail = der(0x81, "bob@example.org");
  const auto certificate = [&](const std::string& names) {
    const std::string issuer = name(commonName, "Some Authority");
    const std::string serial = der(0x81, "no@mail.example");
    return der(0x30, serial + issuer + der(0x30, alternative + der(0x04, der(0x30, names))));
  };
  const std::string bare = name(organisation, "Corvo");

  EXPECT_EQ(cardUser(name(commonName, "alice"), certificate(mail)), "alice");
  EXPECT_EQ(cardUser(bare, certificate(mail)), "bob");
  EXPECT_EQ(cardUser(bare, certificate(mail + upn)), "carol");
  EXPECT_EQ(cardUser(bare, certificate("")), "");

  const std::string whole = certificate(mail + upn);
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_EQ(cardUser(whole.substr(length), whole.substr(0, length)).find('@'), std::string::npos);
  std::string deep;
  for (int i = 0; i < 40; ++i) deep = der(0x30, deep);
  EXPECT_EQ(cardUser(deep, std::string("\x30\x84\xff\xff\xff\xff", 6)), "");
}

}  // namespace
