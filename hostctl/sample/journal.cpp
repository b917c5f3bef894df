// SPDX-License-Identifier: MIT
#include "sample/journal.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "sample/file_tools.h"
#include "sample/journal_line.h"

namespace HostSample {

using HostCtl::Lib::Descriptor;

namespace {

Descriptor openForAppending(const std::filesystem::path& file) {
  return Descriptor(open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644));
}

}  // namespace

Journal::Journal(std::filesystem::path file) : file_(std::move(file)) {
  if (!openForAppending(file_))
    throw std::system_error(errno, std::generic_category(), file_.string());
}

void Journal::Append(std::string_view kind, std::string_view text) const {
  const std::string line = journalLine(kind, text);
  const Descriptor file = openForAppending(file_);
  static_cast<void>(!write(file.Get(), line.data(), line.size()));
}

}  // namespace HostSample
