#include "link/lenz_cv.h"

#include "base/bytes.h"
#include "link/doubtful_value.h"
#include "link/lenz_codec.h"
#include "link/lenz_framing.h"
#include "link/lenz_maker_cv.h"
#include "link/lenz_meaning.h"
#include "link/lenz_service.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

constexpr int kResultHead = 3;
/// A result has room to tell this many CVs apart.
constexpr int kNamedCvs = 256;
constexpr int kMainReply = 3;
constexpr int kReadCounts = 7;
constexpr int kWriteCounts = 32;
constexpr int kAskPauseMs = 100;
constexpr int kReadReportBase = -1000;

/// The station announces the service mode again and again instead of writing.
constexpr int kServiceModeOnly = -1007;

/// What reading and writing in the service mode share. The station confirms a message first; the
/// result has to be asked for.
class LenzExchange : public CvExchange {
 public:
  LenzExchange(StationLink& link, LenzFraming& framing, const CvRequest& request)
      : CvExchange(link, request), framing_(framing) {}

  void secondChance() final {
    link().Delay(1);
    if (link().cancelRequested) return;
    framing_.lnzSend(lenz::resume());
    link().WaitForData(want());
    link().protocol().dropInput();
    if (link().cancelRequested) return;
    framing_.lnzSend(msg_);
  }

  CvStep evaluate() final {
    if (link().cancelRequested) return cancelled();
    const QByteArray reply = link().serial().read();
    if (reply.size() >= want()) return judge(framing_.unwrapped(reply));
    // One message is all that some stations confirm with.
    if (!lenz::tellsTaken(reply, framing_.type().usb)) return shortReply();
    const CvStep step = documentedResult(CvStep::finish(cv_result::kNoReply));
    return step.result == cv_result::kNoReply ? shortReply() : step;
  }

  void epilogue() final { framing_.leaveServiceMode(); }

 protected:
  /// A confirmation of at least want() bytes, unwrapped.
  virtual CvStep judge(QByteArray reply) = 0;
  /// The result of the operation that a report stands for.
  virtual int failureOf(const QByteArray& report) const = 0;
  /// The programming track has done its work, and the station tells no value.
  virtual CvStep ready(const CvStep& failure) { return failure; }

  /// The result as the documents have it be asked for, ahead of an operation's end with `failure`.
  CvStep documentedResult(const CvStep& failure) {
    return concluded(service_.result(request().cv), failure);
  }
  /// The same for another message that goes out first.
  CvStep documentedAccess(const QByteArray& msg, const CvStep& failure) {
    const LenzService::Outcome taken = service_.command(msg);
    return taken.kind == LenzService::Outcome::Kind::Taken ? documentedResult(failure)
                                                           : concluded(taken, failure);
  }

  LenzFraming& framing() const { return framing_; }

  CvStep await(const QByteArray& msg, int want) {
    msg_ = msg;
    link().protocol().dropInput();
    framing_.lnzSend(msg_);
    setWant(want);
    return CvStep::wait();
  }

  /// Asks for the result once. False when next to nothing came, which stays waiting.
  bool askForResult() {
    framing_.forgetMessages();
    framing_.cvQuestions().asked(request().cv % kNamedCvs);
    framing_.lnzSend(lenz::requestResult());
    link().WaitForData(kResultHead);
    return link().getBufferCount() >= kResultHead;
  }

  /// The end with the station's report. One that was busy to the last is asked as the documents
  /// have it first.
  CvStep reported(const QByteArray& report) {
    const CvStep failure = CvStep::finish(failureOf(report));
    return lenz::meaningOf(report) == lenz::Meaning::Busy ? documentedResult(failure) : failure;
  }

  /// Takes a reply to the question; if it is no result, what comes a little later instead of it.
  QByteArray takeResult() {
    QByteArray reply =
        unlessLate(lenz::resultWithin(framing_.takeAnswer(lenz::Meaning::ServiceMode)));
    if (lenz::resultValue(reply)) return reply;
    ++counter_;
    link().DelayMsec(kAskPauseMs);
    return link().getBufferCount() > 0 ? unlessLate(framing_.takeReply()) : reply;
  }

