#include "sim/zimo_binary_station.h"

#include "base/bytes.h"

namespace lokari::sim {
namespace {

constexpr int kAnswerBit = 0x40;

constexpr int kGreeting = 0x00;
constexpr int kTrack = 0x02;
constexpr int kTrackOff = 0x00;
constexpr int kTrackOn = 0x02;
constexpr int kAskTrack = 0x03;
constexpr int kWho = 0x0D;
constexpr int kLogOnOff = 0x11;
constexpr int kCvAccess = 0x13;
constexpr int kVehicleNews = 0xFF;

constexpr int kAccepted = 0x00;
constexpr int kUnknown = 0x03;
constexpr int kBusy = 0x04;

/// Time the programming track takes for one CV.
constexpr Millis kTrackTime = 250;

int errorOf(TrackAnswer answer) {
  switch (answer) {
    case TrackAnswer::NoAck:
      return 1;
    case TrackAnswer::NoDecoder:
      return 2;
    case TrackAnswer::ShortCircuit:
      return 3;
    case TrackAnswer::Value:
    case TrackAnswer::Busy:
      break;
  }
  return kBusy;
}

}  // namespace

void ZimoBinaryStation::receive(const QByteArray& data) {
  for (const ZimoFrame& each : reader_.feed(data)) {
    if ((each.type & kAnswerBit) != 0) {
      takeAcknowledgement(each);
    } else {
      obey(each);
    }
  }
}

void ZimoBinaryStation::takeAcknowledgement(const ZimoFrame& frame) {
  const bool ofResult = byteAt(frame.payload, 0) == kCvAccess &&
                        byteAt(frame.payload, 1) == resultSeq_ && byteAt(frame.payload, 2) == 0;
  if (ofResult && unacknowledged_ > 0) --unacknowledged_;
}

void ZimoBinaryStation::obey(const ZimoFrame& request) {
  switch (byteAt(request.payload, 0)) {
    case kGreeting:
      confirm(request, kAccepted);
      return;
    case kWho:
      tellModel(request);
      return;
    case kTrack:
      obeyTrack(request);
      return;
    case kLogOnOff:
      loggedOn_ = byteAt(request.payload, 2) == 1;
      confirm(request, kAccepted);
      return;
    case kCvAccess:
      accessCv(request);
      return;
    default:
      obeyDriving(request);
  }
}

void ZimoBinaryStation::tellModel(const ZimoFrame& request) {
  const QByteArray software = bytes({1, 25, 14, 3, 12, 2});
  const QByteArray bootRom = bytes({1, 4});
  const QByteArray serialNumber = bytes({0x00, 0x0B, 0x52, 0x47});
  answer(frame(request, true,
               bytes({0, 0, model_, 0, 0, 0, 0}) + software + bytes({0, 0}) + bootRom +
                   bytes({0, 0}) + serialNumber));
}

void ZimoBinaryStation::obeyTrack(const ZimoFrame& request) {
  const int order = byteAt(request.payload, 1);
  if (order == kAskTrack) {
    tellTrack(request);
  } else if (order != kTrackOff && order != kTrackOn) {
    confirm(request, kUnknown);
  } else if (isBusy()) {
    confirm(request, kBusy);
  } else {
    layout().setTrackPower(order == kTrackOn);
    confirm(request, kAccepted);
  }
}

void ZimoBinaryStation::tellTrack(const ZimoFrame& request) {
  int state = 0x80;
  if (layout().stopped()) state |= 0x01;
  if (layout().trackPower()) state |= 0x02;
  if (layout().overloaded()) state |= 0x04;
  answer(frame(request, true, bytes({kAskTrack, state})));
}

void ZimoBinaryStation::accessCv(const ZimoFrame& request) {
  const QByteArray& payload = request.payload;
  const int high = byteAt(payload, 1);
  const int low = byteAt(payload, 2);
  const int cv = byteAt(payload, 3) * 256 + byteAt(payload, 4);
  const bool programmingTrack = high == 0x80 && low == 0;
  if (programmingTrack && (payload.size() == 5 || payload.size() == 6)) {
    accessProgrammingTrack(request, cv);
  } else if (high >= 0x80 && payload.size() == 6) {
    writeMain(request, cv);
  } else {
    confirm(request, kUnknown);
  }
}

void ZimoBinaryStation::accessProgrammingTrack(const ZimoFrame& request, int cv) {
  if (clock().now() < trackFreeAt_) {
    confirm(request, kBusy);
    return;
  }
  const QByteArray& payload = request.payload;
  const TrackResult result = payload.size() == 6
                                 ? writeOnProgrammingTrack(cv, byteAt(payload, 5), Method::Direct)
                                 : readOnProgrammingTrack(cv, Method::Direct);
  if (result.answer == TrackAnswer::Busy) {
    confirm(request, kBusy);
    return;
  }
  confirm(request, kAccepted);
  trackFreeAt_ = clock().now() + kTrackTime;
  QByteArray data = bytes({0x80, 0x00});
  if (result.answer == TrackAnswer::Value) {
    data += bytes({cv / 256, cv % 256, result.value});
  } else {
    data += bytes({errorOf(result.answer)});
  }
  resultSeq_ = seq_;
  ++unacknowledged_;
  answer(frame(request, false, data), kTrackTime);
}

void ZimoBinaryStation::writeMain(const ZimoFrame& request, int cv) {
  const QByteArray& payload = request.payload;
  const int address = (byteAt(payload, 1) - 0x80) * 256 + byteAt(payload, 2);
  const TrackResult result = writeOnMainTrack(address, cv, byteAt(payload, 5));
  // Nobody on the main track confirms: a vehicle that is not there is written just as well.
  confirm(request, result.answer == TrackAnswer::Busy ? kBusy : kAccepted);
}

void ZimoBinaryStation::confirm(const ZimoFrame& request, int status) {
  answer(frame(request, true, bytes({status})));
}

QByteArray ZimoBinaryStation::unasked() const {
  return zimoNewsFrame(header_, seq_, kVehicleNews, bytes({0, 3, 0x10, 0x08, 0, 0}));
}

QByteArray ZimoBinaryStation::frame(const ZimoFrame& request, bool answer, const QByteArray& data) {
  const QByteArray made =
      zimoStationFrame(header_, seq_, answer, byteAt(request.payload, 0), request.seq, data);
  seq_ = (seq_ + 1) % 256;
  return made;
}

}  // namespace lokari::sim
