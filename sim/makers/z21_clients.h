// Who has spoken to a Z21, and what each wants to hear.
//
// There is no logon: the first message of a client counts as one. One that was silent for 60 s, or
// has logged off, is forgotten with its flags and vehicles.
#pragma once

#include <deque>
#include <map>
#include <vector>

#include "base/clock.h"

namespace lokari::sim::makers {

inline constexpr quint32 kZ21Broadcasts = 0x00000001;
inline constexpr quint32 kZ21SystemState = 0x00000100;
inline constexpr quint32 kZ21AllVehicles = 0x00010000;

class Z21Clients {
 public:
  static constexpr size_t kMostVehicles = 16;
  static constexpr Millis kLongestSilence = 60000;

  explicit Z21Clients(const Clock& clock) : clock_(clock) {}

  void spoke(int client);
  void leave(int client) { clients_.erase(client); }
  bool knows(int client) const { return present(client) != nullptr; }

  quint32 flags(int client) const;
  void setFlags(int client, quint32 flags);
  /// It has asked for a vehicle. One too many pushes the oldest out.
  void subscribe(int client, int address);

  std::vector<int> withFlag(quint32 flag) const;
  /// Who is told of a vehicle's change: subscribers of it that want broadcasts, and those that want
  /// all vehicles.
  std::vector<int> interestedIn(int address) const;

 private:
  struct Client {
    Millis spokeAt = 0;
    quint32 flags = 0;
    std::deque<int> vehicles;
  };

  bool isPresent(const Client& client) const;
  const Client* present(int client) const;

  const Clock& clock_;
  std::map<int, Client> clients_;
};

}  // namespace lokari::sim::makers
