#include "sim/makers/p50x_station.h"

#include <array>
#include <utility>

#include "base/bytes.h"

namespace lokari::sim::makers {
namespace {

/// A sender who pauses longer inside a command has lost the rest of it.
constexpr Millis kLongestPause = 1000;

/// Queues of vehicles and turnouts: try later.
constexpr int kVehiclesFull = 0x08;
constexpr int kTurnoutsFull = 0x09;

constexpr int kBusy = 0x80;
constexpr int kNothingYet = 0xF5;
constexpr int kMainRead = 0xDA;

}  // namespace

P50xStation::P50xStation(const Surroundings& surroundings, const MakersOptions& options,
                         P50xModel model)
    : Station(surroundings),
      options_(options),
      model_(std::move(model)),
      reader_([this](int operation) { return sizeOf(operation); }),
      driving_(surroundings.layout, model_.dccFormat) {
  if (options_.fewVersions) model_.versions = bytes({0x02, 0x50, 0x15, 0x01, 0x14, 0x00});
}

std::span<const P50xStation::Row> P50xStation::rows() {
  using Driving = P50xDriving;
  using Self = P50xStation;
  constexpr auto kFirst = Since::First;
  constexpr auto kNewer = Since::Newer;
  static constexpr std::array kRows{
      Row{0x80, 5, kFirst, &Driving::drive, nullptr, kVehiclesFull},
      Row{0x84, 3, kFirst, &Driving::tellVehicle, nullptr, kVehiclesFull},
      Row{0x85, 3, kFirst, &Driving::tellConfiguration, nullptr, kVehiclesFull},
      Row{0x88, 4, kFirst, &Driving::switchFunctions, nullptr, kVehiclesFull},
      Row{0x89, 4, kNewer, &Driving::switchFunctions, nullptr, kVehiclesFull},
      Row{0x8A, 5, kNewer, &Driving::switchFunctions, nullptr, kVehiclesFull},
      Row{0x8C, 3, kFirst, &Driving::tellFunctions, nullptr, kVehiclesFull},
      Row{0x8D, 3, kNewer, &Driving::tellFunctions, nullptr, kVehiclesFull},
      Row{0x8E, 3, kNewer, &Driving::tellFunctions, nullptr, kVehiclesFull},
      Row{0x90, 3, kFirst, &Driving::switchTurnout, nullptr, kTurnoutsFull},
      Row{0x94, 3, kFirst, &Driving::tellTurnout, nullptr, kTurnoutsFull},
      Row{0x95, 2, kFirst, &Driving::tellTurnouts, nullptr, kTurnoutsFull},
      Row{0x98, 2, kFirst, nullptr, &Self::noContacts},
      Row{0x99, 1, kFirst, nullptr, &Self::done},
      Row{0xA0, 1, kFirst, nullptr, &Self::tellVersions},
      Row{0xA2, 1, kFirst, nullptr, &Self::tellState},
      Row{0xA5, 1, kFirst, nullptr, &Self::halt},
      Row{0xA6, 1, kFirst, nullptr, &Self::powerOff},
      Row{0xA7, 1, kFirst, nullptr, &Self::powerOn},
      Row{0xC8, 1, kFirst, nullptr, &Self::tellEvents},
      Row{0xC9, 1, kFirst, nullptr, &Self::noVehicles},
      Row{0xCA, 1, kFirst, nullptr, &Self::done},
      Row{0xCB, 1, kFirst, nullptr, &Self::done},
      Row{0xCE, 1, kFirst, nullptr, &Self::tellResult},
      Row{0xE0, 1, kFirst, nullptr, &Self::done},
      Row{0xE1, 1, kFirst, nullptr, &Self::done},
      Row{0xE2, 1, kFirst, nullptr, &Self::endProgramming},
  };
  return kRows;
}

const P50xStation::Row* P50xStation::rowOf(int operation) const {
  for (const Row& row : rows()) {
    if (row.code == operation && (model_.newer || row.since == Since::First)) return &row;
  }
  return nullptr;
}

bool P50xStation::knowsAccess(int operation) const {
  return p50xAccessSize(operation) > 0 && (model_.newer || operation != kMainRead);
}

qsizetype P50xStation::sizeOf(int operation) const {
  if (const Row* row = rowOf(operation)) return row->size;
  return knowsAccess(operation) ? p50xAccessSize(operation) : 1;
}

void P50xStation::receive(const QByteArray& data) {
  if (clock().now() - lastAt_ > kLongestPause) reader_.clear();
  lastAt_ = clock().now();
  const QList<QByteArray> commands = reader_.feed(data);
  for (const QByteArray& command : commands) obey(command);
}

void P50xStation::obey(const QByteArray& command) {
  const int operation = byteAt(command, 0);
  const Row* row = rowOf(operation);
  if (row != nullptr && row->drive != nullptr) {
    const bool full = isBusy();
    answer(full ? bytes({row->full}) : (driving_.*row->drive)(command));
  } else if (row != nullptr) {
    answer((this->*row->obey)());
  } else {
    answer(bytes({knowsAccess(operation) ? program(command) : kP50xUnknown}));
  }
}

int P50xStation::program(const QByteArray& command) {
  P50xAccess access = p50xAccess(command);
  if (!access.isGood()) return kP50xBadParameter;
  if (!result_.isEmpty() && clock().now() < resultAt_) return kBusy;
  if (access.bit) {
    const Decoder* decoder = layout().onProgrammingTrack();
    const int held = decoder == nullptr ? 0 : decoder->stored(access.cv);
    const int mask = 1 << *access.bit;
    access.value = (access.value & 1) != 0 ? held | mask : held & ~mask;
  }
  TrackResult result;
  if (access.main) {
    result = access.write ? writeOnMainTrack(access.address, access.cv, access.value)
                          : readOnMainTrack(access.address, access.cv);
    // A vehicle on the main track confirms no write.
    if (access.write && result.answer == TrackAnswer::NoDecoder) result = {};
  } else {
    result = access.write ? writeOnProgrammingTrack(access.cv, access.value, access.method)
                          : readOnProgrammingTrack(access.cv, access.method);
  }
  if (result.answer == TrackAnswer::Busy) return kBusy;
  result_ = p50xResult(access, result);
  resultAt_ = clock().now() + options_.accessTime;
  return kP50xDone;
}

QByteArray P50xStation::done() {
  return bytes({kP50xDone});
}

QByteArray P50xStation::noContacts() {
  return bytes({kP50xDone, 0, 0});
}

QByteArray P50xStation::tellVersions() {
  return model_.versions;
}

QByteArray P50xStation::tellState() {
  constexpr int kHalt = 0x10;
  constexpr int kPowerOn = 0x08;
  constexpr int kTooHot = 0x04;
  return bytes({(layout().stopped() ? kHalt : 0) | (layout().trackPower() ? kPowerOn : 0) |
                (layout().overloaded() ? kTooHot : 0)});
}

QByteArray P50xStation::halt() {
  layout().setStopped(true);
  return done();
}

QByteArray P50xStation::powerOff() {
  layout().setTrackPower(false);
  return done();
}

QByteArray P50xStation::powerOn() {
  if (layout().overloaded()) return bytes({kP50xPowerOff});
  layout().setStopped(false);
  layout().setTrackPower(true);
  return done();
}

QByteArray P50xStation::tellEvents() {
  const bool waiting = !result_.isEmpty() && clock().now() >= resultAt_;
  return waiting ? bytes({0x80, 0x80, 0x01}) : bytes({0});
}

QByteArray P50xStation::noVehicles() {
  return bytes({0x80});
}

QByteArray P50xStation::tellResult() {
  if (result_.isEmpty() || clock().now() < resultAt_) return bytes({kNothingYet});
  return std::exchange(result_, {});
}

QByteArray P50xStation::endProgramming() {
  result_.clear();
  return done();
}

IntelliboxStation::IntelliboxStation(const Surroundings& surroundings, const MakersOptions& options)
    : P50xStation(surroundings, options,
                  {.versions = bytes({0x02, 0x50, 0x15, 0x02, 0x10, 0x13, 0x01, 0x14, 0x01, 0x09,
                                      0x01, 0x2A, 0x05, 0x00, 0x01, 0x23, 0x4F, 0x56, 0x00}),
                   .dccFormat = 2,
                   .newer = false}) {}

TamsStation::TamsStation(const Surroundings& surroundings, const MakersOptions& options)
    : P50xStation(surroundings, options,
                  {.versions = bytes({0x03, 0x02, 0x01, 0x04, 0x04, 0x00, 0x01, 0xE2, 0x40, 0x00}),
                   .dccFormat = 3,
                   .newer = true}) {}

}  // namespace lokari::sim::makers
