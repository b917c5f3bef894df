// SPDX-License-Identifier: MIT
#include "sample/sample_host.h"

#include <memory>
#include <system_error>

#include "sample/changes.h"
#include "sample/journal_line.h"
#include "sample/pam_service.h"
#include "sample/sample_driver.h"
#include "sample/sample_platform.h"

namespace HostSample {

namespace {

void install(std::unique_ptr<SamplePlatform> platform) {
  auto driver = std::make_unique<SampleDriver>(platform->GetStore(), platform->GetJournal());
  HostSeam::useHost(std::move(platform), std::move(driver));
}

}  // namespace

void useSampleHost(const std::filesystem::path& directory) try {
  const std::filesystem::path home = std::filesystem::absolute(directory);
  auto platform = std::make_unique<SamplePlatform>(home);
  for (const char* folder : {"root/var/run/corvo", "root/var/log"})
    std::filesystem::create_directories(home / folder);
  ensurePamService(home / "pam.d", platform->GetStore().File());
  startHost(platform->GetStore());
  install(std::move(platform));
} catch (const std::system_error& error) {
  throw SampleHostError(oneLine(error.what()));
}

void openSampleHost(const std::filesystem::path& directory) try {
  install(std::make_unique<SamplePlatform>(std::filesystem::absolute(directory)));
} catch (const std::system_error& error) {
  throw SampleHostError(oneLine(error.what()));
}

}  // namespace HostSample
