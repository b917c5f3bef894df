// SPDX-License-Identifier: MIT
#include "linux/platform.h"

#include <netdb.h>
#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <cerrno>

namespace HostLinux {

namespace {

constexpr const char* kLogSocket = "/dev/log";

std::string quoted(const std::string& value) {
  std::string text = "\"";
  for (const char c : value) {
    if (c == '"' || c == '\\') text += '\\';
    const auto byte = static_cast<unsigned char>(c);
    text += byte < 0x20 || byte == 0x7f ? '?' : c;
  }
  return text + '"';
}

}  // namespace

bool LinuxPlatform::ResolveName(const std::string& name) {
  addrinfo hints{};
  hints.ai_flags = AI_CANONNAME | AI_ADDRCONFIG;
  hints.ai_family = AF_UNSPEC;
  addrinfo* found = nullptr;
  if (getaddrinfo(name.c_str(), nullptr, &hints, &found) != 0) return false;
  const bool any = found != nullptr;
  freeaddrinfo(found);
  return any;
}

void LinuxPlatform::OpenLog() {
  openlog("KIVA", LOG_PID, LOG_USER);
  setlogmask(LOG_UPTO(LOG_INFO));
}

void LinuxPlatform::Log(int priority, const std::string& line) {
  syslog(priority, "%s", line.c_str());
}

int LinuxPlatform::EventInit() {
  return access(kLogSocket, W_OK) == 0 ? 0 : errno;
}

int LinuxPlatform::EventAdd(const std::string& text) {
  syslog(LOG_USER | LOG_NOTICE, "%s", text.c_str());
  return 0;
}

void LinuxPlatform::Audit(const HostCtl::Lib::AuditRecord& record) {
  syslog(LOG_AUTHPRIV | LOG_NOTICE, "%s", auditLine(record).c_str());
}

std::string auditLine(const HostCtl::Lib::AuditRecord& record) {
  std::string line = "audit " + record.event + " user=" + quoted(record.user) +
                     " outcome=" + (record.success ? "1" : "0");
  for (const auto& [name, value] : record.pairs) line += " " + name + "=" + quoted(value);
  return line;
}

}  // namespace HostLinux
