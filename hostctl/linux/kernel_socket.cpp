// SPDX-License-Identifier: MIT
#include "linux/kernel_socket.h"

#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "hostctl/lib/exception.h"

namespace HostLinux {

namespace {

constexpr timeval kAnswerWithin{0, 250'000};

int receiveDump(mnl_socket* socket, unsigned sequence, mnl_cb_t take, void* into) {
  alignas(nlmsghdr) std::array<char, 32768> buffer;
  int state = MNL_CB_OK;
  while (state > MNL_CB_STOP) {
    const auto size = mnl_socket_recvfrom(socket, buffer.data(), buffer.size());
    if (size < 0) return -1;
    state = mnl_cb_run(buffer.data(), static_cast<std::size_t>(size), sequence,
                       mnl_socket_get_portid(socket), take, into);
  }
  return state;
}

}  // namespace

KernelSocket openKernelSocket(const std::string& operation) {
  KernelSocket socket(mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC));
  if (!socket || mnl_socket_bind(socket.get(), 0, MNL_SOCKET_AUTOPID) < 0 ||
      setsockopt(mnl_socket_get_fd(socket.get()), SOL_SOCKET, SO_RCVTIMEO, &kAnswerWithin,
                 sizeof kAnswerWithin) < 0)
    throw HostCtl::Lib::HostCtlException(operation, "kernel network tables", std::strerror(errno));
  return socket;
}

int requestDump(mnl_socket* socket, int type, unsigned sequence, mnl_cb_t take, void* into) {
  alignas(nlmsghdr) std::array<char, 128> buffer{};
  nlmsghdr* request = mnl_nlmsg_put_header(buffer.data());
  request->nlmsg_type = static_cast<std::uint16_t>(type);
  request->nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
  request->nlmsg_seq = sequence;
  mnl_nlmsg_put_extra_header(request, sizeof(ifinfomsg));
  if (mnl_socket_sendto(socket, request, request->nlmsg_len) < 0) return -1;
  return receiveDump(socket, sequence, take, into);
}

int requestChange(const std::string& operation, const nlmsghdr* request) {
  const KernelSocket socket = openKernelSocket(operation);
  alignas(nlmsghdr) std::array<char, 8192> answer;
  if (mnl_socket_sendto(socket.get(), request, request->nlmsg_len) < 0) return errno;
  const auto size = mnl_socket_recvfrom(socket.get(), answer.data(), answer.size());
  const bool done =
      size >= 0 && mnl_cb_run(answer.data(), static_cast<std::size_t>(size), 0,
                              mnl_socket_get_portid(socket.get()), nullptr, nullptr) >= 0;
  return done ? 0 : errno;
}

}  // namespace HostLinux
