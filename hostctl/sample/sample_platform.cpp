// SPDX-License-Identifier: MIT
#include "sample/sample_platform.h"

#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <system_error>

#include "hostctl/network/hosts_file.h"
#include "sample/file_tools.h"
#include "sample/journal_line.h"

namespace HostSample {

using HostCtl::Lib::Program;

namespace {

bool isInHostsFile(const std::string& file, const std::string& name) try {
  const std::string text = readFile(file);
  return HostCtl::Network::withoutHostName(text, name) != text;
} catch (const std::system_error&) {
  return false;
}

}  // namespace

SamplePlatform::SamplePlatform(std::filesystem::path directory)
    : directory_(std::move(directory)),
      store_(directory_ / "host.json"),
      journal_(directory_ / "journal") {}

std::string SamplePlatform::HostPath(std::string_view path) const {
  return (directory_ / "root").string().append(path);
}

bool SamplePlatform::ResolveName(const std::string& name) {
  journal_.Append("resolve", name);
  sleep(static_cast<unsigned>(store_.GetLastGood(&HostState::resolutionSeconds)));
  if (isInHostsFile(HostPath("/etc/hosts"), name)) return true;
  const auto resolvable = store_.GetLastGood(&HostState::resolvable);
  return std::find(resolvable.begin(), resolvable.end(), name) != resolvable.end();
}

Program SamplePlatform::ChildProgram(const Program& program) {
  journal_.Append("run", runText(program));
  const std::string name = "kiva-demo-tools";
  const auto tools = store_.GetLastGood(&HostState::tools);
  const auto rehearsal = tools.find(program.path);
  if (rehearsal != tools.end() && rehearsal->second.missing)
    return {directory_ / "missing", program.arguments};
  Program child{programFolder() / name,
                {name, "--host", directory_, "--console", std::to_string(getpid()), program.path}};
  for (std::size_t i = 1; i < program.arguments.size(); ++i)
    child.arguments.push_back(program.arguments[i]);
  return child;
}

Program SamplePlatform::TerminalProgram(const Program& program) {
  journal_.Append("run", runText(program));
  return program;
}

void SamplePlatform::Log(int priority, const std::string& line) {
  if (LOG_PRI(priority) <= LOG_INFO) journal_.Append(logKind(priority), line);
}

int SamplePlatform::EventAdd(const std::string& text) {
  journal_.Append("event", text);
  return 0;
}

void SamplePlatform::Audit(const HostCtl::Lib::AuditRecord& record) {
  journal_.Append("audit", auditText(record));
}

std::optional<std::string> SamplePlatform::PamServiceDirectory() const {
  return directory_ / "pam.d";
}

}  // namespace HostSample
