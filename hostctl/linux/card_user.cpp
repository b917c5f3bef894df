// SPDX-License-Identifier: MIT
#include "linux/card_user.h"

#include <optional>

namespace HostLinux {

namespace {

enum Tag : unsigned char {
  kOctetString = 0x04,
  kObjectId = 0x06,
  kUtf8String = 0x0c,
  kPrintableString = 0x13,
  kT61String = 0x14,
  kIa5String = 0x16,
  kMailName = 0x81,
};

constexpr unsigned char kConstructed = 0x20;
constexpr int kDeepest = 16;

constexpr std::string_view kCommonName = "\x55\x04\x03";
constexpr std::string_view kAlternativeName = "\x55\x1d\x11";
constexpr std::string_view kPrincipalName = "\x2b\x06\x01\x04\x01\x82\x37\x14\x02\x03";

struct Element {
  unsigned char tag;
  std::string_view content;
};

std::optional<std::size_t> takeLength(std::string_view& der) {
  if (der.empty()) return std::nullopt;
  std::size_t length = static_cast<unsigned char>(der[0]);
  der.remove_prefix(1);
  if (length < 0x80) return length;
  std::size_t bytes = length & 0x7f;
  if (bytes == 0 || bytes > 4 || bytes > der.size()) return std::nullopt;
  for (length = 0; bytes > 0; --bytes, der.remove_prefix(1))
    length = length << 8 | static_cast<unsigned char>(der[0]);
  return length;
}

std::optional<Element> takeElement(std::string_view& der) {
  if (der.empty()) return std::nullopt;
  const auto tag = static_cast<unsigned char>(der[0]);
  der.remove_prefix(1);
  const auto length = takeLength(der);
  if (!length || *length > der.size()) return std::nullopt;
  const Element element{tag, der.substr(0, *length)};
  der.remove_prefix(*length);
  return element;
}

struct Names {
  std::string commonName, principalName, mailName;
};

bool isText(unsigned char tag) {
  return tag == kUtf8String || tag == kPrintableString || tag == kT61String || tag == kIa5String;
}

// A text belongs to the object identifier that stands last before it; the alternative names of a
// certificate are DER again, inside an octet string behind their identifier.
class Walk {
 public:
  explicit Walk(Names& names) : names_(names) {}
  void Through(std::string_view der, int depth = 0) {
    while (const auto element = takeElement(der)) Visit(*element, depth);
  }

 private:
  void Visit(const Element& element, int depth) {
    if (element.tag == kObjectId) identifier_ = element.content;
    const bool alternative = element.tag == kOctetString && identifier_ == kAlternativeName;
    const bool nested = alternative || (element.tag & kConstructed) != 0;
    inAlternativeName_ = inAlternativeName_ || alternative;
    if (nested && depth < kDeepest) Through(element.content, depth + 1);
    if (alternative) inAlternativeName_ = false;
    if (isText(element.tag) && identifier_ == kCommonName) Keep(names_.commonName, element);
    if (isText(element.tag) && identifier_ == kPrincipalName) Keep(names_.principalName, element);
    if (element.tag == kMailName && inAlternativeName_) Keep(names_.mailName, element);
  }
  static void Keep(std::string& name, const Element& element) {
    if (name.empty()) name = element.content;
  }

  Names& names_;
  std::string_view identifier_;
  bool inAlternativeName_ = false;
};

Names namesIn(std::string_view der) {
  Names names;
  Walk(names).Through(der);
  return names;
}

}  // namespace

std::string cardUser(std::string_view subject, std::string_view certificate) {
  if (std::string name = namesIn(subject).commonName; !name.empty()) return name;
  const Names names = namesIn(certificate);
  const std::string& full = names.principalName.empty() ? names.mailName : names.principalName;
  return full.substr(0, full.find('@'));
}

}  // namespace HostLinux
