// SPDX-License-Identifier: MIT
#pragma once

#include <security/pam_appl.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace Kiva {

/// What the host's authentication stack, service "kiva", is asked in one go. Logins and password
/// changes are made of it; nothing else talks to the stack.

/// The answers to the stack's hidden prompts, in the order of the prompts across one transaction.
struct HiddenAnswers {
  std::vector<const char*> texts;
  std::size_t given = 0;
};

/// A conversation over the HiddenAnswers that `data` points to. Prompts of other kinds, and hidden
/// ones beyond the last answer, get no answer. The stack wipes and frees what it is given.
int answerHiddenPrompts(int count, const pam_message** messages, pam_response** responses,
                        void* data);

struct PamStep {
  int (*function)(pam_handle_t*, int);
  int flags = PAM_SILENT;
  /// Whether the transaction goes on after an expired password (PAM_NEW_AUTHTOK_REQD) too.
  bool passesExpired = false;
};

/// Takes the steps one after the other, up to the first that fails. Returns the last one's status.
int runPamTransaction(const std::string& user, const pam_conv& conversation,
                      std::span<const PamStep> steps);

}  // namespace Kiva
