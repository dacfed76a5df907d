#include "sim/makers/z21_station.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/bytes.h"
#include "sim/makers/xbus.h"
#include "sim/makers/z21_state.h"

namespace lokari::sim::makers {
namespace {

constexpr int kStop = 0x01;
constexpr int kOff = 0x02;
constexpr int kShortCircuit = 0x04;
constexpr int kProgramming = 0x20;

constexpr int kLastFunction = 31;
constexpr int kLastFunctionOfOld = 28;

/// DCC, MM, RailCom, commands for vehicles and accessories.
constexpr int kAbilities = 0x3B;

QByteArray low(quint32 value, int count) {
  QByteArray data;
  for (int i = 0; i < count; ++i) appendByte(data, static_cast<int>(value >> 8 * i & 0xFF));
  return data;
}

quint32 lowFirst(const QByteArray& data) {
  quint32 value = 0;
  for (qsizetype i = data.size(); i > 0; --i) {
    value = value << 8 | static_cast<quint32>(byteAt(data, i - 1));
  }
  return value;
}

int highFirst(const QByteArray& data, qsizetype at) {
  return byteAt(data, at) * 256 + byteAt(data, at + 1);
}

}  // namespace

std::span<const Z21Station::Row> Z21Station::records() {
  static constexpr std::array kRows{
      Row{0x10, kAny, 0, &Z21Station::tellSerialNumber},
      Row{0x18, kAny, 0, &Z21Station::tellFeatureLock},
      Row{0x1A, kAny, 0, &Z21Station::tellHardware},
      Row{0x30, kAny, 0, &Z21Station::logOff},
      Row{kXBusHeader, kAny, kAny, &Z21Station::obeyXBus},
      Row{0x50, kAny, 4, &Z21Station::setFlags},
      Row{0x51, kAny, 0, &Z21Station::tellFlags},
      Row{0x60, kAny, 2, &Z21Station::tellFormat},
      Row{0x61, kAny, 3, &Z21Station::setFormat},
      Row{0x85, kAny, 0, &Z21Station::tellSystemState},
  };
  return kRows;
}

std::span<const Z21Station::Row> Z21Station::xBusMessages() {
  static constexpr std::array kRows{
      Row{0x21, 0x21, 2, &Z21Station::tellVersion}, Row{0x21, 0x24, 2, &Z21Station::tellStatus},
      Row{0x21, 0x80, 2, &Z21Station::switchOff},   Row{0x21, 0x81, 2, &Z21Station::switchOn},
      Row{0x23, 0x11, 4, &Z21Station::readCv},      Row{0x24, 0x12, 5, &Z21Station::writeCv},
      Row{0x43, kAny, 3, &Z21Station::tellTurnout}, Row{0x53, kAny, 4, &Z21Station::switchTurnout},
      Row{0x80, kAny, 1, &Z21Station::stopAll},     Row{0x92, kAny, 3, &Z21Station::stopOne},
      Row{0xE3, 0xF0, 4, &Z21Station::tellVehicle}, Row{0xE4, kAny, 5, &Z21Station::drive},
      Row{0xE6, 0x30, 7, &Z21Station::accessMain},  Row{0xF1, 0x0A, 2, &Z21Station::tellFirmware},
  };
  return kRows;
}

void Z21Station::receiveFrom(int client, const QByteArray& datagram) {
  obeyDatagram(client, datagram);
  for (const auto& [recipient, records] : std::exchange(bundles_, {})) {
    answerTo(recipient, records, answerDelay());
  }
}

void Z21Station::obeyDatagram(int client, const QByteArray& datagram) {
  const QList<Z21Record> found = z21Records(datagram);
  for (const Z21Record& record : found) {
    clients_.spoke(client);
    for (const Row& row : records()) {
      const bool sized = row.size == kAny || row.size == record.data.size();
      if (row.code == record.header && sized) (this->*row.obey)(client, record.data);
    }
  }
}

void Z21Station::obeyXBus(int client, const QByteArray& data) {
  for (const Row& row : xBusMessages()) {
    if (row.code != byteAt(data, 0) || row.size != data.size()) continue;
    if (row.second == kAny || row.second == byteAt(data, 1)) return (this->*row.obey)(client, data);
  }
  refuse(client);
}

void Z21Station::tellSerialNumber(int client, const QByteArray& /*data*/) {
  tell(client, 0x10, low(kSerialNumber, 4));
}

void Z21Station::tellFeatureLock(int client, const QByteArray& /*data*/) {
  tell(client, 0x18, bytes({0}));
}

void Z21Station::tellHardware(int client, const QByteArray& /*data*/) {
  tell(client, 0x1A, low(0x201, 4) + low(isOld() ? 0x141 : 0x143, 4));
}

void Z21Station::logOff(int client, const QByteArray& /*data*/) {
  clients_.leave(client);
}

void Z21Station::setFlags(int client, const QByteArray& data) {
  clients_.setFlags(client, lowFirst(data));
}

void Z21Station::tellFlags(int client, const QByteArray& /*data*/) {
  tell(client, 0x51, low(clients_.flags(client), 4));
}

void Z21Station::tellFormat(int client, const QByteArray& data) {
  const auto found = formats_.find(highFirst(data, 0));
  tell(client, 0x60, data + bytes({found == formats_.end() ? 0 : found->second}));
}

void Z21Station::setFormat(int /*client*/, const QByteArray& data) {
  formats_[highFirst(data, 0)] = byteAt(data, 2) & 1;
}

void Z21Station::tellSystemState(int client, const QByteArray& /*data*/) {
  tell(client, 0x84, systemState());
}

void Z21Station::tellVersion(int client, const QByteArray& /*data*/) {
  tellXBus(client, bytes({0x63, 0x21, 0x30, 0x12}));
}

void Z21Station::tellFirmware(int client, const QByteArray& /*data*/) {
  tellXBus(client, bytes({0xF3, 0x0A, 0x01, isOld() ? 0x41 : 0x43}));
}

void Z21Station::tellStatus(int client, const QByteArray& /*data*/) {
  tellXBus(client, bytes({0x62, 0x22, status()}));
}

void Z21Station::switchOff(int client, const QByteArray& /*data*/) {
  layout().setTrackPower(false);
  broadcast(client, bytes({0x61, 0x00}));
  systemChanged();
}

void Z21Station::switchOn(int client, const QByteArray& /*data*/) {
  programming_ = false;
  layout().setStopped(false);
  layout().setTrackPower(true);
  broadcast(client, bytes({0x61, 0x01}));
  systemChanged();
}

void Z21Station::stopAll(int client, const QByteArray& /*data*/) {
  layout().setStopped(true);
  broadcast(client, bytes({0x81, 0x00}));
  systemChanged();
}

void Z21Station::stopOne(int client, const QByteArray& data) {
  if (isOld()) return refuse(client);
  const int address = xBusAddress(data, 1);
  DriveState state = layout().drive(address);
  state.speed = 0;
  layout().setDrive(address, state);
  reportEmergencyStop(layout(), address);
  vehicleChanged(address);
}

void Z21Station::tellVehicle(int client, const QByteArray& data) {
  const int address = xBusAddress(data, 2);
  clients_.subscribe(client, address);
  tellXBus(client, z21VehicleState(address, layout().drive(address), options_.stateSize));
}

void Z21Station::drive(int client, const QByteArray& data) {
  const auto command = z21Drive(data, isOld() ? kLastFunctionOfOld : kLastFunction, layout());
  if (!command) return refuse(client);
  layout().setDrive(command->address, command->state);
  if (command->emergencyStop) reportEmergencyStop(layout(), command->address);
  vehicleChanged(command->address);
}

void Z21Station::tellTurnout(int client, const QByteArray& data) {
  tellXBus(client, turnoutState(highFirst(data, 1)));
}

void Z21Station::switchTurnout(int client, const QByteArray& data) {
  constexpr int kFixed = 0xD6;
  const int what = byteAt(data, 3);
  if ((what & kFixed) != 0x80) return refuse(client);
  const int number = highFirst(data, 1);
  accessories_.set(number + 1, what & 1, (what & 0x08) != 0);
  for (const int each : clients_.withFlag(kZ21Broadcasts)) tellXBus(each, turnoutState(number));
}

void Z21Station::readCv(int client, const QByteArray& data) {
  enterProgrammingMode(client);
  const int cv = highFirst(data, 2) + 1;
  giveResult(client, readOnProgrammingTrack(cv, Method::Direct), cv);
}

void Z21Station::writeCv(int client, const QByteArray& data) {
  enterProgrammingMode(client);
  const int cv = highFirst(data, 2) + 1;
  giveResult(client, writeOnProgrammingTrack(cv, byteAt(data, 4), Method::Direct), cv);
}

void Z21Station::accessMain(int client, const QByteArray& data) {
  const auto access = mainTrackAccess(data);
  if (!access) return refuse(client);
  if (access->kind == MainTrackAccess::Kind::Read) {
    return giveResult(client, readOnMainTrack(access->address, access->cv), access->cv);
  }
  const Decoder* decoder = layout().onMainTrack(access->address);
  const int held = decoder == nullptr ? 0 : decoder->stored(access->cv);
  writeOnMainTrack(access->address, access->cv, access->written(held));
}

int Z21Station::status() const {
  int bits = 0;
  if (layout().stopped()) bits |= kStop;
  if (!layout().trackPower()) bits |= kOff;
  if (layout().overloaded()) bits |= kShortCircuit;
  if (programming_) bits |= kProgramming;
  return bits;
}

QByteArray Z21Station::systemState() const {
  constexpr quint32 kCelsius = 25;
  constexpr quint32 kSupply = 18000;
  const quint32 track = layout().trackPower() ? 16000 : 0;
  return low(0, 2) + low(0, 2) + low(0, 2) + low(kCelsius, 2) + low(kSupply, 2) + low(track, 2) +
         bytes({status(), layout().overloaded() ? 0x08 : 0, 0, isOld() ? 0 : kAbilities});
}

QByteArray Z21Station::turnoutState(int number) const {
  const std::optional<int> output = accessories_.lastOutput(number + 1);
  return bytes({0x43, number >> 8, number & 0xFF, output ? *output + 1 : 0});
}

void Z21Station::enterProgrammingMode(int client) {
  if (programming_) return;
  programming_ = true;
  broadcast(client, bytes({0x61, 0x02}));
  systemChanged();
}

void Z21Station::giveResult(int client, const TrackResult& result, int cv) {
  static const std::map<TrackAnswer, QByteArray> kFailures{
      {TrackAnswer::Busy, bytes({0x61, 0x82})},
      {TrackAnswer::ShortCircuit, bytes({0x61, 0x12})},
      {TrackAnswer::NoDecoder, bytes({0x61, 0x13})},
      {TrackAnswer::NoAck, bytes({0x61, 0x13})},
  };
  const auto failure = kFailures.find(result.answer);
  const QByteArray message =
      failure != kFailures.end()
          ? failure->second
          : bytes({0x64, 0x14, (cv - 1) >> 8, (cv - 1) & 0xFF, result.value});
  // The station answers other questions meanwhile.
  later(options_.accessTime, [this, client, record = z21Bytes({kXBusHeader, message})] {
    const std::vector<int> recipients =
        options_.subscribersOnly ? clients_.withFlag(kZ21Broadcasts) : std::vector{client};
    for (const int each : recipients) answerTo(each, record, 0);
  });
}

void Z21Station::vehicleChanged(int address) {
  const QByteArray state = z21VehicleState(address, layout().drive(address), options_.stateSize);
  for (const int each : clients_.interestedIn(address)) tellXBus(each, state);
}

void Z21Station::systemChanged() {
  for (const int each : clients_.withFlag(kZ21SystemState)) tell(each, 0x84, systemState());
}

void Z21Station::refuse(int client) {
  tellXBus(client, bytes({0x61, 0x82}));
}

void Z21Station::tell(int client, int header, const QByteArray& data) {
  if (options_.bundled) {
    bundles_[client] += z21Bytes({header, data});
  } else {
    answerTo(client, z21Bytes({header, data}), answerDelay());
  }
}

void Z21Station::tellXBus(int client, const QByteArray& message) {
  tell(client, kXBusHeader, message);
}

void Z21Station::broadcast(int asker, const QByteArray& message) {
  std::vector<int> recipients = clients_.withFlag(kZ21Broadcasts);
  const bool served = std::find(recipients.begin(), recipients.end(), asker) != recipients.end();
  if (!served && !options_.subscribersOnly) recipients.push_back(asker);
  for (const int each : recipients) tellXBus(each, message);
}

QByteArray Z21Station::unasked() const {
  return z21Bytes({kXBusHeader, bytes({0x61, 0x01})});
}

}  // namespace lokari::sim::makers
