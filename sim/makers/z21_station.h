// A Z21 as its maker's documents describe it: LAN protocol up to 1.13.
//
// Records (z21_records.h) and their answers; n n n n is low byte first:
//
//   10           serial number: 10 n n n n          18           feature lock: 18 00
//   1A           hardware 201, firmware (BCD)       30           logoff; no answer
//   50 f f f f   sets the client's flags            51           asks for them: 51 f f f f
//   60 address   format of an address below 256: 60 address 0 DCC or 1 MM
//   61 address m sets it                            85           system state: 84 and 16 bytes
//   40           X-Bus, xbus.h:
//     21 21         version: 63 21 30 12            F1 0A        firmware: F3 0A and BCD
//     21 24         status: 62 22 and bits 01 stop, 02 off, 04 short circuit, 20 programming mode
//     21 80, 21 81  track off, on: broadcast 61 00, 61 01; on also ends stop and programming mode
//     80            stop of all vehicles: broadcast 81 00
//     92 address    stop of one                     E3 F0 address   vehicle: EF, z21_state.h
//     E4            drive, switch functions         43 number    turnout: 43 number state
//     53 number 10Q0A00P   switch a turnout's output P: A = 1 on, 0 off
//     23 11 cv, 24 12 cv value   programming track; the first of them takes the station into
//                   programming mode, broadcast 61 02
//     E6 30         main track
//     others        61 82
//
// CV results are 64 14 cv value, 61 13 no acknowledge, 61 12 short circuit. Broadcasts go to
// clients with flag 1, vehicles' states to those who want them, z21_clients.h. A wrong checksum is
// not answered. A state of 14 bytes is that of a firmware ahead of 1.42, which knows F0 to F28 and
// no stop of one vehicle.
#pragma once

#include <map>
#include <span>

#include "sim/makers/accessories.h"
#include "sim/makers/makers_options.h"
#include "sim/makers/z21_clients.h"
#include "sim/makers/z21_records.h"
#include "sim/station.h"

namespace lokari::sim::makers {

class Z21Station final : public Station {
 public:
  static constexpr quint32 kSerialNumber = 123456;

  Z21Station(const Surroundings& surroundings, const MakersOptions& options)
      : Station(surroundings),
        options_(options),
        clients_(surroundings.clock),
        accessories_(surroundings.layout) {}

  void receive(const QByteArray& datagram) override { receiveFrom(0, datagram); }
  void receiveFrom(int client, const QByteArray& datagram) override;

  const Z21Clients& clients() const { return clients_; }
  const Accessories& accessories() const { return accessories_; }
  bool inProgrammingMode() const { return programming_; }

 protected:
  /// Another client has switched the track on.
  QByteArray unasked() const override;

 private:
  using Handler = void (Z21Station::*)(int client, const QByteArray& data);
  struct Row {
    int code;        ///< of a record its header, of an X-Bus message its first byte
    int second;      ///< byte of an X-Bus message, or kAny
    qsizetype size;  ///< of the data, or kAny
    Handler obey;
  };
  static constexpr int kAny = -1;
  static std::span<const Row> records();
  static std::span<const Row> xBusMessages();

  void obeyDatagram(int client, const QByteArray& datagram);
  void obeyXBus(int client, const QByteArray& data);

  void tellSerialNumber(int client, const QByteArray& data);
  void tellFeatureLock(int client, const QByteArray& data);
  void tellHardware(int client, const QByteArray& data);
  void logOff(int client, const QByteArray& data);
  void setFlags(int client, const QByteArray& data);
  void tellFlags(int client, const QByteArray& data);
  void tellFormat(int client, const QByteArray& data);
  void setFormat(int client, const QByteArray& data);
  void tellSystemState(int client, const QByteArray& data);

  void tellVersion(int client, const QByteArray& data);
  void tellFirmware(int client, const QByteArray& data);
  void tellStatus(int client, const QByteArray& data);
  void switchOff(int client, const QByteArray& data);
  void switchOn(int client, const QByteArray& data);
  void stopAll(int client, const QByteArray& data);
  void stopOne(int client, const QByteArray& data);
  void tellVehicle(int client, const QByteArray& data);
  void drive(int client, const QByteArray& data);
  void tellTurnout(int client, const QByteArray& data);
  void switchTurnout(int client, const QByteArray& data);
  void readCv(int client, const QByteArray& data);
  void writeCv(int client, const QByteArray& data);
  void accessMain(int client, const QByteArray& data);

  bool isOld() const { return options_.stateSize < 15; }
  int status() const;
  QByteArray systemState() const;
  QByteArray turnoutState(int number) const;
  void enterProgrammingMode(int client);
  void giveResult(int client, const TrackResult& result, int cv);
  void vehicleChanged(int address);
  void systemChanged();
  void refuse(int client);

  void tell(int client, int header, const QByteArray& data);
  void tellXBus(int client, const QByteArray& message);
  /// To those who want broadcasts; `asker` brought it about.
  void broadcast(int asker, const QByteArray& message);

  MakersOptions options_;
  Z21Clients clients_;
  Accessories accessories_;
  bool programming_ = false;
  std::map<int, int> formats_;
  std::map<int, QByteArray> bundles_;  ///< by client
};

}  // namespace lokari::sim::makers
