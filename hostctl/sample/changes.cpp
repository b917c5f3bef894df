// SPDX-License-Identifier: MIT
#include "sample/changes.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"
#include "sample/json_lists.h"
#include "sample/network_changes.h"

namespace HostSample {

namespace {

using HostCtl::Lib::HostCtlException;

Json& keyboardWith(Json& host, const std::string& layout) {
  Json& keyboard = host["keyboard"];
  if (!contains(keyboard["layouts"], layout))
    throw HostCtlException("There is no keyboard layout " + layout + ".");
  return keyboard;
}

bool isManaged(const Json& machine) {
  const auto order = machine.find("autostart");
  return order != machine.end() && !order->is_null();
}

void setServiceFlag(Store& store, const std::string& name, const char* flag, bool value) {
  store.Change([&](Json& host) {
    Json& services = host["services"];
    if (!services.contains(name)) throw HostCtlException("There is no service " + name + ".");
    services[name][flag] = value;
    return true;
  });
}

}  // namespace

void resetState(Store& store, const std::string& text) {
  store.Change([&](Json& host) {
    Json delivered = Json::parse(text);
    for (const char* kept : {"accounts", "eventLibraryStatus", "faults", "tools"})
      if (host.contains(kept)) delivered[kept] = host[kept];
    host = std::move(delivered);
    return true;
  });
}

void raiseAlert(Store& store, const std::string& text) {
  store.Change([&](Json& host) {
    host["systemAlert"] = text;
    return true;
  });
}

void setOption(Store& store, const std::string& path, const HostCtl::Adv::OptionValue& value) {
  store.Change([&](Json& host) {
    std::visit([&](const auto& one) { host["options"][path] = one; }, value);
    return true;
  });
}

void setFirewallRuleset(Store& store, const std::string& id, bool enabled) {
  store.Change([&](Json& host) {
    for (Json& ruleset : host["firewallRulesets"]) {
      if (ruleset["id"] != id) continue;
      ruleset["enabled"] = enabled;
      return true;
    }
    throw HostCtlException("There is no firewall ruleset " + id + ".");
  });
}

void loadKeyboardLayout(Store& store, const std::string& layout) {
  store.Change([&](Json& host) {
    keyboardWith(host, layout)["loaded"] = layout;
    return true;
  });
}

void setKeyboardLayout(Store& store, const std::string& layout) {
  store.Change([&](Json& host) {
    keyboardWith(host, layout)["current"] = layout;
    return true;
  });
}

void storeAccounts(Store& store) {
  store.Change([&](Json& host) {
    host["configStore"]["accounts"] = host["accounts"];
    return true;
  });
}

void setLockdown(Store& store, bool enabled) {
  store.Change([&](Json& host) {
    Json& lockdown = host["lockdown"];
    if (enabled && lockdown["possible"] == false)
      throw HostCtlException("This host cannot be locked down.");
    lockdown["enabled"] = enabled;
    return true;
  });
}

void changePassword(Store& store, const std::string& user, const std::string& password) {
  store.Change([&](Json& host) {
    Json& account = named(host["accounts"], user, "account");
    account["password"] = password;
    account["expired"] = false;
    return true;
  });
}

void setServiceRunning(Store& store, const std::string& name, bool running) {
  setServiceFlag(store, name, "running", running);
}

void setServiceEnabled(Store& store, const std::string& name, bool enabled) {
  setServiceFlag(store, name, "enabled", enabled);
}

void setPower(Store& store, Power power) {
  store.Change([&](Json& host) {
    const std::string_view before = host.value("power", nameOf(Power::On));
    if (before == nameOf(power)) return false;
    host["power"] = nameOf(power);
    return true;
  });
}

void startHost(Store& store) {
  if (store.Get(&HostState::power) == Power::On) return;
  store.Change([&](Json& host) {
    host["power"] = nameOf(Power::On);
    startNetwork(host["network"]);
    return true;
  });
}

void stopMachines(Store& store, Machines which) {
  store.Change([&](Json& host) {
    bool anyStopped = false;
    for (Json& machine : host["machines"]) {
      const bool meant = which == Machines::All || isManaged(machine);
      if (!meant || machine["running"] == false) continue;
      machine["running"] = false;
      anyStopped = true;
    }
    return anyStopped;
  });
}

}  // namespace HostSample
