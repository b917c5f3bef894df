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

}  // namespace HostLinux
