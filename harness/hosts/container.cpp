// SPDX-License-Identifier: MIT
#include "harness/hosts/container.h"

#include <unistd.h>

#include <stdexcept>

#include "linux/files.h"

namespace HostLinux {

namespace {

const std::string kScripts = KIVA_SOURCE_DIR "/harness/hosts/";
const std::string kBuild = KIVA_BUILD_DIR;

/// With what programs need that are built with sanitizers.
constexpr const char* kPackages =
    "systemd systemd-sysv dbus libpam-systemd libmnl0 libasan8 libubsan1 ";

std::string lastLine(std::string text) {
  while (text.ends_with('\n')) text.pop_back();
  return text.substr(text.rfind('\n') + 1);
}

std::string findObstacle() {
  if (geteuid() != 0) return "a container needs root";
  if (!installed("systemd-nspawn mmdebstrap"))
    return "no systemd-nspawn or mmdebstrap (packages systemd-container and mmdebstrap)";
  if (ended("unshare -m true").status != 0) return "no mount namespace of its own";
  return {};
}

}  // namespace

Container::Container(const std::string& packages) : obstacle_(findObstacle()) {
  if (!obstacle_.empty()) return;
  const Ended made =
      ended("sh " + kScripts + "debian_tree.sh " + kBuild + "/debian " + kPackages + packages);
  (made.status == 0 ? tree_ : obstacle_) = lastLine(made.output);
}

void Container::InstallBuild() {
  const std::string root = payload_.Path() / "root";
  const Ended how = ended("DESTDIR=" + root + " cmake --install " + kBuild + " --prefix /usr");
  if (how.status != 0) throw std::runtime_error(how.output);
  prologue_ = "sh /payload/install_tools.sh /payload/root || exit 99\n";
  std::filesystem::copy(kScripts + "install_tools.sh", payload_.Path());
}

void Container::Bind(const std::string& device, const std::string& path) {
  options_ += " --bind=" + device + ":" + path;
}

Ended Container::Run(const std::string& script) const {
  const auto& folder = payload_.Path();
  payload_.Write("script", prologue_ + script);
  const Ended booted = ended("timeout -k 5 300 unshare -m sh " + kScripts + "container.sh " +
                             tree_ + " " + folder.string() + options_);
  const auto said = Files().Read(folder / "output");
  return {booted.status, said.value_or(booted.output)};
}

}  // namespace HostLinux
