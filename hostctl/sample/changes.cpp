// SPDX-License-Identifier: MIT
#include "sample/changes.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "hostctl/lib/exception.h"

namespace HostSample {

namespace {

using HostCtl::Lib::HostCtlException;

Json* findNamed(Json& list, const std::string& name) {
  const auto found = std::find_if(list.begin(), list.end(),
                                  [&](const Json& item) { return item["name"] == name; });
  return found == list.end() ? nullptr : &*found;
}

Json& named(Json& list, const std::string& name, const std::string& kind) {
  if (Json* found = findNamed(list, name)) return *found;
  throw HostCtlException("There is no " + kind + " " + name + ".");
}

bool contains(const Json& list, const std::string& name) {
  return std::find(list.begin(), list.end(), name) != list.end();
}

Json& switchNamed(Json& host, const std::string& name) {
  return named(host["network"]["switches"], name, "standard switch");
}

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

void refuseDuplicate(bool exists, const std::string& kind, const std::string& name) {
  if (exists) throw HostCtlException("There is a " + kind + " " + name + " already.");
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

void addSwitch(Store& store, const std::string& name) {
  store.Change([&](Json& host) {
    Json& switches = host["network"]["switches"];
    refuseDuplicate(findNamed(switches, name) != nullptr, "standard switch", name);
    switches.push_back({{"name", name}, {"uplinks", Json::array()}, {"portGroups", Json::array()}});
    return true;
  });
}

void addUplink(Store& store, const std::string& pnic, const std::string& switchName) {
  store.Change([&](Json& host) {
    Json& uplinks = switchNamed(host, switchName)["uplinks"];
    named(host["network"]["pnics"], pnic, "physical adapter");
    for (const Json& one : host["network"]["switches"])
      if (contains(one["uplinks"], pnic))
        throw HostCtlException("The physical adapter " + pnic + " is an uplink of " +
                               one["name"].get<std::string>() + " already.");
    uplinks.push_back(pnic);
    return true;
  });
}

void removeUplink(Store& store, const std::string& pnic, const std::string& switchName) {
  store.Change([&](Json& host) {
    Json& uplinks = switchNamed(host, switchName)["uplinks"];
    const auto found = std::find(uplinks.begin(), uplinks.end(), pnic);
    if (found == uplinks.end())
      throw HostCtlException("The standard switch " + switchName + " has no uplink " + pnic + ".");
    uplinks.erase(found);
    return true;
  });
}

void addPortGroup(Store& store, const std::string& name, const std::string& switchName) {
  store.Change([&](Json& host) {
    Json& target = switchNamed(host, switchName);
    for (Json& one : host["network"]["switches"])
      refuseDuplicate(findNamed(one["portGroups"], name) != nullptr, "port group", name);
    target["portGroups"].push_back({{"name", name}, {"vlanId", 0}});
    return true;
  });
}

void moveKernelNic(Store& store, const std::string& name, const std::string& switchName) {
  store.Change([&](Json& host) {
    switchNamed(host, switchName);
    Json& nic = named(host["network"]["kernelNics"], name, "kernel interface");
    nic["connection"]["type"] = "standard";
    nic["connection"]["switch"] = switchName;
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
