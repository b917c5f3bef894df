// SPDX-License-Identifier: MIT
#include "linux/kernel_socket.h"

#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>
#include <cstring>

#include "hostctl/lib/exception.h"

namespace HostLinux {

namespace {

constexpr timeval kAnswerWithin{0, 250'000};

}  // namespace

KernelSocket openKernelSocket(const std::string& operation) {
  KernelSocket socket(mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC));
  if (!socket || mnl_socket_bind(socket.get(), 0, MNL_SOCKET_AUTOPID) < 0 ||
      setsockopt(mnl_socket_get_fd(socket.get()), SOL_SOCKET, SO_RCVTIMEO, &kAnswerWithin,
                 sizeof kAnswerWithin) < 0)
    throw HostCtl::Lib::HostCtlException(operation, "kernel network tables", std::strerror(errno));
  return socket;
}

}  // namespace HostLinux
