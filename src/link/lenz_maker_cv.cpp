#include "link/lenz_maker_cv.h"

#include "base/bytes.h"
#include "link/lenz_codec.h"
#include "link/lenz_framing.h"
#include "link/lenz_meaning.h"
#include "link/lenz_service.h"
#include "link/station_link.h"

namespace lokari {
namespace {

using Outcome = LenzService::Outcome;

constexpr int kReportBase = -1000;
/// From here on the station has messages for CVs above 255.
constexpr int kWideCvs = 0x36;
constexpr int kLastCv = 256;

constexpr int kNoContact = 0x02;
constexpr int kOtherProgrammer = 0x08;

/// Why the station did not, as the result of an operation.
int failureOf(const QByteArray& message) {
  const int code = byteAt(message, 1);
  switch (lenz::meaningOf(message)) {
    case lenz::Meaning::Busy:
      return cv_result::kNotReady;
    case lenz::Meaning::Fault:
      if (code == kNoContact) return cv_result::kNoReply;
      return code == kOtherProgrammer ? cv_result::kNotReady : cv_result::kWrongReply;
    default:
      return kReportBase - code;
  }
}

/// A command, the question for its result, and for a write of which the station tells no value, the
/// same for reading it back.
class LenzMakerCv final : public CvExchange {
 public:
  enum class Direction { Read, Write };

  LenzMakerCv(StationLink& link, LenzFraming& framing, const CvRequest& request,
              Direction direction)
      : CvExchange(link, request),
        framing_(framing),
        service_(link, framing, LenzService::ServiceModeWord::Passing),
        direction_(direction),
        method_(
            static_cast<ProgMethod>(direction == Direction::Read ? link.progMode : request.mode)) {}

  /// What is waited for are messages and no bytes: evaluate() does all of it.
  CvStep send() override {
    setWant(0);
    return CvStep::wait();
  }
  void secondChance() override {}

  CvStep evaluate() override {
    if (link().cancelRequested) return CvStep::finishAtOnce(cv_result::kCancelled);
    const bool wide = isWide();
    if (link().cancelRequested) return CvStep::finishAtOnce(cv_result::kCancelled);
    const auto read = readMessage(wide);
    if (direction_ == Direction::Read) return read ? access(*read) : notThere();
    const auto write = writeMessage(wide);
    if (!read || !write) return notThere();
    const CvStep step = access(*write);
    return isReady_ ? readBack(*read) : step;
  }

  void epilogue() override { framing_.leaveServiceMode(); }

 private:
  static CvStep notThere() { return CvStep::finishAtOnce(cv_result::kWrongReply); }

  /// Whether the messages for CVs up to 1024 go out, which the station tells and no setting. CV 256
  /// needs its word too: the byte for it is CV 1024 at one that has them.
  bool isWide() {
    if (method_ == ProgMethod::Paged || method_ == ProgMethod::Register) return false;
    return request().cv >= kLastCv && service_.stationVersion().value_or(0) >= kWideCvs;
  }

  std::optional<QByteArray> readMessage(bool wide) const {
    if (method_ == ProgMethod::Register) return lenz::readRegister(request().cv);
    return lenz::readCv(request().cv, static_cast<int>(method_), wide);
  }
  std::optional<QByteArray> writeMessage(bool wide) const {
    const CvRequest& cv = request();
    if (method_ == ProgMethod::Register) return lenz::writeRegister(cv.cv, cv.value);
    const bool blockEnd = cv.cv == kLastCv && !(wide && method_ != ProgMethod::Paged);
    if (blockEnd) return lenz::writeBlockEnd(cv.value, static_cast<int>(method_));
    return lenz::writeCv(cv.cv, cv.value, static_cast<int>(method_), wide);
  }

  /// Whatever comes of it, the write was taken.
  CvStep readBack(const QByteArray& message) {
    CvStep step = access(message);
    step.refused = false;
    return step;
  }

  CvStep access(const QByteArray& message) {
    isReady_ = false;
    const Outcome taken = service_.command(message);
    if (taken.kind == Outcome::Kind::Refused) return CvStep::refuse(failureOf(taken.message));
    return taken.kind == Outcome::Kind::Taken ? judge(service_.result(request().cv)) : judge(taken);
  }

  CvStep judge(const Outcome& outcome) {
    switch (outcome.kind) {
      case Outcome::Kind::Result:
        return CvStep::finish(lenz::resultValue(outcome.message).value());
      case Outcome::Kind::Ready:
        isReady_ = true;
        return CvStep::finish(cv_result::kWrongReply);
      case Outcome::Kind::Refused:
        return CvStep::finish(failureOf(outcome.message));
      case Outcome::Kind::Cancelled:
        return CvStep::finish(cv_result::kCancelled);
      case Outcome::Kind::Taken:
      case Outcome::Kind::Silent:
        break;
    }
    return shortReply();
  }

  LenzFraming& framing_;
  LenzService service_;
  Direction direction_;
  ProgMethod method_;
  bool isReady_ = false;
};

}  // namespace

std::unique_ptr<CvExchange> lenzMakerReadCv(StationLink& link, LenzFraming& framing,
                                            const CvRequest& request) {
  return std::make_unique<LenzMakerCv>(link, framing, request, LenzMakerCv::Direction::Read);
}

std::unique_ptr<CvExchange> lenzMakerWriteCv(StationLink& link, LenzFraming& framing,
                                             const CvRequest& request) {
  return std::make_unique<LenzMakerCv>(link, framing, request, LenzMakerCv::Direction::Write);
}

}  // namespace lokari
