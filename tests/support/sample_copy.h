// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace TestSupport {

/// A copy of the built-in sample host for one test, edited as the test likes; removed at its end.
class SampleCopy {
 public:
  using Json = nlohmann::ordered_json;

  SampleCopy() : directory_(std::filesystem::temp_directory_path() / "kiva test.XXXXXX") {
    std::string name = directory_;
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    directory_ = name;
    std::filesystem::copy(KIVA_SOURCE_DIR "/demo/sample", directory_,
                          std::filesystem::copy_options::recursive);
  }
  SampleCopy(const SampleCopy&) = delete;
  SampleCopy& operator=(const SampleCopy&) = delete;
  ~SampleCopy() { std::filesystem::remove_all(directory_); }

  const std::filesystem::path& Directory() const { return directory_; }
  std::filesystem::path HostFile() const { return directory_ / "host.json"; }

  static std::string TextOf(const std::filesystem::path& file) {
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  Json Host() const { return Json::parse(TextOf(HostFile())); }
  /// By JSON pointer: Set("/lockdown/enabled", true).
  void Set(const std::string& pointer, const Json& value) const {
    Json host = Host();
    host[Json::json_pointer(pointer)] = value;
    Write(host.dump(2));
  }
  void Write(const std::string& text) const { std::ofstream(HostFile()) << text; }

  std::vector<std::string> Journal() const {
    std::ifstream in(directory_ / "journal");
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }

 private:
  std::filesystem::path directory_;
};

}  // namespace TestSupport
