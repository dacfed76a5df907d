#include "link/lenz_service.h"

#include <algorithm>

#include "base/bytes.h"
#include "link/comm_view.h"
#include "link/lenz_codec.h"
#include "link/lenz_framing.h"
#include "link/lenz_meaning.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

using Kind = LenzService::Outcome::Kind;

/// Times of the documents.
constexpr Millis kAnswerTime = 5000;
constexpr Millis kResultTime = 90000;

constexpr Millis kBusyPause = 500;
constexpr int kMostCommands = 10;
/// "Not yet" that many times is an answer.
constexpr int kMostNotYet = 10;
/// Whoever waits longer wants to know for what.
constexpr Millis kQuietWait = 3000;

/// A result has room to tell this many CVs apart.
constexpr int kNamedCvs = 256;

}  // namespace

LenzService::~LenzService() {
  if (CommView* view = link_.view(); toldThatItWaits_ && view != nullptr) view->setRemark({});
}

LenzService::Outcome LenzService::command(const QByteArray& message) {
  Outcome outcome{Kind::Silent};
  for (int tries = 0; tries < kMostCommands; ++tries) {
    if (tries > 0) pause();
    if (link_.cancelRequested) return {Kind::Cancelled};
    send(message);
    outcome = awaitTaken();
    const bool busy =
        outcome.kind == Kind::Refused && lenz::meaningOf(outcome.message) == lenz::Meaning::Busy;
    if (!busy) return outcome;
  }
  return outcome;
}

LenzService::Outcome LenzService::awaitTaken() {
  const Millis deadline = link_.clock().now() + kAnswerTime;
  while (const auto message = next(deadline)) {
    switch (lenz::meaningOf(*message)) {
      case lenz::Meaning::HandedOver:
      case lenz::Meaning::ServiceMode:
        return {Kind::Taken};
      case lenz::Meaning::Busy:
      case lenz::Meaning::Report:
      case lenz::Meaning::Fault:
        return {Kind::Refused, *message};
      case lenz::Meaning::Passing:
      case lenz::Meaning::Result:
      case lenz::Meaning::Ready:
      case lenz::Meaning::Other:
        break;
    }
  }
  return ending();
}

LenzService::Outcome LenzService::result(int subject) {
  const Millis deadline = link_.clock().now() + kResultTime;
  Outcome outcome{Kind::Silent};
  int notYet = 0;
  while (link_.clock().now() < deadline) {
    if (link_.cancelRequested) return {Kind::Cancelled};
    framing_.cvQuestions().asked(subject % kNamedCvs);
    send(lenz::requestResult());
    outcome = awaitResult(subject, deadline);
    switch (outcome.kind) {
      case Kind::Taken:
        if (++notYet == kMostNotYet) return {Kind::Silent};
        break;
      case Kind::Refused:
        if (lenz::meaningOf(outcome.message) != lenz::Meaning::Busy) return outcome;
        break;
      default:
        return outcome;
    }
    pause();
  }
  return outcome;
}

LenzService::Outcome LenzService::awaitResult(int subject, Millis deadline) {
  while (const auto message = next(deadline)) {
    switch (lenz::meaningOf(*message)) {
      case lenz::Meaning::Result: {
        // One that names another CV is the late one of an access that was given up.
        const auto cv = lenz::resultCv(*message);
        if (!cv || *cv == subject % kNamedCvs) return {Kind::Result, *message};
        break;
      }
      case lenz::Meaning::Ready:
        return {Kind::Ready, *message};
      case lenz::Meaning::Busy:
      case lenz::Meaning::Report:
      case lenz::Meaning::Fault:
        return {Kind::Refused, *message};
      case lenz::Meaning::ServiceMode:
        if (word_ == ServiceModeWord::NotYet) return {Kind::Taken};
        break;
      case lenz::Meaning::HandedOver:
      case lenz::Meaning::Passing:
      case lenz::Meaning::Other:
        break;
    }
  }
  return ending();
}

std::optional<int> LenzService::stationVersion() {
  send(lenz::askStationVersion());
  const Millis deadline = link_.clock().now() + kAnswerTime;
  while (const auto message = next(deadline)) {
    if (const auto version = lenz::stationVersion(*message)) return version;
    const lenz::Meaning meaning = lenz::meaningOf(*message);
    if (meaning == lenz::Meaning::Report || meaning == lenz::Meaning::Fault) break;
  }
  return std::nullopt;
}

void LenzService::send(const QByteArray& message) {
  link_.protocol().dropInput();
  framing_.forgetMessages();
  framing_.lnzSend(message);
}

std::optional<QByteArray> LenzService::next(Millis deadline) {
  if (!toldThatItWaits_) {
    const Millis quiet = std::min(deadline, link_.clock().now() + kQuietWait);
    if (auto message = framing_.nextMessage(quiet)) return message;
    if (link_.cancelRequested || quiet == deadline) return std::nullopt;
    tellThatItWaits();
  }
  return framing_.nextMessage(deadline);
}

LenzService::Outcome LenzService::ending() const {
  return {link_.cancelRequested ? Kind::Cancelled : Kind::Silent};
}

void LenzService::pause() {
  Clock& clock = link_.clock();
  clock.waitUntil([this] { return link_.cancelRequested || link_.isFarewellHurried(); },
                  clock.now() + kBusyPause);
}

void LenzService::tellThatItWaits() {
  toldThatItWaits_ = true;
  if (CommView* view = link_.view()) {
    view->setRemark(
        QStringLiteral("Die Zentrale arbeitet am Programmiergleis, bis zu 90 Sekunden …"));
  }
}

}  // namespace lokari
