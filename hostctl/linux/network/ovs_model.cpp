// SPDX-License-Identifier: MIT
#include "linux/network/ovs_model.h"

#include <nlohmann/json.hpp>
#include <set>

namespace HostLinux {

using nlohmann::json;

const char* const kOvsQuestion =
    R"({"id":0,"method":"transact","params":["Open_vSwitch",)"
    R"({"op":"select","table":"Bridge","where":[],)"
    R"("columns":["_uuid","name","ports","controller","external_ids"]},)"
    R"({"op":"select","table":"Port","where":[],"columns":["_uuid","name","interfaces",)"
    R"("bond_downdelay","bond_fake_iface","bond_mode","bond_updelay","cvlans","external_ids",)"
    R"("fake_bridge","lacp","mac","other_config","protected","qos","tag","trunks","vlan_mode"]},)"
    R"({"op":"select","table":"Interface","where":[],"columns":["_uuid","name","type",)"
    R"("options","mac","mtu_request","ofport_request","external_ids","other_config","lldp","bfd",)"
    R"("ingress_policing_rate","ingress_policing_burst"]}]})";

namespace {

constexpr const char* kPortSettings[] = {"bond_downdelay",
                                         "bond_fake_iface",
                                         "bond_mode",
                                         "bond_updelay",
                                         "cvlans",
                                         "external_ids",
                                         "fake_bridge",
                                         "lacp",
                                         "mac",
                                         "other_config",
                                         "protected",
                                         "qos",
                                         "tag",
                                         "trunks",
                                         "vlan_mode"};
constexpr const char* kInterfaceSettings[] = {"type",
                                              "options",
                                              "mac",
                                              "mtu_request",
                                              "ofport_request",
                                              "external_ids",
                                              "other_config",
                                              "lldp",
                                              "bfd",
                                              "ingress_policing_rate",
                                              "ingress_policing_burst"};

bool isKind(const json& column, const char* kind) {
  return column.is_array() && column.at(0) == kind;
}

/// The identifiers in a column: ["uuid", ID], or ["set", [["uuid", ID], …]].
std::vector<std::string> idsIn(const json& column) {
  if (column.at(0) == "uuid") return {column.at(1).get<std::string>()};
  std::vector<std::string> ids;
  for (const json& one : column.at(1)) ids.push_back(one.at(1).get<std::string>());
  return ids;
}

std::map<std::string, std::string> mapIn(const json& row, const char* column) {
  std::map<std::string, std::string> found;
  if (row.contains(column))
    for (const json& pair : row.at(column).at(1))
      found[pair.at(0).get<std::string>()] = pair.at(1).get<std::string>();
  return found;
}

/// A column as a value of ovs-vsctl; empty where nothing is configured.
std::string valueIn(const json& column) {
  if (isKind(column, "uuid")) return column.at(1).get<std::string>();
  if (!column.is_array()) return column == "" ? "" : column.dump();
  const bool isMap = isKind(column, "map");
  std::string list;
  for (const json& one : column.at(1)) {
    list += list.empty() ? "" : ",";
    list += isMap ? valueIn(one.at(0)) + "=" + one.at(1).dump() : valueIn(one);
  }
  if (list.empty()) return {};
  return isMap ? "{" + list + "}" : "[" + list + "]";
}

template <std::size_t Count>
std::vector<std::string> settingsIn(const json& row, const char* const (&columns)[Count]) {
  std::vector<std::string> settings;
  for (const char* column : columns)
    if (row.contains(column))
      if (const auto value = valueIn(row.at(column)); !value.empty())
        settings.push_back(std::string(column) + "=" + value);
  return settings;
}

std::string idOf(const json& row) {
  return row.at("_uuid").at(1).get<std::string>();
}

OvsInterface interfaceIn(const json& row) {
  return {idOf(row), row.at("name").get<std::string>(), row.value("type", ""),
          settingsIn(row, kInterfaceSettings)};
}

OvsPort portIn(const json& row) {
  OvsPort port;
  port.id = idOf(row);
  port.name = row.value("name", "");
  if (row.contains("tag") && row.at("tag").is_number_integer()) port.tag = row.at("tag");
  port.isolated = row.value("protected", false);
  port.externalIds = mapIn(row, "external_ids");
  port.settings = settingsIn(row, kPortSettings);
  return port;
}

std::map<std::string, json> byId(const json& table) {
  std::map<std::string, json> rows;
  for (const json& row : table.at("rows")) rows[idOf(row)] = row;
  return rows;
}

}  // namespace

std::optional<OvsBridges> ovsBridgesIn(const std::string& answer) try {
  const json tables = json::parse(answer).at("result");
  const auto ports = byId(tables.at(1)), interfaces = byId(tables.at(2));
  OvsBridges bridges;
  for (const json& row : tables.at(0).at("rows")) {
    OvsBridge bridge{idOf(row),
                     row.at("name").get<std::string>(),
                     !idsIn(row.at("controller")).empty(),
                     mapIn(row, "external_ids"),
                     {}};
    for (const auto& id : idsIn(row.at("ports"))) {
      if (ports.count(id) == 0) continue;
      OvsPort& port = bridge.ports.emplace_back(portIn(ports.at(id)));
      for (const auto& member : idsIn(ports.at(id).at("interfaces")))
        if (interfaces.count(member) != 0)
          port.interfaces.push_back(interfaceIn(interfaces.at(member)));
    }
    bridges.push_back(std::move(bridge));
  }
  return bridges;
} catch (const json::exception&) {
  return std::nullopt;
}

OvsInterfaces ovsInterfacesOf(const OvsBridges& bridges) {
  OvsInterfaces found;
  for (const auto& bridge : bridges)
    for (const auto& port : bridge.ports)
      for (const auto& interface : port.interfaces)
        found[interface.name] = bridge.controlled ? bridge.name : "";
  return found;
}

OvsPlace findOnOvs(const OvsBridges& bridges, const std::string& name) {
  for (const auto& bridge : bridges)
    for (const auto& port : bridge.ports)
      for (const auto& interface : port.interfaces)
        if (interface.name == name) return {&bridge, &port, &interface};
  return {};
}

}  // namespace HostLinux
