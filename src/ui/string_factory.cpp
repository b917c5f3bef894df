// SPDX-License-Identifier: MIT
#include "ui/string_factory.h"

#include <array>
#include <initializer_list>
#include <span>

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "tarnctl/system/system_info_impl.h"
#include "ui/en_us_texts.h"
#include "ui/markup_text.h"

namespace Kiva {

namespace {

using TextTable = std::array<const char*, kTextCount>;

TextTable gatherTexts() {
  TextTable texts;
  texts.fill("");
  for (const auto rows :
       {enUsMenuTexts(), enUsNetworkTexts(), enUsRestoreTexts(), enUsSystemTexts()}) {
    for (const auto& [id, text] : rows) texts[static_cast<unsigned>(id)] = text;
  }
  return texts;
}

/// Product, version, kernel and build. Empty while the host cannot say, and asked for again then.
const char* productBanner() {
  static std::string banner;
  if (!banner.empty()) return banner.c_str();
  try {
    const auto record = TarnCtl::System::SystemInfoImpl().GetVersion();
    banner = plainText(formatted("%s %s (Tarn %s Build %u)", record.productName.c_str(),
                                 record.version.c_str(), record.kernelVersion.c_str(),
                                 record.buildNumber));
  } catch (const HostCtl::Lib::HostCtlException&) {
    return "";
  }
  return banner.c_str();
}

}  // namespace

const char* en_US_Factory::GetString(unsigned id) {
  static const TextTable texts = gatherTexts();
  if (id == static_cast<unsigned>(TextId::kProductBanner)) return productBanner();
  return id < texts.size() ? texts[id] : "";
}

StringFactory* getStringFactory(const std::string& locale) {
  static en_US_Factory english;
  static StringFactory* current = nullptr;
  if (current == nullptr && locale == "en_US") current = &english;
  return current;
}

const char* catalogueText(TextId id) {
  return getStringFactory("en_US")->GetString(id);
}

}  // namespace Kiva
