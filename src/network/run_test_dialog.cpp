// SPDX-License-Identifier: MIT
#include "network/run_test_dialog.h"

#include <numeric>

#include "core/key_wait.h"
#include "core/keys.h"
#include "core/log.h"
#include "core/screen.h"
#include "ui/footer.h"
#include "ui/markup_text.h"

namespace Kiva {

namespace {

constexpr timeval kLook{.tv_sec = 0, .tv_usec = 10000};
/// No longer name can be resolved.
constexpr std::size_t kLongestName = 255;

constexpr const char* kCancelFooter =
    "{align:right}{color:black}<Esc>{/color} {color:dark-grey}Cancel{/color}{/align}";

}  // namespace

RunTestDialog::RunTestDialog(Frame& owner, TestTargets targets)
    : Dialog(owner, 78, 17, 5), targets_(std::move(targets)) {
  Window& content = *Content();
  results_ = &content.Make<TextArea>(Rect{0, 0, content.Width(), content.Height()}, kParentColor);
}

int RunTestDialog::Foreground() {
  const QuickEscape quick;
  SetTitle(Text(TextId::kTestingManagementNetwork));
  SetText(Text(TextId::kYouMayInterruptTheTest));
  SetFooter(kCancelFooter);
  if (!TryAll()) return 0;
  SetFooter(kOkFooter);
  discardTypeAhead();
  waitForEnter(*this);
  return 1;
}

bool RunTestDialog::TryAll() {
  int number = 0;
  for (const std::string& address : targets_.addresses) {
    ++number;
    if (address.empty()) continue;
    const std::string line = formatted("%s #%d (%s).", Text(TextId::kPingingAddress), number,
                                       plainText(address).c_str());
    if (!Try(line, pingOf(address))) return false;
  }
  if (targets_.hostname.empty()) return true;
  const std::string shown = plainText(targets_.hostname.substr(0, kLongestName));
  return Try(std::string(Text(TextId::kResolvingHostname)) + " (" + shown + ").",
             resolutionOf(targets_.hostname));
}

bool RunTestDialog::Try(const std::string& line, NetworkCheck::Work work) {
  lines_.push_back(line);
  Show();
  NetworkCheck check(std::move(work));
  const auto succeeded = Await(check);
  if (!succeeded) return false;
  const std::string result = Text(*succeeded ? TextId::kOk : TextId::kFailed);
  const int width = results_->Width();
  const bool fits = countLines(line + " " + result, width) == countLines(line, width);
  lines_.back() += (fits ? "" : "\n") + ("{align:right}" + result + "{/align}\n");
  Show();
  return true;
}

std::optional<bool> RunTestDialog::Await(NetworkCheck& check) {
  for (IdleDeadline idle;; idle.Check(keyWait().source->Now())) {
    const int input = waitForInput(&kLook);
    if (input == Key::kEscape) return std::nullopt;
    if (input < 0 || input == Key::kResize)
      dispatchInput(input);
    else
      idle = IdleDeadline();
    if (const auto result = check.Result()) return result;
  }
}

// The newest lines stay in sight.
void RunTestDialog::Show() {
  const auto text = [&] { return std::accumulate(lines_.begin(), lines_.end(), std::string()); };
  while (lines_.size() > 1 && countLines(text(), results_->Width()) > results_->Height())
    lines_.erase(lines_.begin());
  results_->SetText(text());
}

}  // namespace Kiva
