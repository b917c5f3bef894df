// SPDX-License-Identifier: MIT
#include "linux/network/networkd_bus.h"

#include "hostctl/lib/exception.h"
#include "linux/loadable_module.h"
#include "linux/network/bus_call.h"

namespace HostLinux {

using HostCtl::Lib::HostCtlException;

namespace {

constexpr std::chrono::seconds kAnswerWithin{10};

BusCall networkdCall(const char* method) {
  return {"systemd-networkd",
          "org.freedesktop.network1",
          "/org/freedesktop/network1",
          "org.freedesktop.network1.Manager",
          method,
          false,
          {}};
}

BusCall networkdCall(const char* method, int index) {
  BusCall call = networkdCall(method);
  call.argument = index;
  return call;
}

void make(const BusCall& call, const std::string& operation, const std::string& object) {
  static Module module("kiva-networkd");
  const auto function = module.Find<BusCallFunction>(kBusCallSymbol);
  std::string error = "kiva-networkd.so cannot be loaded";
  if (!function || !function(call, kAnswerWithin, error))
    throw HostCtlException(operation, object, error);
}

}  // namespace

void reloadNetworkd(const std::string& operation, const std::string& object) {
  make(networkdCall("Reload"), operation, object);
}

void reconfigureLink(const std::string& operation, const std::string& object, int index) {
  make(networkdCall("ReconfigureLink", index), operation, object);
}

void renewLink(const std::string& operation, const std::string& object, int index) {
  make(networkdCall("RenewLink", index), operation, object);
}

void setStaticHostname(const std::string& operation, const std::string& name) {
  make({"systemd-hostnamed", "org.freedesktop.hostname1", "/org/freedesktop/hostname1",
        "org.freedesktop.hostname1", "SetStaticHostname", true, name},
       operation, name);
}

}  // namespace HostLinux
