// SPDX-License-Identifier: MIT
#include "linux/network/ovs_nic.h"

#include <syslog.h>

#include <algorithm>

#include "hostctl/lib/exception.h"
#include "linux/network/ovsdb.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

bool isAddressSetting(const std::string& setting) {
  return setting.starts_with("mac=");
}

OvsPlace demandPlace(const OvsBridges& bridges, const ChangeContext& context,
                     const std::string& nic) {
  const auto refuse = [&](const std::string& cause) {
    throw HostCtlException(context.operation, context.object, cause);
  };
  const OvsPlace place = findOnOvs(bridges, nic);
  if (!place || !place.bridge->controlled) refuse("is on no distributed switch");
  if (place.bridge->name == nic) refuse("is the switch's own interface, which has no other port");
  if (place.interface->type != "internal") refuse("is no interface that Open vSwitch made");
  if (place.port->interfaces.size() > 1) refuse("shares its port with others");
  return place;
}

}  // namespace

OvsNic::OvsNic(const Files& files, ChangeContext context, const std::string& nic)
    : files_(files),
      context_(std::move(context)),
      bridges_(readOvsBridges(files, context_.operation)),
      place_(demandPlace(bridges_, context_, nic)),
      state_(files, context_.operation, nic) {}

void OvsNic::Refuse(const std::string& cause) const {
  throw HostCtlException(context_.operation, context_.object, cause);
}

std::string OvsNic::AddressSetting() const {
  return "mac=" + ovsValue(state_.Link().address);
}

// A device that is made anew takes its address from the record; it keeps that afterwards.
void OvsNic::PutBackAddressSetting() const {
  const auto& settings = Interface().settings;
  const auto said = std::find_if(settings.begin(), settings.end(), isAddressSetting);
  OvsChange change;
  if (said == settings.end())
    change.Clear("Interface", Name(), "mac");
  else
    change.Set("Interface", Name(), {*said});
  change.Commit(context_);
}

void OvsNic::ReadBlocking() {
  blocked_ = blockedInterfaces(context_, Bridge().name).count(Name()) != 0;
}

void OvsNic::PutBack(OvsChange besides) const noexcept try {
  const auto bridges = readOvsBridges(files_, context_.operation);
  const OvsPlace now = findOnOvs(bridges, Name());
  if (now && now.port->name == Port().name) return;
  if (now) {
    besides.RemovePort(*now.bridge, *now.port);
    besides.AddPort(Bridge(), Port().name, Port().settings, *now.interface);
  } else {
    auto settings = Interface().settings;
    std::erase_if(settings, isAddressSetting);
    settings.push_back(AddressSetting());
    besides.AddPortWithNew(Bridge(), Port().name, Port().settings, Name(), settings);
  }
  const bool back = besides.CommitAnyway(context_);
  state_.PutBack();
  if (blocked_) setBlocking(context_, Bridge().name, Name(), Blocking::On);
  if (back) PutBackAddressSetting();
} catch (const std::exception& error) {
  syslog(LOG_USER | LOG_ERR, "%s could not be put back: %s", Name().c_str(), error.what());
}

}  // namespace HostLinux
