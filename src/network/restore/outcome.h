// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ui/frame.h"
#include "ui/text_id.h"

namespace Kiva {

/// Tells the operator what came of a repair; the body is markup.
void showOutcome(Frame& owner, TextId title, const std::string& body);
/// That it is done.
void showSuccess(Frame& owner, const std::string& body);
/// That it failed, with the cause where the console knows it, which is text of the host and is
/// logged already.
void showFailure(Frame& owner, const std::string& cause = {});

/// "STEP failed", with the cause where it is known.
std::string failureOf(const std::string& step, const std::string& cause);

}  // namespace Kiva
