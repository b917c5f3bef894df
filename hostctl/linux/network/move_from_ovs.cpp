// SPDX-License-Identifier: MIT
#include "linux/network/move_from_ovs.h"

#include <exception>

#include "linux/network/foreign.h"
#include "linux/network/interface_file.h"
#include "linux/network/ip_file.h"
#include "linux/network/ip_settings.h"
#include "linux/network/ovs_nic.h"
#include "linux/network/ovs_uplinks.h"
#include "linux/network/ovsdb.h"
#include "linux/network/switch_editor.h"
#include "linux/pnics.h"

namespace HostLinux {

namespace {

constexpr const char* kOperation = "Migrate";
/// Leaves room for the name of its port in the kernel's 15 characters.
constexpr std::size_t kLongestName = 10;

/// The interface's file as it is to be. Without a file of networkd's only the kernel knows all of
/// its addresses and routes.
IniFile fileFor(const Files& files, const OwnFiles& own, const OvsNic& nic) {
  const std::string name = ownFileName(nic.Name(), "network");
  const bool written = own.Exists(name) || fileOfOthers(files, nic.Name());
  IniFile file = interfaceFile(files, own, kOperation, nic.Name());
  if (!written) nic.State().WriteInto(file);
  file.Set("Match", "Name", nic.Name());
  file.Set("Link", "MACAddress", nic.State().Link().address);
  return file;
}

void demandRoom(SwitchEditor& editor, const HostSeam::PortGroupName& group,
                const SwitchInterface& interface) {
  if (!editor.SwitchNamed(group.switchName).FindPortGroup(group.name))
    editor.Refuse("there is no such port group on " + group.switchName);
  if (interface.name.size() > kLongestName)
    editor.Refuse("an interface of a standard switch has a name of " +
                  std::to_string(kLongestName) + " characters at most");
  editor.DemandOwn(portOf(interface));
}

}  // namespace

bool isOnDistributedSwitch(const Files& files, const std::string& nic) {
  const auto bridges = readOvsBridges(files, kOperation);
  const OvsPlace place = findOnOvs(bridges, nic);
  return place ? place.bridge->controlled : masterOf(files, nic) == kOvsMaster;
}

void moveNicFromOvs(const Files& files, const std::string& name,
                    const HostSeam::PortGroupName& group) {
  SwitchEditor editor(files, {kOperation, name});
  OvsNic nic(files, editor.Context(), name);
  const SwitchInterface interface { name, group.name };
  demandRoom(editor, group, interface);
  refuseForeign(files, kOperation, name);
  const IniFile file = fileFor(files, editor.Own(), nic);
  editor.SwitchNamed(group.switchName).interfaces.push_back(interface);
  nic.ReadBlocking();
  OvsChange change, back;
  change.RemovePort(nic.Bridge(), nic.Port());
  isolateUplinks(files, nic.Bridge(), nic.Port(), {}, change, back);
  try {
    change.Commit(nic.Context());
    editor.Apply({{ownFileName(name, "network"), file.Text()}},
                 [&] { waitForStaticAddresses(files, kOperation, name, ipConfigIn(file)); });
  } catch (const std::exception&) {
    nic.PutBack(std::move(back));
    throw;
  }
}

}  // namespace HostLinux
