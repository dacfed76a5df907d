#include "link/zimo_binary.h"

#include "base/clock.h"
#include "link/doubtful_value.h"
#include "link/station_link.h"
#include "link/zimo_binary_codec.h"

namespace lokari {
namespace {

constexpr int kFirstWant = 5;
constexpr int kLaterWant = 2;

/// One CV message. The station confirms it first; on the programming track the result follows in
/// a frame of its own, which wants an acknowledgement.
class ZimoBinaryExchange final : public ReplyExchange {
 public:
  /// Without a `msg` nothing can be sent. `resultFollows` is false for a main-track write, whose
  /// confirmation is all there is.
  ZimoBinaryExchange(StationLink& link, ZimoBinaryFraming& framing, const CvRequest& request,
                     std::optional<QByteArray> msg, bool resultFollows)
      : ReplyExchange(link, request),
        framing_(framing),
        msg_(std::move(msg)),
        resultFollows_(resultFollows) {}

  CvStep send() override {
    if (!msg_) return CvStep::finishAtOnce(cv_result::kWrongReply);
    link().protocol().dropInput();
    framing_.zbinSend(*msg_, false);
    setWant(kFirstWant);
    return CvStep::wait();
  }

  void secondChance() override {
    framing_.zbinSend(*msg_, false);
    setWant(kLaterWant);
  }

 protected:
  QByteArray takeReply() override {
    setWant(kLaterWant);
    return receive([](const QByteArray&) { return true; });
  }

  CvStep parse(const QByteArray& reply) override {
    // By the makers' documents the result may come without a confirmation ahead of it.
    if (framing_.zbinKind == zbin::kData) return judgeResult(reply);
    switch (zbin::judge(reply)) {
      case zbin::Verdict::Accepted:
        return resultFollows_ ? takeResult() : believe(request().value);
      case zbin::Verdict::Busy:
        if (link().cancelRequested) return CvStep::finish(cv_result::kCancelled);
        return CvStep::fromSecondChance();
      case zbin::Verdict::Refused:
        return fail(zbin::refusal(reply));
      case zbin::Verdict::TooShort:
        break;
    }
    return fail(shortReply().result);
  }

 private:
  /// The next reply that is `wanted`, or nothing when none comes in time.
  template <class Wanted>
  QByteArray receive(Wanted wanted) {
    const qint64 lastSecond = link().clock().wholeSeconds() + kZimoFirstBytesSeconds;
    for (;;) {
      const auto left = static_cast<int>(lastSecond - link().clock().wholeSeconds());
      if (left < 0) return {};
      const QByteArray reply = framing_.zbinReceive(left);
      if (!framing_.answersAhead(reply) && wanted(reply)) return reply;
    }
  }

  CvStep takeResult() {
    const QByteArray reply = receive(
        [&](const QByteArray& each) { return !zbin::isOfEarlierAccess(each, request().cv); });
    if (reply.isEmpty() && link().cancelRequested) return fail(cv_result::kCancelled);
    return judgeResult(reply);
  }

  CvStep judgeResult(const QByteArray& reply) {
    const zbin::Result result = zbin::result(reply);
    if (result.ours) framing_.zbinSend(zbin::acknowledge(framing_.zbinRxSeq), true);
    return result.code < 0 ? fail(result.code) : believe(result.code);
  }

  /// The last frame carried `value`.
  CvStep believe(int value) {
    if (const auto result = doubt_.take(value, framing_.zbinSound)) return CvStep::finish(*result);
    return CvStep::fromSecondChance();
  }
  CvStep fail(int code) const { return CvStep::finish(doubt_.failure(code)); }

  DoubtfulValue doubt_;
  ZimoBinaryFraming& framing_;
  std::optional<QByteArray> msg_;
  bool resultFollows_;
};

}  // namespace

std::unique_ptr<CvExchange> ZimoBinaryProtocol::readCv(const CvRequest& request) {
  return std::make_unique<ZimoBinaryExchange>(link(), framing_, request, zbin::readCv(request.cv),
                                              true);
}

std::unique_ptr<CvExchange> ZimoBinaryProtocol::writeCv(const CvRequest& request) {
  const bool programmingTrack = link().commJob == CommJob::WriteProgTrack;
  std::optional<QByteArray> msg =
      programmingTrack ? zbin::writeCv(request.cv, request.value)
                       : zbin::writeCvMain(request.address, request.cv, request.value);
  return std::make_unique<ZimoBinaryExchange>(link(), framing_, request, std::move(msg),
                                              programmingTrack);
}

void ZimoBinaryProtocol::dropInput() {
  SerialProtocol::dropInput();
  framing_.inputDropped();
}

void ZimoBinaryProtocol::greet() {
  framing_.forgetAhead();
  tell(zbin::hello());
  tell(zbin::logOn());
}

void ZimoBinaryProtocol::sayGoodbye(bool) {
  framing_.takeAnswersAhead();
  tell(zbin::logOff());
}

void ZimoBinaryProtocol::tell(const QByteArray& msg) {
  framing_.zbinSend(msg, false);
  framing_.zbinReceive();
}

std::unique_ptr<StationProtocol> makeZimoBinaryProtocol(StationLink& link) {
  return std::make_unique<ZimoBinaryProtocol>(link);
}

}  // namespace lokari
