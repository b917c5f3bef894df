// SPDX-License-Identifier: MIT
#pragma once

#include <libmnl/libmnl.h>

#include <memory>
#include <string>

namespace HostLinux {

struct CloseKernelSocket {
  void operator()(mnl_socket* socket) const { mnl_socket_close(socket); }
};

/// A connection with the kernel's routing tables.
using KernelSocket = std::unique_ptr<mnl_socket, CloseKernelSocket>;

/// An answer that does not come within 250 ms is the error EAGAIN. Throws HostCtlException of
/// `operation`.
KernelSocket openKernelSocket(const std::string& operation);

/// Has the kernel tell a whole table (RTM_GETLINK and its kind), a message at a time to `take` with
/// `into`. Negative, with the reason in errno, where it does not: EINTR for a table that changed
/// meanwhile, and then the rest is still on its way.
int requestDump(mnl_socket* socket, int type, unsigned sequence, mnl_cb_t take, void* into);

/// Asks the kernel for a change: 0, or the number of the error. `request` wants an acknowledgement.
int requestChange(const std::string& operation, const nlmsghdr* request);

}  // namespace HostLinux
