// SPDX-License-Identifier: MIT
#include "linux/processors.h"

#include <unistd.h>

#include <algorithm>
#include <set>

#include "linux/text.h"

namespace HostLinux {

namespace {

struct Field {
  std::string_view key, value;
};

Field field(std::string_view line) {
  const auto colon = line.find(':');
  if (colon == std::string_view::npos) return {};
  return {trim(line.substr(0, colon)), trim(line.substr(colon + 1))};
}

// The first value that each key has anywhere in the text.
Assignments firstValues(std::string_view text) {
  Assignments values;
  for (const std::string_view line : lines(text)) {
    const auto [key, value] = field(line);
    if (!value.empty()) values.emplace(key, value);
  }
  return values;
}

std::string modelName(const Assignments& values) {
  // x86, older ARM, MIPS, POWER, ARM boards, in this order of how much they tell.
  for (const char* key : {"model name", "Processor", "cpu model", "cpu", "Model", "Hardware"})
    if (std::string name = valueOf(values, key); !name.empty()) return name;
  const std::string implementer = valueOf(values, "CPU implementer");
  if (implementer.empty()) return {};
  return "ARM processor " + implementer + ":" + valueOf(values, "CPU part");
}

}  // namespace

HostCtl::System::ProcessorRecord processorsFrom(std::string_view cpuinfo) {
  std::set<std::string_view> packages;
  for (const std::string_view line : lines(cpuinfo))
    if (const auto [key, value] = field(line); key == "physical id") packages.insert(value);
  return {modelName(firstValues(cpuinfo)), std::max(1, static_cast<int>(packages.size()))};
}

HostCtl::System::MemoryRecord memoryFrom(std::string_view meminfo, std::uint64_t pageSize) {
  const std::string total = valueOf(firstValues(meminfo), "MemTotal");
  const auto number = parseInteger(std::string_view(total).substr(0, total.find(' ')));
  const auto kibibytes = static_cast<std::uint64_t>(std::max<std::int64_t>(0, number.value_or(0)));
  return {kibibytes * 1024 / pageSize, pageSize};
}

HostCtl::System::ProcessorRecord readProcessors(const Files& files) {
  return processorsFrom(files.Read("/proc/cpuinfo").value_or(""));
}

HostCtl::System::MemoryRecord readMemory(const Files& files) {
  return memoryFrom(files.Read("/proc/meminfo").value_or(""),
                    static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
}

}  // namespace HostLinux