  /// The result of an operation that ends with a result for a reply. One that came wrong is asked
  /// for once more: the station still has it.
  CvStep believe(const QByteArray& result) {
    const bool isOurs = namesCv(result);
    DoubtfulValue doubt;
    if (const auto code = doubt.take(*lenz::resultValue(result), isOurs && lenz::isSound(result))) {
      return CvStep::finish(*code);
    }
    link().protocol().dropInput();
    const QByteArray again = askForResult() ? takeResult() : QByteArray();
    const auto value = lenz::resultValue(again);
    if (!value) return link().cancelRequested ? cancelled() : CvStep::finish(doubt.failure(0));
    if (!namesCv(again)) return CvStep::finish(cv_result::kWrongReply);
    if (!isOurs) return CvStep::finish(lenz::isSound(again) ? *value : cv_result::kWrongReply);
    return CvStep::finish(*doubt.take(*value, lenz::isSound(again)));
  }

  /// The message again, unless a second's pause has brought a cancel.
  CvStep repeatAfterPause() {
    link().Delay(1);
    return repeat();
  }
  CvStep repeat() { return link().cancelRequested ? cancelled() : CvStep::fromSecondChance(); }
  static CvStep cancelled() { return CvStep::finish(cv_result::kCancelled); }

  /// Counts the questions for the result; runs on when the message is sent again, so that the
  /// questions end.
  int counter_ = 1;

 private:
  CvStep concluded(const LenzService::Outcome& outcome, const CvStep& failure) {
    switch (outcome.kind) {
      case LenzService::Outcome::Kind::Result:
        return CvStep::finish(lenz::resultValue(outcome.message).value());
      case LenzService::Outcome::Kind::Ready:
        return ready(failure);
      case LenzService::Outcome::Kind::Refused:
        return lenz::report(outcome.message) ? CvStep::finish(failureOf(outcome.message)) : failure;
      case LenzService::Outcome::Kind::Cancelled:
        return cancelled();
      default:
        return failure;
    }
  }

  /// Whether a result names the CV that was asked for, or none.
  bool namesCv(const QByteArray& result) const {
    const int cv = lenz::resultCv(result).value_or(0);
    return cv == 0 || cv == request().cv % kNamedCvs;
  }

  /// The reply; nothing in place of the late result of another CV.
  QByteArray unlessLate(const QByteArray& reply) {
    const auto cv = lenz::resultCv(reply);
    return cv && !framing_.cvQuestions().answers(*cv) ? QByteArray() : reply;
  }

  LenzFraming& framing_;
  LenzService service_{link(), framing_, LenzService::ServiceModeWord::NotYet};
  QByteArray msg_;
};

class LenzRead final : public LenzExchange {
 public:
  using LenzExchange::LenzExchange;

  CvStep send() override {
    const auto msg = lenz::readCv(request().cv, link().progMode, link().settings().lenzV36);
    if (!msg) return CvStep::finishAtOnce(cv_result::kWrongReply);
    return await(*msg, framing().type().want);
  }

 protected:
  CvStep judge(QByteArray reply) override {
    while (counter_ <= kReadCounts && !link().cancelRequested) {
      if (!askForResult()) {
        ++counter_;
        continue;
      }
      reply = takeResult();
      if (lenz::resultValue(reply)) break;
      if (counter_ % 2 != 0) return repeat();
    }
    return resultOf(reply);
  }

 private:
  CvStep resultOf(const QByteArray& reply) {
    if (lenz::resultValue(reply)) return believe(reply);
    if (link().cancelRequested) return cancelled();
    if (lenz::report(reply)) return reported(reply);
    if (tries_ < 1) return CvStep::finish(cv_result::kWrongReply);
    --tries_;
    return repeatAfterPause();
  }

  int failureOf(const QByteArray& report) const override {
    return kReadReportBase - byteAt(report, 1);
  }

 private:
  int tries_ = 1;
};

class LenzWrite final : public LenzExchange {
 public:
  using LenzExchange::LenzExchange;

  CvStep send() override {
    const CvRequest& cv = request();
    if (link().commJob == CommJob::WriteMain) {
      return sendIfAny(lenz::writeCvMain(link().pomAddr, cv.address, cv.cv, cv.value), kMainReply);
    }
    const bool lenzV36 = link().settings().lenzV36;
    // Not writable, and no failure: callers see a value of 0.
    if (!lenzV36 && cv.cv >= 256) return CvStep::finishAtOnce(0);
    return sendIfAny(lenz::writeCv(cv.cv, cv.value, cv.mode, lenzV36), framing().type().want);
  }

