// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>

#include "harness/hosts/machine.h"
#include "hostctl/lib/descriptor.h"
#include "linux/platform.h"

using namespace HostLinux;
using HostCtl::Lib::Descriptor;

namespace {

Descriptor listenForLog() {
  Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  sockaddr_un name{AF_UNIX, "/dev/log"};
  EXPECT_EQ(bind(socket.Get(), reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
  return socket;
}

// "<11> KIVA[12]: text" of "<11>Nov 21 10:51:00 KIVA[12]: text"; empty when no line has come.
std::string nextLine(const Descriptor& socket) {
  char buffer[512];
  const ssize_t size = recv(socket.Get(), buffer, sizeof buffer, 0);
  std::string line(buffer, size > 0 ? static_cast<std::size_t>(size) : 0);
  const auto priority = line.find('>');
  if (priority != std::string::npos) line.erase(priority + 1, sizeof "Nov 21 10:51:00" - 1);
  return line;
}

TEST(LinuxLog, IdentityMaskEventsAndAudit) {
  inNamespaces([] {
    ASSERT_EQ(mount("none", "/dev", "tmpfs", 0, nullptr), 0);
    LinuxPlatform platform;
    EXPECT_EQ(platform.EventInit(), ENOENT);
    const Descriptor log = listenForLog();
    EXPECT_EQ(platform.EventInit(), 0);

    platform.Log(LOG_ERR, "too early");
    const std::string early = nextLine(log);
    EXPECT_TRUE(early.starts_with("<11> ")) << early;
    EXPECT_EQ(early.find("KIVA"), std::string::npos);

    platform.OpenLog();
    const std::string identity = " KIVA[" + std::to_string(getpid()) + "]: ";
    platform.Log(LOG_DEBUG, "dropped");
    platform.Log(LOG_INFO, "100 %s");
    EXPECT_EQ(nextLine(log), "<14>" + identity + "100 %s");
    platform.Log(32, "authentication");
    EXPECT_EQ(nextLine(log), "<32>" + identity + "authentication");
    EXPECT_EQ(platform.EventAdd("@&!*@*@(id)text"), 0);
    EXPECT_EQ(nextLine(log), "<13>" + identity + "@&!*@*@(id)text");
    platform.Audit({"login", "root", true, {}});
    EXPECT_EQ(nextLine(log), "<85>" + identity + "audit login user=\"root\" outcome=1");
    EXPECT_EQ(nextLine(log), "");
  });
}

}  // namespace
