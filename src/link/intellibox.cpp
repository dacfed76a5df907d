#include "link/intellibox.h"

#include "base/bytes.h"
#include "base/clock.h"
#include "link/ibx_send.h"
#include "link/intellibox_codec.h"
#include "link/p50x_codes.h"
#include "link/p50x_cv.h"
#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr int kAcceptSeconds = 2;
constexpr int kMostRestWaits = 2;
/// Busy answers use up no attempt.
constexpr int kMostBusyAnswers = 20;
/// The slowest access tries each value of a byte.
constexpr qint64 kLongestAccessSeconds = 120;

/// How often a command goes out. Both counts belong to the operation and run on when it starts
/// over, so the attempts may be used up before the cut events are.
struct Limits {
  int attempts;   ///< the attempt of this number ends the operation, whatever is answered
  int cutEvents;  ///< and so does the cut event of this number
};
constexpr Limits kReadLimits{3, 4};
constexpr Limits kWriteLimits{2, 2};

/// What reading and writing share: a command that the station accepts, then the question for the
/// programming event.
class IntelliboxExchange : public CvExchange {
 public:
  IntelliboxExchange(StationLink& link, const CvRequest& request, Limits limits)
      : CvExchange(link, request), limits_(limits) {}

  void secondChance() final { askEvent(); }
  bool pausesAfterSecondChance() const final { return false; }

  CvStep evaluate() final {
    QByteArray event = ibx::eventWithin(ibx::unlessHeldDown(link().serial().read()));
    if (event.isEmpty()) return shortReply();
    if (byteAt(event, 0) == ibx::kNoEvent) {
      if (link().cancelRequested) return cancelled();
      return link().clock().wholeSeconds() < lastSecond_ ? awaitEvent() : shortReply();
    }
    int waits = 0;
    for (; ibx::missing(event) > 0 && waits < kMostRestWaits; ++waits) {
      link().WaitForData(static_cast<qint32>(ibx::missing(event)));
      event = ibx::eventWithin(event + link().serial().read());
    }
    if (event.size() >= 2 && waits < kMostRestWaits) return CvStep::finish(finalResult(event));
    if (link().cancelRequested) return cancelled();
    if (++cutEvents_ == limits_.cutEvents) return CvStep::finish(cv_result::kWrongReply);
    return CvStep::fromStart();
  }

  void epilogue() final {
    ibxSend(link(), ibx::endProgramming());
    link().WaitForData(1);
    link().protocol().dropInput();
  }

 protected:
  /// The value that a whole event gives, or a negative code.
  virtual int finalResult(const QByteArray& event) = 0;
  /// The station has not accepted the command, and `code` is what it said last, -1 for nothing.
  virtual int unaccepted(int code) {
    Q_UNUSED(code)
    return cv_result::kNotReady;
  }

  /// Sends a command until the station accepts it, with `seconds` for it to make up its mind.
  /// The code when it does not.
  std::optional<CvStep> command(const QByteArray& msg, std::optional<int> seconds) {
    for (;;) {
      link().protocol().dropInput();
      ibxSend(link(), msg);
      link().WaitForData(1);
      if (seconds) link().Delay(*seconds);
      const QByteArray reply = ibx::unlessHeldDown(link().serial().read());
      const int code = byteAt(reply, 0);
      // What is taken without power on the track reaches no vehicle.
      const bool reaches = code != p50x::kWithoutPower || link().commJob != CommJob::WriteMain;
      const bool accepted = ibx::isAccepted(reply) && reaches;
      if (!accepted && link().cancelRequested) return cancelled();
      const bool counts = !p50x::isBusy(code) || ++busyAnswers_ > kMostBusyAnswers;
      if (counts && ++attempts_ == limits_.attempts) return CvStep::finish(unaccepted(code));
      if (accepted) return std::nullopt;
      link().Delay(1);
      if (link().cancelRequested) return cancelled();
    }
  }

  CvStep programWith(const QByteArray& msg) {
    if (const auto failed = command(msg, kAcceptSeconds)) return *failed;
    lastSecond_ = link().clock().wholeSeconds() + kLongestAccessSeconds;
    return link().cancelRequested ? cancelled() : awaitEvent();
  }

 private:
  static CvStep cancelled() { return CvStep::finish(cv_result::kCancelled); }

  void askEvent() {
    ibxSend(link(), ibx::askEvent());
    link().Delay(1);
  }

  CvStep awaitEvent() {
    askEvent();
    setWant(1);
    return CvStep::wait();
  }

  Limits limits_;
  int attempts_ = 0;
  int busyAnswers_ = 0;
  int cutEvents_ = 0;
  qint64 lastSecond_ = 0;  ///< in which the event is asked for again
};

class IntelliboxRead final : public IntelliboxExchange {
 public:
  IntelliboxRead(StationLink& link, const CvRequest& request)
      : IntelliboxExchange(link, request, kReadLimits) {}

  CvStep send() override { return programWith(ibx::readCv(request().cv, link().progMode)); }

 protected:
  int finalResult(const QByteArray& event) override {
    return ibx::bitsFailed(event) ? byByte(ibx::readResult(event)) : ibx::readResult(event);
  }

  int unaccepted(int code) override {
    const bool unknown = p50x::isUnknown(code) && ibx::readsDirect(link().progMode);
    return unknown ? byByte(cv_result::kNotReady) : cv_result::kNotReady;
  }

 private:
  /// Reading bit by bit has come to its end with `code`; without a result it stands.
  int byByte(int code) {
    const P50xOutcome outcome = p50xAccess(link(), ibx::readCvByByte(request().cv));
    const bool ends =
        outcome.kind == P50xOutcome::Kind::Event || outcome.kind == P50xOutcome::Kind::Cancelled;
    return ends ? p50x::readResult(outcome) : code;
  }
};

class IntelliboxWrite final : public IntelliboxExchange {
 public:
  IntelliboxWrite(StationLink& link, const CvRequest& request)
      : IntelliboxExchange(link, request, kWriteLimits) {}

  CvStep send() override {
    const CvRequest& cv = request();
    if (link().commJob == CommJob::WriteMain) return writeMain();
    return programWith(ibx::writeCv(cv.cv, cv.value, cv.mode));
  }

 protected:
  int finalResult(const QByteArray& event) override {
    return ibx::writeResult(event, request().value);
  }

 private:
  CvStep writeMain() {
    const CvRequest& cv = request();
    const auto msg = ibx::writeCvMain(link().pomAddr, cv.address, cv.cv, cv.value);
    if (!msg) return CvStep::finishAtOnce(cv_result::kWrongReply);
    if (const auto failed = command(*msg, std::nullopt)) return *failed;
    return CvStep::finishAtOnce(cv.value);
  }
};

}  // namespace

std::unique_ptr<CvExchange> IntelliboxProtocol::readCv(const CvRequest& request) {
  if (link().settings().makerForm) {
    const int mode = link().progMode;
    const auto instead =
        ibx::readsDirect(mode) ? std::optional(ibx::readCvByByte(request.cv)) : std::nullopt;
    return p50x::makeRead(link(), request, ibx::readCv(request.cv, mode), instead);
  }
  return std::make_unique<IntelliboxRead>(link(), request);
}

std::unique_ptr<CvExchange> IntelliboxProtocol::writeCv(const CvRequest& request) {
  if (link().settings().makerForm) return p50x::makeWrite(link(), request, request.mode);
  return std::make_unique<IntelliboxWrite>(link(), request);
}

std::unique_ptr<StationProtocol> makeIntelliboxProtocol(StationLink& link) {
  return std::make_unique<IntelliboxProtocol>(link);
}

}  // namespace lokari
