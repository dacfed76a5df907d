#include "sim/lenz_station.h"

namespace lokari::sim {
namespace {

/// Time the programming track takes for one CV.
constexpr Millis kTrackTime = 100;
constexpr int kFirstGenerationTimes = 5;

constexpr int kFirstVersion = 0x23;
constexpr int kVersion = 0x36;
constexpr int kLz100 = 0;

constexpr int kProgramming = 0x08;
constexpr int kAutomaticStart = 0x04;
constexpr int kEmergencyOff = 0x02;
constexpr int kEmergencyStop = 0x01;

constexpr int kShortCircuit = 0x12;
constexpr int kNoAck = 0x13;
constexpr int kWrongCheck = 0x80;
constexpr int kUnknown = 0x82;

}  // namespace

void LenzStation::receive(const QByteArray& data) {
  for (const QByteArray& message : reader_.feed(data, clock().now())) {
    if (!lenzCheckIsGood(message)) {
      say({lenzReport(kWrongCheck)});
    } else if (const auto command = lenzCommandFrom(message)) {
      obey(*command);
    } else {
      say(driving_.obey(message).value_or(std::vector{lenzReport(kUnknown)}));
    }
  }
}

void LenzStation::obey(const LenzCommand& command) {
  switch (command.kind) {
    case LenzCommand::Kind::Resume:
      serviceMode_ = false;
      result_.clear();
      layout().setTrackPower(true);
      layout().setStopped(false);
      say(firstGeneration_ ? std::vector{lenzResumed()}
                           : std::vector{lenzAccepted(), lenzResumed(), lenzResumed()});
      return;
    case LenzCommand::Kind::AskResult:
      answerResult();
      return;
    case LenzCommand::Kind::AskVersion:
      say({firstGeneration_ ? lenzVersion(kFirstVersion) : lenzVersion(kVersion, kLz100)});
      return;
    case LenzCommand::Kind::AskState:
      answerState();
      return;
    case LenzCommand::Kind::ReadCv:
      readCv(command);
      return;
    case LenzCommand::Kind::WriteCv:
      writeCv(command);
      return;
    case LenzCommand::Kind::WriteMain:
      // Nobody on the main track confirms: a vehicle that is not there is written just as well.
      writeOnMainTrack(command.address, command.cv, command.value);
      say({lenzAccepted()});
      return;
  }
}

void LenzStation::readCv(const LenzCommand& command) {
  const TrackResult result = readOnProgrammingTrack(command.cv, command.method);
  keepResult(command, result);
  say(firstGeneration_ ? std::vector{lenzServiceMode()}
                       : std::vector{lenzAccepted(), lenzServiceMode()});
}

void LenzStation::writeCv(const LenzCommand& command) {
  const TrackResult result = writeOnProgrammingTrack(command.cv, command.value, command.method);
  keepResult(command, result);
  if (result.answer == TrackAnswer::Busy) {
    say(firstGeneration_ ? std::vector{lenzServiceMode()}
                         : std::vector{lenzAccepted(), lenzServiceMode()});
    return;
  }
  say({lenzAccepted()});
  if (!firstGeneration_) answer(wrapped(lenzAccepted()), kTrackTime);
}

void LenzStation::keepResult(const LenzCommand& command, const TrackResult& result) {
  serviceMode_ = true;
  trackFreeAt_ = clock().now() + kTrackTime;
  switch (result.answer) {
    case TrackAnswer::Value:
      result_ = lenzResult(command.method, command.cv, result.value);
      return;
    case TrackAnswer::ShortCircuit:
      result_ = lenzReport(kShortCircuit);
      return;
    case TrackAnswer::NoDecoder:
    case TrackAnswer::NoAck:
      result_ = lenzReport(kNoAck);
      return;
    case TrackAnswer::Busy:
      result_ = lenzServiceMode();
      return;
  }
}

void LenzStation::answerResult() {
  if (!serviceMode_) {
    say({lenzReport(kUnknown)});
  } else {
    say({clock().now() < trackFreeAt_ ? lenzServiceMode() : result_});
  }
}

void LenzStation::answerState() {
  int state = kAutomaticStart;
  if (serviceMode_) state |= kProgramming;
  if (!layout().trackPower()) state |= kEmergencyOff;
  if (layout().stopped()) state |= kEmergencyStop;
  say({lenzState(state)});
}

void LenzStation::say(const std::vector<QByteArray>& messages) {
  QByteArray all;
  for (const QByteArray& message : messages) all += wrapped(message);
  answer(firstGeneration_ ? all.repeated(kFirstGenerationTimes) : all);
}

QByteArray LenzStation::unasked() const {
  return usb_ ? "\xFF\xFD" + lenzResumed() : lenzResumed();
}

QByteArray LenzStation::wrapped(const QByteArray& message) const {
  return usb_ ? "\xFF\xFE" + message : message;
}

}  // namespace lokari::sim
