// SPDX-License-Identifier: MIT
#include "harness/vm/line_socket.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <system_error>

namespace Harness {

LineSocket::LineSocket(const std::filesystem::path& path)
    : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.string().copy(address.sun_path, sizeof address.sun_path - 1);
  if (connect(socket_.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
    throw std::system_error(errno, std::generic_category(), path.string());
}

void LineSocket::Send(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t sent = send(socket_.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0) throw std::system_error(errno, std::generic_category(), "a machine's socket");
    bytes.remove_prefix(sent);
  }
}

std::optional<std::string> LineSocket::TakeLine() {
  const std::size_t end = read_.find('\n');
  if (end == std::string::npos) return std::nullopt;
  std::string line = read_.substr(0, end);
  read_.erase(0, end + 1);
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::optional<std::string> LineSocket::ReadLine(Milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (true) {
    if (auto line = TakeLine()) return line;
    const auto left = duration_cast<Milliseconds>(end - std::chrono::steady_clock::now());
    pollfd waiting{socket_.Get(), POLLIN, 0};
    if (left.count() <= 0 || poll(&waiting, 1, static_cast<int>(left.count())) <= 0) return {};
    char buffer[4096];
    const ssize_t size = recv(socket_.Get(), buffer, sizeof buffer, 0);
    if (size <= 0) return {};
    read_.append(buffer, size);
  }
}

}  // namespace Harness
