#include "sim/makers/z21_clients.h"

#include <algorithm>

namespace lokari::sim::makers {

bool Z21Clients::isPresent(const Client& client) const {
  return clock_.now() - client.spokeAt < kLongestSilence;
}

const Z21Clients::Client* Z21Clients::present(int client) const {
  const auto found = clients_.find(client);
  return found != clients_.end() && isPresent(found->second) ? &found->second : nullptr;
}

void Z21Clients::spoke(int client) {
  if (!knows(client)) clients_[client] = {};
  clients_[client].spokeAt = clock_.now();
}

quint32 Z21Clients::flags(int client) const {
  const Client* found = present(client);
  return found == nullptr ? 0 : found->flags;
}

void Z21Clients::setFlags(int client, quint32 flags) {
  clients_[client].flags = flags;
}

void Z21Clients::subscribe(int client, int address) {
  std::deque<int>& vehicles = clients_[client].vehicles;
  if (std::find(vehicles.begin(), vehicles.end(), address) != vehicles.end()) return;
  vehicles.push_back(address);
  if (vehicles.size() > kMostVehicles) vehicles.pop_front();
}

std::vector<int> Z21Clients::withFlag(quint32 flag) const {
  std::vector<int> found;
  for (const auto& [number, client] : clients_) {
    if (isPresent(client) && (client.flags & flag) != 0) found.push_back(number);
  }
  return found;
}

std::vector<int> Z21Clients::interestedIn(int address) const {
  std::vector<int> found;
  for (const auto& [number, client] : clients_) {
    if (!isPresent(client)) continue;
    const auto& vehicles = client.vehicles;
    const bool subscribed =
        std::find(vehicles.begin(), vehicles.end(), address) != vehicles.end() &&
        (client.flags & kZ21Broadcasts) != 0;
    if (subscribed || (client.flags & kZ21AllVehicles) != 0) found.push_back(number);
  }
  return found;
}

}  // namespace lokari::sim::makers
