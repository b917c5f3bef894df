// SPDX-License-Identifier: MIT
#include "network/restore/do_restore_network_dialog.h"

#include "core/key_wait.h"
#include "core/log.h"
#include "core/screen.h"
#include "hostctl/lib/exception.h"
#include "network/restore/running_vms_warning_dialog.h"
#include "system/run_command.h"
#include "tarnctl/system/resource_info_impl.h"
#include "ui/footer.h"

namespace Kiva {

using HostCtl::Lib::HostCtlException;

namespace {

// A host that does not tell may run machines: rather one question too many.
bool machinesMayRun() try {
  return TarnCtl::System::ResourceInfoImpl().HasRunningVirtualMachines();
} catch (const HostCtlException& exception) {
  logError("%s", exception.what());
  return true;
}

}  // namespace

DoRestoreNetworkDialog::DoRestoreNetworkDialog(Frame& owner, bool& begun)
    : Dialog(owner, 60, 12, 6), begun_(begun) {
  Window& content = *Content();
  progress_ = &content.Make<TextArea>(Rect{0, 0, content.Width(), content.Height()}, kParentColor);
}

int DoRestoreNetworkDialog::Foreground() {
  SetTitle(Text(TextId::kRestoreNetworkSettingsTitle));
  SetText(Text(TextId::kPleaseWaitFactoryNetworkRestored));
  updateScreen();
  const bool mayRun = machinesMayRun();
  if (mayRun && !Confirm()) return 0;
  begun_ = true;
  Restore(!mayRun || PowerOffMachines());
  SetFooter(kDoneFooter);
  discardTypeAhead();
  waitForEnter(*this);
  return 1;
}

bool DoRestoreNetworkDialog::Confirm() {
  RunningVMsWarningDialog dialog(*this);
  return runWindow(dialog) != 0;
}

bool DoRestoreNetworkDialog::PowerOffMachines() {
  Append(std::string(Text(TextId::kPoweringOffVms)) + " ");
  const bool done =
      RunCommand({.path = "/sbin/powerOffVms", .arguments = {"powerOffVms"}}).status == 0;
  if (done) AppendLine(TextId::kDone);
  return done;
}

void DoRestoreNetworkDialog::Restore(bool machinesAreOff) try {
  network_.DisableNetDumper();
  if (!machinesAreOff) return Fail("Error powering off VMs");
  Append(std::string(Text(TextId::kAutoConfiguringNetwork)) + " ");
  logInfo("Clearing Network Config");
  network_.ClearNetworkConfig();
  logInfo("Auto-Configuring Network");
  network_.AutoConfigNetwork();
  AppendLine(TextId::kDone);
} catch (const HostCtlException& exception) {
  logWarning("%s", exception.what());
  Fail("Error auto-configuring network");
}

void DoRestoreNetworkDialog::Fail(const char* logLine) {
  AppendLine(TextId::kFailed);
  logError("%s", logLine);
}

// The operator sees the step before it is taken: none of them waits for a key.
void DoRestoreNetworkDialog::Append(const std::string& text) {
  progress_->AppendText(text);
  updateScreen();
}

void DoRestoreNetworkDialog::AppendLine(TextId text) {
  Append(std::string(Text(text)) + "\n");
}

}  // namespace Kiva
