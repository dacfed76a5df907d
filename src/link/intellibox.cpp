#include "link/intellibox.h"

#include "base/bytes.h"
#include "link/ibx_send.h"
#include "link/intellibox_codec.h"
#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr int kAcceptSeconds = 2;
constexpr int kMostRestWaits = 2;

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
      return link().cancelRequested ? cancelled() : awaitEvent();
    }
    int waits = 0;
    for (; ibx::missing(event) > 0 && waits < kMostRestWaits; ++waits) {
      link().WaitForData(static_cast<qint32>(ibx::missing(event)));
      event = ibx::eventWithin(event + link().serial().read());
    }
    if (event.size() >= 2 && waits < kMostRestWaits) return CvStep::finish(result(event));
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
  virtual int result(const QByteArray& event) const = 0;

  /// Sends a command until the station accepts it, with `seconds` for it to make up its mind.
  /// The code when it does not.
  std::optional<CvStep> command(const QByteArray& msg, std::optional<int> seconds) {
    for (;;) {
      link().protocol().dropInput();
      ibxSend(link(), msg);
      link().WaitForData(1);
      if (seconds) link().Delay(*seconds);
      const bool accepted = ibx::isAccepted(ibx::unlessHeldDown(link().serial().read()));
      if (!accepted && link().cancelRequested) return cancelled();
      if (++attempts_ == limits_.attempts) return CvStep::finish(cv_result::kNotReady);
      if (accepted) return std::nullopt;
      link().Delay(1);
      if (link().cancelRequested) return cancelled();
    }
  }

  CvStep programWith(const QByteArray& msg) {
    if (const auto failed = command(msg, kAcceptSeconds)) return *failed;
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
  int cutEvents_ = 0;
};

class IntelliboxRead final : public IntelliboxExchange {
 public:
  IntelliboxRead(StationLink& link, const CvRequest& request)
      : IntelliboxExchange(link, request, kReadLimits) {}

  CvStep send() override { return programWith(ibx::readCv(request().cv, link().progMode)); }

 protected:
  int result(const QByteArray& event) const override { return ibx::readResult(event); }
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
  int result(const QByteArray& event) const override {
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
  return std::make_unique<IntelliboxRead>(link(), request);
}

std::unique_ptr<CvExchange> IntelliboxProtocol::writeCv(const CvRequest& request) {
  return std::make_unique<IntelliboxWrite>(link(), request);
}

std::unique_ptr<StationProtocol> makeIntelliboxProtocol(StationLink& link) {
  return std::make_unique<IntelliboxProtocol>(link);
}

}  // namespace lokari
