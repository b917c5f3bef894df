// SPDX-License-Identifier: MIT
#include <algorithm>
#include <sstream>

#include "src/enter.h"
#include "src/stack.h"
#include "tarnctl/network/network_info_impl.h"

namespace TarnCtl::Network {

using namespace HostCtl::Network;

struct DnsConfigImpl::State {
  HostSeam::DnsRecord now;
  HostSeam::DnsChange change;
};

DnsConfigImpl::DnsConfigImpl(const std::string& stack) {
  enterStack("DnsConfig", stack);
}
DnsConfigImpl::~DnsConfigImpl() = default;

void DnsConfigImpl::Refresh() {
  state_ = std::make_unique<State>(State{enter("DnsConfig.Refresh").ReadDns(), {}});
}

DnsConfigImpl::State& DnsConfigImpl::Read() {
  if (!state_) Refresh();
  return *state_;
}

std::string DnsConfigImpl::GetHostname() {
  return enter("GetHostname"), Read().now.hostname;
}

std::string DnsConfigImpl::GetDomain() {
  enter("GetDomain");
  const State& state = Read();
  return state.change.domain.value_or(state.now.domain);
}

std::vector<IpAddress> DnsConfigImpl::GetNameServers() {
  return enter("GetNameServers"), Read().now.nameServers;
}

std::vector<std::string> DnsConfigImpl::GetSearchDomains() {
  return enter("GetSearchDomains"), Read().now.searchDomains;
}

void DnsConfigImpl::SetHostname(const std::string& name, bool) {
  enterChange("SetHostname", name);
  Read().change.hostname = name;
}

void DnsConfigImpl::SetFqdn(const std::string& host, bool, const std::string& domain) {
  enterChange("SetFqdn", host, domain);
  Read().change.hostname = host;
  Read().change.domain = domain;
}

void DnsConfigImpl::RemoveNameServers() {
  enterChange("RemoveNameServers");
  Read().change.nameServers.emplace();
}

void DnsConfigImpl::AddUserNameServer(const IpAddress& server) {
  enterChange("AddUserNameServer", toString(server));
  State& state = Read();
  if (!state.change.nameServers) state.change.nameServers = state.now.nameServers;
  state.change.nameServers->push_back(server);
}

void DnsConfigImpl::SetSearchDomainsString(const std::string& domains) {
  enterChange("SetSearchDomainsString", domains);
  auto& list = Read().change.searchDomains.emplace();
  std::istringstream words(domains);
  for (std::string word; words >> word;) list.push_back(word);
}

void DnsConfigImpl::AddUserSearchDomain(const std::string& domain) {
  enterChange("AddUserSearchDomain", domain);
  State& state = Read();
  if (!state.change.searchDomains) state.change.searchDomains = state.now.searchDomains;
  auto& list = *state.change.searchDomains;
  if (std::find(list.begin(), list.end(), domain) == list.end()) list.push_back(domain);
}

void DnsConfigImpl::SaveConfig() {
  enterChange("SaveConfig").Network().WriteDns(Read().change);
  Refresh();
}

}  // namespace TarnCtl::Network
