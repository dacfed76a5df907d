#include "link/tams.h"

#include "link/cv_result.h"
#include "link/intellibox_codec.h"
#include "link/p50x_cv.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/tams_codec.h"

namespace lokari {
namespace {

constexpr int kReadReply = 3;
constexpr int kWriteReply = 4;
/// A carriage return comes with what is ahead of it, or not at all.
constexpr Millis kLineEndTime = 100;

QByteArray binaryRead(int mode, int cv) {
  return ibx::readsDirect(mode) ? ibx::readCvByByte(cv) : ibx::readCv(cv, mode);
}

/// What reading and writing share. The second chance is only a longer wait: nothing goes out
/// again.
class TamsExchange : public CvExchange {
 public:
  TamsExchange(StationLink& link, TamsProtocol& station, const CvRequest& request)
      : CvExchange(link, request), station_(station) {}
  ~TamsExchange() override { station_.endText(); }

  void secondChance() final {}
  bool secondChanceHelps() const final { return !station_.hasWholeText(); }

  CvStep evaluate() final {
    takeReply();
    if (answered_) return CvStep::finish(result(reply_));
    if (reply_.isEmpty() && !link().cancelRequested) {
      if (const auto binary = withoutText()) return CvStep::finish(*binary);
    }
    return shortReply();
  }

  void epilogue() final {
    station_.endText();
    if (binary_) p50x::endProgramming(link());
    if (!binary_ && !tams::isComplete(reply_)) takeMore();
    // The end itself may arrive in two pieces; its second half must not meet the next reply.
    if (tams::isComplete(reply_)) takeLineEnd();
    station_.owed().taken(reply_, answered_ ? 1 : 0);
  }

 protected:
  /// What a whole reply says.
  virtual int result(const QByteArray& reply) const = 0;
  /// The station has answered no text: the result by its binary commands, or nothing.
  virtual std::optional<int> withoutText() = 0;

  CvStep await(const QByteArray& command, int want) {
    if (!station_.owed().settle()) return CvStep::finish(cv_result::kCancelled);
    ask(command);
    setWant(want);
    return CvStep::wait();
  }

  void ask(const QByteArray& command) {
    link().protocol().dropInput();
    station_.beginText();
    link().serial().write(command);
    station_.owed().asked();
  }

  QByteArray readCommand() const { return tams::readCommand(link().progMode, request().cv); }
  /// Whether the station programs by binary commands; a late text is taken as the reply.
  bool knowsBinary() {
    station_.endText();
    const P50xOutcome outcome = p50xProbe(link());
    if (outcome.kind == P50xOutcome::Kind::Text) takeText(outcome.event);
    return outcome.kind == P50xOutcome::Kind::Event;
  }
  P50xOutcome access(const QByteArray& command) {
    binary_ = true;
    return p50xAccess(link(), command);
  }
  /// It answers binary commands alone: no text is owed any more.
  void useBinary() {
    station_.knowsNoText = true;
    station_.owed().forget();
  }

  /// What has come of a reply; up to its end.
  void takeText(const QByteArray& begun) {
    reply_ = tams::textOf(begun);
    while (!tams::isComplete(reply_) && takeMore()) {
    }
    answered_ = !reply_.isEmpty();
  }
  const QByteArray& reply() const { return reply_; }

 private:
  void takeReply() {
    reply_.clear();
    const bool enough = take().size() >= want();
    while (enough && isShort() && takeMore()) {
    }
    while (!isShort() && tams::isCutText(reply_) && takeMore()) {
    }
    answered_ = !isShort();
  }

  /// The bracket may be the last that comes.
  bool isShort() const { return reply_.size() < want() && !tams::isComplete(reply_); }

  /// Line ends, which may be late ones of the reply before, are nothing.
  bool takeMore() {
    for (;;) {
      link().WaitForData(1);
      const QByteArray more = take();
      if (more.isEmpty() || !tams::textOf(more).isEmpty()) return !more.isEmpty();
    }
  }

  void takeLineEnd() {
    SerialLine& line = link().serial();
    Clock& clock = link().clock();
    if (endsLine_) return;
    clock.waitUntil([&] { return line.inBufferCount() > 0; }, clock.now() + kLineEndTime);
    take();
  }

