// SPDX-License-Identifier: MIT
#include "network/adapter_list.h"

#include <string.h>

#include <algorithm>
#include <iterator>

#include "core/log.h"
#include "hostctl/lib/exception.h"
#include "tarnctl/network/network_info_impl.h"
#include "ui/markup_text.h"
#include "ui/utf8.h"

namespace Kiva {

using HostCtl::Network::PnicRecord;

namespace {

constexpr int kNameColumns = 13;
constexpr int kLabelColumns = 30;
constexpr int kStatusColumns = std::char_traits<char>::length(kDisconnected);

std::string cell(int columns, const std::string& text) {
  return "{align:padding:" + std::to_string(columns) + "}" + text + "{/align}";
}

std::string row(const std::string& name, const std::string& label, const std::string& status) {
  return cell(kNameColumns, name) + cell(kLabelColumns, label) + status;
}

PnicRecord only(const std::string& name) {
  PnicRecord record;
  record.name = name;
  return record;
}

}  // namespace

std::optional<Pnics> readPnics() try {
  return TarnCtl::Network::NetworkInfoImpl().GetPnics();
} catch (const HostCtl::Lib::HostCtlException& e) {
  logError("%s", e.what());
  return std::nullopt;
}

Pnics ordered(Pnics pnics, const std::vector<std::string>& first) {
  std::sort(pnics.begin(), pnics.end(), [](const PnicRecord& a, const PnicRecord& b) {
    return strverscmp(a.name.c_str(), b.name.c_str()) < 0;
  });
  Pnics all;
  for (const std::string& name : first) {
    const auto found = std::find_if(pnics.begin(), pnics.end(),
                                    [&](const PnicRecord& pnic) { return pnic.name == name; });
    all.push_back(found == pnics.end() ? only(name) : std::move(*found));
    if (found != pnics.end()) pnics.erase(found);
  }
  std::move(pnics.begin(), pnics.end(), std::back_inserter(all));
  return all;
}

std::string hardwareLabel(const PnicRecord& pnic) {
  return plainText(squeezeBlanks(repairedUtf8(pnic.description)));
}

std::string linkStatus(const PnicRecord& pnic) {
  if (pnic == only(pnic.name)) return "";
  return pnic.linkUp ? "Connected" : kDisconnected;
}

std::string adapterHeading() {
  return row("Device Name", "Hardware Label (MAC Address)", "Status");
}

// One blank at least stands before the status.
std::string adapterLine(const PnicRecord& pnic) {
  constexpr int kRoom = kLabelColumns - 1;
  const std::string mac = pnic.macAddress.empty() ? "" : " (" + plainText(pnic.macAddress) + ")";
  const std::string label = cut(hardwareLabel(pnic), kRoom - columnCount(mac)) + mac;
  return row(plainText(pnic.name), std::string(firstColumns(label, kRoom)), linkStatus(pnic));
}

std::string adapterSummary(const Pnics& pnics, int columns) {
  int nameColumns = 0;
  for (const PnicRecord& pnic : pnics)
    nameColumns = std::max(nameColumns, columnCount(plainText(pnic.name)) + 1);
  const int labelColumns = std::max(0, columns - nameColumns - kStatusColumns);
  std::string text;
  for (const PnicRecord& pnic : pnics)
    text += (text.empty() ? "" : "\n") + cell(nameColumns, plainText(pnic.name)) +
            cell(labelColumns, cut(hardwareLabel(pnic), labelColumns - 1)) + linkStatus(pnic);
  return text;
}

}  // namespace Kiva