 protected:
  CvStep judge(QByteArray reply) override {
    reply = lenz::serviceModeWithin(reply);
    if (lenz::isServiceMode(reply)) return serviceModeEntered();
    while (counter_ <= kWriteCounts && !link().cancelRequested) {
      link().protocol().dropInput();
      // Only a cancel ends the questions to a station that has fallen silent.
      if (!askForResult()) continue;
      reply = takeResult();
      if (lenz::resultValue(reply)) break;
    }
    const CvStep step = resultOf(reply);
    return lenz::meaningOf(reply) == lenz::Meaning::Ready ? ready(step) : step;
  }

  int failureOf(const QByteArray& report) const override { return lenz::writeFailure(report); }

  /// Whether the value has arrived is known by reading it back.
  CvStep ready(const CvStep& failure) override {
    if (isReadBack_) return failure;
    isReadBack_ = true;
    const CvRequest& cv = request();
    const auto msg = lenz::readCv(cv.cv, cv.mode, link().settings().lenzV36);
    return msg ? documentedAccess(*msg, failure) : failure;
  }

 private:
  CvStep sendIfAny(const std::optional<QByteArray>& msg, int want) {
    return msg ? await(*msg, want) : CvStep::finishAtOnce(cv_result::kWrongReply);
  }

  CvStep serviceModeEntered() {
    if (enteredBefore_) {
      const CvStep step = documentedResult(CvStep::finish(kServiceModeOnly));
      if (step.result == kServiceModeOnly) framing().lnzSend(lenz::resume());
      return step;
    }
    enteredBefore_ = true;
    return repeatAfterPause();
  }

  CvStep resultOf(const QByteArray& reply) {
    if (lenz::resultValue(reply)) return believe(reply);
    if (link().cancelRequested) return cancelled();
    return reported(reply);
  }

  bool enteredBefore_ = false;
  bool isReadBack_ = false;
};

/// A main-track write that ends with the reply to it: one attempt, no result, no epilogue.
class LenzMainWrite final : public ReplyExchange {
 public:
  LenzMainWrite(StationLink& link, LenzFraming& framing, const CvRequest& request)
      : ReplyExchange(link, request), framing_(framing) {}

  CvStep send() override {
    const CvRequest& cv = request();
    const auto msg = lenz::writeCvMain(link().pomAddr, cv.address, cv.cv, cv.value);
    if (!msg) return CvStep::finishAtOnce(cv_result::kWrongReply);
    link().protocol().dropInput();
    framing_.lnzSend(*msg);
    setWant(kMainReply);
    return CvStep::wait();
  }

  bool secondChanceHelps() const override { return false; }
  void secondChance() override {}

 protected:
  QByteArray takeReply() override {
    // Less than the frame has waited for is not waited for once more.
    const bool waitMore = link().getBufferCount() >= kMainReply;
    return waitMore ? framing_.takeAnswer(lenz::Meaning::HandedOver) : link().serial().read();
  }

  CvStep parse(const QByteArray& reply) override {
    if (lenz::isAccepted(reply)) return CvStep::finish(request().value);
    const int failure = lenz::writeFailure(reply);
    return lenz::isRefusal(reply) ? CvStep::refuse(failure) : CvStep::finish(failure);
  }

 private:
  LenzFraming& framing_;
};

}  // namespace

std::unique_ptr<CvExchange> lenzReadCv(StationLink& link, LenzFraming& framing,
                                       const CvRequest& request) {
  if (link.settings().makerForm) return lenzMakerReadCv(link, framing, request);
  return std::make_unique<LenzRead>(link, framing, request);
}

std::unique_ptr<CvExchange> lenzWriteCv(StationLink& link, LenzFraming& framing,
                                        const CvRequest& request) {
  const bool main = link.commJob == CommJob::WriteMain;
  if (main && framing.type().confirmsMainWrite) {
    return std::make_unique<LenzMainWrite>(link, framing, request);
  }
  if (link.settings().makerForm) return lenzMakerWriteCv(link, framing, request);
  return std::make_unique<LenzWrite>(link, framing, request);
}

}  // namespace lokari