  /// What waits, as it came.
  QByteArray take() {
    const QByteArray input = link().serial().read();
    reply_ += tams::textOf(input);
    if (!input.isEmpty()) endsLine_ = input.endsWith('\r');
    return input;
  }

  TamsProtocol& station_;
  QByteArray reply_;
  bool answered_ = false;
  bool endsLine_ = false;
  bool binary_ = false;
};

class TamsRead final : public TamsExchange {
 public:
  using TamsExchange::TamsExchange;

  CvStep send() override { return await(readCommand(), kReadReply); }

 protected:
  int result(const QByteArray& reply) const override { return tams::readResult(reply); }

  std::optional<int> withoutText() override {
    if (!knowsBinary()) return reply().isEmpty() ? std::nullopt : std::optional(result(reply()));
    const P50xOutcome outcome = access(binaryRead(link().progMode, request().cv));
    if (outcome.kind != P50xOutcome::Kind::Event) return std::nullopt;
    useBinary();
    return p50x::readResult(outcome);
  }
};

class TamsWrite final : public TamsExchange {
 public:
  using TamsExchange::TamsExchange;

  CvStep send() override {
    const CvRequest& cv = request();
    return await(isMain() ? tams::writeMainCommand(cv.address, cv.cv, cv.value)
                          : tams::writeCommand(link().progMode, cv.cv, cv.value),
                 kWriteReply);
  }

 protected:
  int result(const QByteArray& reply) const override {
    return tams::writeResult(reply, request().value);
  }

  /// The write may have been done, unless the station understands no text. A question that writes
  /// nothing shows that; on the main track there is none.
  std::optional<int> withoutText() override {
    if (isMain()) return std::nullopt;
    if (!knowsBinary() || answersText()) return lateResult();
    useBinary();
    const CvRequest& cv = request();
    return p50x::writeResult(access(ibx::writeCv(cv.cv, cv.value, link().progMode)), cv.value);
  }

 private:
  bool isMain() const { return link().commJob == CommJob::WriteMain; }

  /// The text that has come may be the late reply to the write.
  std::optional<int> lateResult() const {
    const int value = request().value;
    return result(reply()) == value ? std::optional(value) : std::nullopt;
  }

  bool answersText() {
    ask(readCommand());
    link().WaitForData(kReadReply);
    const QByteArray text = link().serial().read();
    if (!text.isEmpty()) takeText(text);
    return !text.isEmpty() || link().cancelRequested;
  }
};

}  // namespace

TamsProtocol::TamsProtocol(StationLink& link) : SerialProtocol(link), owed_(link, tams::repliesIn) {
  link.serial().onReceived = [this](const QByteArray& data) {
    if (awaitsText_) heard_ += data;
  };
}

TamsProtocol::~TamsProtocol() {
  link().serial().onReceived = nullptr;
}

void TamsProtocol::beginText() {
  heard_.clear();
  awaitsText_ = true;
}

void TamsProtocol::endText() {
  heard_.clear();
  awaitsText_ = false;
}

bool TamsProtocol::arrived(qint32 want) {
  return SerialProtocol::arrived(want) || (hasWholeText() && bufferCount() > 0);
}

void TamsProtocol::dropInput() {
  SerialLine& line = link().serial();
  while (line.inBufferCount() > 0) owed_.taken(line.read());
}

std::unique_ptr<CvExchange> TamsProtocol::readCv(const CvRequest& request) {
  if (speaksBinary()) {
    return p50x::makeRead(link(), request, binaryRead(link().progMode, request.cv));
  }
  return std::make_unique<TamsRead>(link(), *this, request);
}

std::unique_ptr<CvExchange> TamsProtocol::writeCv(const CvRequest& request) {
  if (speaksBinary()) return p50x::makeWrite(link(), request, link().progMode);
  return std::make_unique<TamsWrite>(link(), *this, request);
}

bool TamsProtocol::speaksBinary() const {
  return knowsNoText || link().settings().makerForm;
}

std::unique_ptr<StationProtocol> makeTamsProtocol(StationLink& link) {
  return std::make_unique<TamsProtocol>(link);
}

}  // namespace lokari
