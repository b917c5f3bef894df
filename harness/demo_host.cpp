// SPDX-License-Identifier: MIT
#include "harness/demo_host.h"

#include <fcntl.h>
#include <sys/file.h>

#include <fstream>
#include <iterator>
#include <utility>

#include "hostctl/lib/descriptor.h"

namespace Harness {
namespace {

namespace fs = std::filesystem;

fs::path builtInSample() {
  return fs::path(KIVA_BINARY_DIR).parent_path() / "share/kiva-demo/sample";
}

std::string replaceAll(std::string text, const std::string& from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace

std::string contentOf(const fs::path& file) {
  std::ifstream in(file);
  return {std::istreambuf_iterator<char>(in), {}};
}

DemoHost::DemoHost(const nlohmann::json& changes) {
  fs::copy(builtInSample(), Directory(),
           fs::copy_options::recursive | fs::copy_options::overwrite_existing |
               fs::copy_options::copy_symlinks);
  if (!changes.empty()) Change(changes);
}

fs::path DemoHost::Root(std::string_view absolutePath) const {
  return Directory() / "root" / fs::path(absolutePath).relative_path();
}

Launch DemoHost::Demo(const std::vector<std::string>& arguments) const {
  Launch launch{
      {(fs::path(KIVA_BINARY_DIR) / "kiva-demo").string(), "--host", Directory().string()}};
  launch.arguments.insert(launch.arguments.end(), arguments.begin(), arguments.end());
  return launch;
}

nlohmann::json DemoHost::State() const {
  std::ifstream file(File());
  return nlohmann::json::parse(file);
}

// Under the program's own lock, so that neither loses what the other changes at the same time.
void DemoHost::Change(const nlohmann::json& changes) {
  constexpr mode_t kMode = 0644;
  const HostCtl::Lib::Descriptor lock(
      open((File().string() + ".lock").c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, kMode));
  if (lock) flock(lock.Get(), LOCK_EX);
  nlohmann::json state = State();
  if (changes.is_array()) {
    state = state.patch(changes);
  } else {
    state.merge_patch(changes);
  }
  const fs::path beside = Directory() / "host.json.changed";
  std::ofstream(beside) << state.dump(2) << "\n";
  fs::rename(beside, File());
}

void DemoHost::Set(const std::string& pointer, const nlohmann::json& value) {
  Change(nlohmann::json::array({{{"op", "add"}, {"path", pointer}, {"value", value}}}));
}

void DemoHost::Freeze() {
  const std::string lock = File().string() + ".lock";
  fs::remove(lock);
  fs::create_directory(lock);
}

std::string DemoHost::Text() const {
  return contentOf(File());
}

void DemoHost::WriteText(std::string_view text) {
  std::ofstream(File()) << text;
}

std::vector<std::string> DemoHost::Journal() const {
  std::vector<std::string> lines;
  std::ifstream file(Directory() / "journal");
  for (std::string line; std::getline(file, line);) {
    lines.push_back(replaceAll(std::move(line), Directory().string(), "HOST"));
  }
  return lines;
}

std::vector<std::string> DemoHost::Journal(std::string_view kind) const {
  const std::string start = std::string(kind) + "\t";
  std::vector<std::string> lines;
  for (const std::string& line : Journal()) {
    if (line.starts_with(start)) lines.push_back(line.substr(start.size()));
  }
  return lines;
}

}  // namespace Harness
