// Driving and switching through the simulated station with the binary protocol.
#include "base/bytes.h"
#include "sim/zimo_binary_station.h"
#include "sim/zimo_vehicle.h"

namespace lokari::sim {
namespace {

constexpr int kAccepted = 0x00;
constexpr int kUnknown = 0x03;
constexpr int kBusy = 0x04;

constexpr int kLongAddressMark = 0xC0;
constexpr int kHighestShortAddress = 127;

/// The address behind the command byte.
int addressIn(const ZimoFrame& request) {
  return (byteAt(request.payload, 1) & ~kLongAddressMark) * 256 + byteAt(request.payload, 2);
}

}  // namespace

void ZimoBinaryStation::obeyDriving(const ZimoFrame& request) {
  struct Row {
    int command;
    qsizetype least;
    qsizetype most;
    void (ZimoBinaryStation::*obey)(const ZimoFrame&);
  };
  // A question may be longer: a cab without a state sends one in a driving command's place.
  static constexpr Row kRows[] = {
      {0x03, 6, 7, &ZimoBinaryStation::driveVehicle},
      {0x07, 4, 4, &ZimoBinaryStation::switchUnit},
      {0x08, 3, 7, &ZimoBinaryStation::tellVehicle},
      {0x09, 3, 3, &ZimoBinaryStation::tellUnit},
  };
  const qsizetype size = request.payload.size();
  for (const Row& row : kRows) {
    if (row.command != byteAt(request.payload, 0) || size < row.least || size > row.most) continue;
    if (isBusy()) {
      confirm(request, kBusy);
    } else {
      (this->*row.obey)(request);
    }
    return;
  }
  confirm(request, kUnknown);
}

void ZimoBinaryStation::driveVehicle(const ZimoFrame& request) {
  const QByteArray& payload = request.payload;
  const int address = addressIn(request);
  ZimoVehicle vehicle = zimoVehicleFrom(layout().drive(address));
  vehicle.speed = byteAt(payload, 3);
  vehicle.flags = byteAt(payload, 4);
  vehicle.low = byteAt(payload, 5);
  if (payload.size() > 6) vehicle.high = byteAt(payload, 6);
  layout().setDrive(address, driveStateFrom(vehicle));
  confirm(request, kAccepted);
}

void ZimoBinaryStation::tellVehicle(const ZimoFrame& request) {
  const int address = addressIn(request);
  const ZimoVehicle vehicle = zimoVehicleFrom(layout().drive(address));
  const int mark = address > kHighestShortAddress ? kLongAddressMark : 0;
  answer(frame(request, true,
               bytes({kAccepted, address / 256 | mark, address % 256, vehicle.speed, vehicle.flags,
                      vehicle.low, vehicle.high})));
}

void ZimoBinaryStation::switchUnit(const ZimoFrame& request) {
  const bool known = switchZimoOutput(layout(), addressIn(request), byteAt(request.payload, 3));
  confirm(request, known ? kAccepted : kUnknown);
}

void ZimoBinaryStation::tellUnit(const ZimoFrame& request) {
  const int unit = addressIn(request);
  answer(frame(request, true,
               bytes({kAccepted, unit / 256, unit % 256, 0x00, zimoOutputs(layout(), unit)})));
}

}  // namespace lokari::sim
