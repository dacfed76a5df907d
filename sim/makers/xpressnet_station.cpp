#include "sim/makers/xpressnet_station.h"

#include <algorithm>

#include "base/bytes.h"
#include "sim/makers/xbus.h"
#include "sim/makers/xpressnet_programming.h"

namespace lokari::sim::makers {
namespace {

/// A sender who pauses longer inside a message has lost the rest of it.
constexpr Millis kLongestPause = 1000;

constexpr char kAnswerLead[] = "\xFF\xFE";
constexpr char kBroadcastLead[] = "\xFF\xFD";

const QByteArray& lengthWrong() {
  static const QByteArray message = bytes({0x01, 0x01});
  return message;
}
const QByteArray& handedOver() {
  static const QByteArray message = bytes({0x01, 0x04});
  return message;
}
const QByteArray& checksumWrong() {
  static const QByteArray message = bytes({0x61, 0x80});
  return message;
}
const QByteArray& busy() {
  static const QByteArray message = bytes({0x61, 0x81});
  return message;
}
const QByteArray& notPossible() {
  static const QByteArray message = bytes({0x61, 0x82});
  return message;
}

}  // namespace

std::span<const XpressNetStation::Row> XpressNetStation::rows() {
  static const std::vector<Row> rows{
      {bytes({0xF0}), &XpressNetStation::tellInterface},
      {bytes({0x21, 0x21}), &XpressNetStation::tellVersion},
      {bytes({0x21, 0x24}), &XpressNetStation::tellStatus},
      {bytes({0x21, 0x81}), &XpressNetStation::switchOn},
      {bytes({0x21, 0x80}), &XpressNetStation::switchOff},
      {bytes({0x80}), &XpressNetStation::stopAll},
      {bytes({0x21, 0x10}), &XpressNetStation::tellResult},
  };
  return rows;
}

void XpressNetStation::receive(const QByteArray& data) {
  ++portions_;
  const QList<QByteArray> messages = reader_.feed(data);
  for (const QByteArray& message : messages) {
    if (endsInItsXor(message)) {
      obey(message.chopped(1));
    } else {
      tell(checksumWrong());
    }
  }
  if (reader_.isInside()) watchForTheEnd();
}

void XpressNetStation::watchForTheEnd() {
  later(kLongestPause, [this, portion = portions_] {
    if (portion != portions_) return;
    reader_.clear();
    tell(lengthWrong());
  });
}

void XpressNetStation::obey(const QByteArray& message) {
  for (const Row& row : rows()) {
    if (row.message == message) return (this->*row.obey)();
  }
  switch (byteAt(message, 0)) {
    case 0x22:
    case 0x23:
      return accessProgrammingTrack(message);
    case 0xE6:
      return accessMainTrack(message);
    default:
      return drive(message);
  }
}

void XpressNetStation::tellInterface() {
  tell(bytes({0x02, 0x30, 0x01}));
}

void XpressNetStation::tellVersion() {
  tell(bytes({0x63, 0x21, version_, 0x00}));
}

void XpressNetStation::tellStatus() {
  const bool recent = version_ >= kXpressNet36;
  int status = 0;
  if (layout().stopped()) status |= recent ? 0x01 : 0x02;
  if (!layout().trackPower()) status |= recent ? 0x02 : 0x01;
  if (serviceMode_) status |= 0x08;
  tell(bytes({0x62, 0x22, status}));
}

void XpressNetStation::switchOn() {
  serviceMode_ = false;
  layout().setStopped(false);
  layout().setTrackPower(true);
  answerWithBroadcast(bytes({0x61, 0x01}));
}

void XpressNetStation::switchOff() {
  layout().setTrackPower(false);
  answerWithBroadcast(bytes({0x61, 0x00}));
}

void XpressNetStation::stopAll() {
  layout().setStopped(true);
  answerWithBroadcast(bytes({0x81, 0x00}));
}

void XpressNetStation::tellResult() {
  if (!serviceMode_) return tell(notPossible());
  const Millis left = resultAt_ - clock().now();
  if (left <= 0) return tell(result_);
  if (version_ >= kXpressNet36) return tell(bytes({0x61, 0x1F}));
  tell(result_, std::max(left, answerDelay()));
}

void XpressNetStation::accessProgrammingTrack(const QByteArray& message) {
  const auto asked = serviceAccess(message, version_);
  if (!asked) return tell(notPossible());
  const ServiceAccess access = fallenBack(*asked, layout().onProgrammingTrack());
  const TrackResult result = access.write
                                 ? writeOnProgrammingTrack(access.cv, access.value, access.method)
                                 : readOnProgrammingTrack(access.cv, access.method);
  if (result.answer == TrackAnswer::Busy) return tell(busy());
  result_ = serviceResult(access, result, version_);
  resultAt_ = clock().now() + options_.accessTime;
  if (serviceMode_) return tell(handedOver());
  serviceMode_ = true;
  answerWithBroadcast(bytes({0x61, 0x02}));
}

void XpressNetStation::accessMainTrack(const QByteArray& message) {
  const auto access = mainTrackAccess(message);
  if (!access || access->kind == MainTrackAccess::Kind::Read || serviceMode_) {
    return tell(notPossible());
  }
  const Decoder* decoder = layout().onMainTrack(access->address);
  const int held = decoder == nullptr ? 0 : decoder->stored(access->cv);
  const TrackResult result = writeOnMainTrack(access->address, access->cv, access->written(held));
  tell(result.answer == TrackAnswer::Busy ? busy() : handedOver());
}

void XpressNetStation::drive(const QByteArray& message) {
  if (isBusy()) return tell(busy());
  const std::optional<QByteArray> answer = serviceMode_ ? std::nullopt : driving_.obey(message);
  if (!answer) return tell(notPossible());
  tell(answer->isEmpty() ? handedOver() : *answer);
}

void XpressNetStation::tell(const QByteArray& message) {
  tell(message, answerDelay());
}

void XpressNetStation::tell(const QByteArray& message, Millis delay) {
  const QByteArray whole = withXor(message);
  answer(framed_ ? kAnswerLead + whole : whole, delay);
}

void XpressNetStation::answerWithBroadcast(const QByteArray& message) {
  if (options_.confirmation == Confirmation::Ahead) tell(handedOver());
  answer(broadcastBytes(message).repeated(options_.broadcastsInARow));
  if (options_.confirmation == Confirmation::Behind) tell(handedOver());
}

QByteArray XpressNetStation::broadcastBytes(const QByteArray& message) const {
  const QByteArray whole = withXor(message);
  return framed_ ? kBroadcastLead + whole : whole;
}

QByteArray XpressNetStation::unasked() const {
  return broadcastBytes(bytes({0x61, 0x01}));
}

}  // namespace lokari::sim::makers
