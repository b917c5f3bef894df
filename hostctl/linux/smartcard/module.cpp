// SPDX-License-Identifier: MIT
#include <p11-kit/p11-kit.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "linux/card_user.h"
#include "linux/smart_cards.h"

// Everything is opened, read and closed again at each question: a card comes and goes, some card
// libraries see it only at their start, and none of their threads stays behind in the console.

namespace {

using HostCtl::Authentication::SmartCardSlot;
using HostCtl::Authentication::SmartCardToken;

void check(CK_RV result) {
  if (result != CKR_OK) throw std::runtime_error(p11_kit_strerror(result));
}

struct ReleaseModules {
  void operator()(CK_FUNCTION_LIST** modules) const { p11_kit_modules_release(modules); }
};

bool holdsOnlyTrust(CK_FUNCTION_LIST* module) {
  struct Free {
    void operator()(char* text) const { std::free(text); }
  };
  const std::unique_ptr<char, Free> policy(p11_kit_config_option(module, "trust-policy"));
  return policy && std::string_view(policy.get()) == "yes";
}

class RunningModule {
 public:
  explicit RunningModule(CK_FUNCTION_LIST* module)
      : module_(p11_kit_module_initialize(module) == CKR_OK ? module : nullptr) {}
  RunningModule(const RunningModule&) = delete;
  RunningModule& operator=(const RunningModule&) = delete;
  ~RunningModule() {
    if (module_) p11_kit_module_finalize(module_);
  }
  explicit operator bool() const { return module_ != nullptr; }

 private:
  CK_FUNCTION_LIST* module_;
};

class Session {
 public:
  Session(CK_FUNCTION_LIST* module, CK_SLOT_ID slot) : module_(module) {
    check(module_->C_OpenSession(slot, CKF_SERIAL_SESSION, nullptr, nullptr, &handle_));
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() { module_->C_CloseSession(handle_); }

  std::vector<CK_OBJECT_HANDLE> Certificates() const;
  std::string Attribute(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type) const;
  bool IsAuthority(CK_OBJECT_HANDLE certificate) const;

 private:
  CK_FUNCTION_LIST* module_;
  CK_SESSION_HANDLE handle_ = 0;
};

std::vector<CK_OBJECT_HANDLE> Session::Certificates() const {
  CK_OBJECT_CLASS wanted = CKO_CERTIFICATE;
  CK_ATTRIBUTE pattern{CKA_CLASS, &wanted, sizeof wanted};
  check(module_->C_FindObjectsInit(handle_, &pattern, 1));
  std::vector<CK_OBJECT_HANDLE> found(64);
  CK_ULONG count = 0;
  const CK_RV result = module_->C_FindObjects(handle_, found.data(), found.size(), &count);
  module_->C_FindObjectsFinal(handle_);
  check(result);
  found.resize(count);
  return found;
}

// An attribute that the card does not have, or does not show, is empty.
std::string Session::Attribute(CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type) const {
  CK_ATTRIBUTE attribute{type, nullptr, 0};
  if (module_->C_GetAttributeValue(handle_, object, &attribute, 1) != CKR_OK) return {};
  std::string value(attribute.ulValueLen, '\0');
  attribute.pValue = value.data();
  if (module_->C_GetAttributeValue(handle_, object, &attribute, 1) != CKR_OK) return {};
  return value;
}

bool Session::IsAuthority(CK_OBJECT_HANDLE certificate) const {
  constexpr CK_ULONG kAuthority = 2;
  CK_ULONG category = 0;
  CK_ATTRIBUTE attribute{CKA_CERTIFICATE_CATEGORY, &category, sizeof category};
  return module_->C_GetAttributeValue(handle_, certificate, &attribute, 1) == CKR_OK &&
         category == kAuthority;
}

std::string holder(CK_FUNCTION_LIST* module, CK_SLOT_ID slot) {
  const Session session(module, slot);
  for (const CK_OBJECT_HANDLE certificate : session.Certificates()) {
    if (session.IsAuthority(certificate)) continue;
    std::string user = HostLinux::cardUser(session.Attribute(certificate, CKA_SUBJECT),
                                           session.Attribute(certificate, CKA_VALUE));
    if (!user.empty()) return user;
  }
  return {};
}

// The library's texts fill their fields with blanks.
template <std::size_t Size>
std::string padded(const CK_UTF8CHAR (&field)[Size]) {
  const std::string_view text(reinterpret_cast<const char*>(field), Size);
  return std::string(text.substr(0, text.find_last_not_of(std::string_view(" \0", 2)) + 1));
}

std::vector<CK_SLOT_ID> slotIds(CK_FUNCTION_LIST* module) {
  CK_ULONG count = 0;
  check(module->C_GetSlotList(CK_FALSE, nullptr, &count));
  std::vector<CK_SLOT_ID> ids(count);
  if (count > 0) check(module->C_GetSlotList(CK_FALSE, ids.data(), &count));
  ids.resize(std::min<std::size_t>(count, ids.size()));
  return ids;
}

void addSlot(CK_FUNCTION_LIST* module, CK_SLOT_ID id, std::vector<SmartCardSlot>& slots) {
  CK_SLOT_INFO info{};
  check(module->C_GetSlotInfo(id, &info));
  SmartCardSlot slot{padded(info.slotDescription), std::nullopt};
  CK_TOKEN_INFO token{};
  const CK_RV result = module->C_GetTokenInfo(id, &token);
  const bool absent = result == CKR_TOKEN_NOT_PRESENT || result == CKR_TOKEN_NOT_RECOGNIZED;
  if (!absent) {
    check(result);
    if ((token.flags & CKF_TOKEN_INITIALIZED) == 0) return;
    slot.token = SmartCardToken{padded(token.label), holder(module, id)};
    if (slot.token->userId.empty()) slot.token->userId = slot.token->label;
  }
  slots.push_back(std::move(slot));
}

void addSlots(CK_FUNCTION_LIST* module, std::vector<SmartCardSlot>& slots) {
  // A module that does not start (its service is down, it has no configuration) has no readers.
  const RunningModule running(module);
  if (!running) return;
  for (const CK_SLOT_ID id : slotIds(module)) addSlot(module, id, slots);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) bool kivaSmartCardSlots(
    std::vector<SmartCardSlot>& slots, std::string& error) {
  const std::unique_ptr<CK_FUNCTION_LIST*, ReleaseModules> modules(
      p11_kit_modules_load(nullptr, 0));
  if (!modules) return true;
  try {
    for (CK_FUNCTION_LIST** module = modules.get(); *module; ++module)
      if (!holdsOnlyTrust(*module)) addSlots(*module, slots);
  } catch (const std::runtime_error& failure) {
    error = failure.what();
    return false;
  }
  return true;
}
