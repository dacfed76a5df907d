#include "sim/station.h"

#include <algorithm>

namespace lokari::sim {
namespace {

constexpr int kDefaultLateness = 5000;
constexpr int kDefaultGap = 20;
constexpr char kGarbage[] = "\xA5\x5A\x3F\x00\xFE\x01\x17\x2A";

/// Where a stray message stands.
constexpr int kAhead = 0;
constexpr int kInside = 1;
constexpr int kBehind = 2;

void flipBit(QByteArray& data, int bit) {
  const qsizetype at = bit / 8;
  if (at < data.size()) data[at] = static_cast<char>(data[at] ^ (1 << bit % 8));
}

QByteArray garbage(qsizetype size) {
  QByteArray data;
  for (qsizetype i = 0; i < size; ++i) data.append(kGarbage[i % 8]);
  return data;
}

}  // namespace

void Station::receiveFrom(int client, const QByteArray& data) {
  Q_UNUSED(client)
  receive(data);
}

void Station::answer(const QByteArray& data) {
  answer(data, surroundings_.answerDelay);
}

void Station::answer(const QByteArray& data, Millis delay) {
  answer(std::nullopt, data, delay);
}

void Station::answerTo(int client, const QByteArray& data, Millis delay) {
  answer(client, data, delay);
}

void Station::answer(Recipient recipient, const QByteArray& data, Millis delay) {
  FaultPlan& faults = surroundings_.faults;
  Millis at = std::max(clock().now() + delay, lastAnswerAt_);
  if (faults.strike(FaultKind::Unplugged)) {
    later(delay, [this] {
      if (onUnplug) onUnplug();
    });
    return;
  }
  if (faults.strike(FaultKind::Silence)) return;
  QByteArray sent = data;
  if (const auto late = faults.strike(FaultKind::Late))
    at += late->amount.value_or(kDefaultLateness);
  if (faults.strike(FaultKind::Garbage)) sent = garbage(sent.size());
  if (const auto cut = faults.strike(FaultKind::Short)) {
    sent.truncate(cut->amount.value_or(static_cast<int>(sent.size() / 2)));
  }
  if (const auto flip = faults.strike(FaultKind::Flip)) flipBit(sent, flip->amount.value_or(0));
  QByteArray behind;
  if (const auto stray = faults.strike(FaultKind::Stray)) {
    const int place = stray->amount.value_or(kAhead);
    if (place == kAhead) queue(recipient, unasked(), at);
    if (place == kInside) sent.insert(sent.size() / 2, unasked());
    if (place == kBehind) behind = unasked();
  }
  if (const auto split = faults.strike(FaultKind::Split)) {
    for (const char byte : sent) {
      queue(recipient, QByteArray(1, byte), at);
      at += split->amount.value_or(kDefaultGap);
    }
    return;
  }
  queue(recipient, sent, at);
  queue(recipient, behind, at);
}

void Station::queue(Recipient recipient, const QByteArray& data, Millis at) {
  if (data.isEmpty()) return;
  lastAnswerAt_ = at;
  later(at - clock().now(), [this, recipient, data] {
    if (recipient && onAnswerTo) {
      onAnswerTo(*recipient, data);
    } else if (onAnswer) {
      onAnswer(data);
    }
  });
}

void Station::later(Millis delay, std::function<void()> action) {
  std::erase_if(pending_, [](const auto& each) { return each->done; });
  const auto pending = std::make_shared<Pending>();
  pending_.push_back(pending);
  pending->alarm = clock().after(delay, [entry = pending.get(), run = std::move(action)] {
    entry->done = true;
    run();
  });
}

std::optional<TrackResult> Station::trackFault() {
  FaultPlan& faults = surroundings_.faults;
  if (faults.strike(FaultKind::Busy)) return TrackResult{TrackAnswer::Busy};
  if (faults.strike(FaultKind::ShortCircuit)) return TrackResult{TrackAnswer::ShortCircuit};
  if (faults.strike(FaultKind::NoDecoder)) return TrackResult{TrackAnswer::NoDecoder};
  if (faults.strike(FaultKind::NoAck)) return TrackResult{TrackAnswer::NoAck};
  return {};
}

bool Station::isBusy() {
  return surroundings_.faults.strike(FaultKind::Busy).has_value();
}

TrackResult Station::readOnProgrammingTrack(int cv, Method method) {
  if (const auto fault = trackFault()) return *fault;
  Decoder* decoder = layout().onProgrammingTrack();
  if (decoder == nullptr) return {TrackAnswer::NoDecoder};
  const std::optional<int> value = decoder->read(cv, method);
  if (!value) return {TrackAnswer::NoAck};
  const bool wrong = surroundings_.faults.strike(FaultKind::WrongValue).has_value();
  return {TrackAnswer::Value, (*value + (wrong ? 1 : 0)) % 256};
}

TrackResult Station::writeOnProgrammingTrack(int cv, int value, Method method) {
  if (const auto fault = trackFault()) return *fault;
  Decoder* decoder = layout().onProgrammingTrack();
  if (decoder == nullptr) return {TrackAnswer::NoDecoder};
  if (!decoder->write(cv, value, method)) return {TrackAnswer::NoAck};
  const bool wrong = surroundings_.faults.strike(FaultKind::WrongValue).has_value();
  const int held = decoder->read(cv, method).value_or(0);
  return {TrackAnswer::Value, (held + (wrong ? 1 : 0)) % 256};
}

TrackResult Station::readOnMainTrack(int address, int cv) {
  if (const auto fault = trackFault()) return *fault;
  Decoder* decoder = layout().onMainTrack(address);
  if (decoder == nullptr) return {TrackAnswer::NoDecoder};
  const std::optional<int> value = decoder->read(cv);
  if (!value) return {TrackAnswer::NoAck};
  const bool wrong = surroundings_.faults.strike(FaultKind::WrongValue).has_value();
  return {TrackAnswer::Value, (*value + (wrong ? 1 : 0)) % 256};
}

TrackResult Station::writeOnMainTrack(int address, int cv, int value) {
  if (const auto fault = trackFault()) return *fault;
  Decoder* decoder = layout().onMainTrack(address);
  if (decoder == nullptr) return {TrackAnswer::NoDecoder};
  decoder->write(cv, value);
  return {TrackAnswer::Value, value};
}

}  // namespace lokari::sim
