// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "hostctl/lib/platform.h"
#include "sample/journal.h"
#include "sample/store.h"

namespace HostSample {

/// What leaves the program on the sample host kept in one directory: files lie below its `root`,
/// children are the sample's own tools, and the rest are lines of its journal.
class SamplePlatform : public HostCtl::Lib::Platform {
 public:
  /// `directory` is absolute. Throws SampleHostError or std::system_error when it cannot serve.
  explicit SamplePlatform(std::filesystem::path directory);

  Store& GetStore() { return store_; }
  const Journal& GetJournal() const { return journal_; }

  std::string HostPath(std::string_view path) const override;
  bool ResolveName(const std::string& name) override;
  HostCtl::Lib::Program ChildProgram(const HostCtl::Lib::Program& program) override;
  HostCtl::Lib::Program TerminalProgram(const HostCtl::Lib::Program& program) override;
  void OpenLog() override {}
  void Log(int priority, const std::string& line) override;
  int EventInit() override { return store_.GetLastGood(&HostState::eventLibraryStatus); }
  int EventAdd(const std::string& text) override;
  void EventClose() override {}
  void Audit(const HostCtl::Lib::AuditRecord& record) override;
  std::optional<std::string> PamServiceDirectory() const override;

 private:
  std::filesystem::path directory_;
  Store store_;
  Journal journal_;
};

}  // namespace HostSample
