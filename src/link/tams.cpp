#include "link/tams.h"

#include "link/cv_result.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/tams_codec.h"

namespace lokari {
namespace {

constexpr int kReadReply = 3;
constexpr int kWriteReply = 4;

/// What reading and writing share. The second chance is only a longer wait: nothing goes out
/// again.
class TamsExchange : public ReplyExchange {
 public:
  TamsExchange(StationLink& link, OwedReplies& owed, const CvRequest& request)
      : ReplyExchange(link, request), owed_(owed) {}

  void secondChance() final {}

  void epilogue() final {
    if (!tams::isComplete(reply_)) {
      takeMore();
      // The end itself may arrive in two pieces; its second half must not meet the next reply.
      if (reply_.endsWith(']')) takeMore();
    }
    owed_.taken(reply_, answered_ ? 1 : 0);
  }

 protected:
  CvStep await(const QByteArray& command, int want) {
    if (!owed_.settle()) return CvStep::finish(cv_result::kCancelled);
    link().protocol().dropInput();
    link().serial().write(command);
    owed_.asked();
    setWant(want);
    return CvStep::wait();
  }

  QByteArray takeReply() final {
    reply_ = link().serial().read();
    const bool enough = reply_.size() >= want();
    reply_ = tams::withoutLineEnds(reply_);
    while (enough && reply_.size() < want() && takeMore()) reply_ = tams::withoutLineEnds(reply_);
    while (reply_.size() >= want() && tams::isCutText(reply_) && takeMore()) {
    }
    answered_ = reply_.size() >= want();
    return reply_;
  }

 private:
  bool takeMore() {
    link().WaitForData(1);
    const QByteArray more = link().serial().read();
    reply_ += more;
    return !more.isEmpty();
  }

  OwedReplies& owed_;
  QByteArray reply_;
  bool answered_ = false;
};

class TamsRead final : public TamsExchange {
 public:
  using TamsExchange::TamsExchange;

  CvStep send() override {
    return await(tams::readCommand(link().progMode, request().cv), kReadReply);
  }

 protected:
  CvStep parse(const QByteArray& reply) override { return CvStep::finish(tams::readResult(reply)); }
};

class TamsWrite final : public TamsExchange {
 public:
  using TamsExchange::TamsExchange;

  CvStep send() override {
    const CvRequest& cv = request();
    return await(link().commJob == CommJob::WriteMain
                     ? tams::writeMainCommand(cv.address, cv.cv, cv.value)
                     : tams::writeCommand(link().progMode, cv.cv, cv.value),
                 kWriteReply);
  }

 protected:
  CvStep parse(const QByteArray& reply) override {
    return CvStep::finish(tams::writeResult(reply, request().value));
  }
};

}  // namespace

TamsProtocol::TamsProtocol(StationLink& link)
    : SerialProtocol(link), owed_(link, tams::repliesIn) {}

void TamsProtocol::dropInput() {
  SerialLine& line = link().serial();
  while (line.inBufferCount() > 0) owed_.taken(line.read());
}

std::unique_ptr<CvExchange> TamsProtocol::readCv(const CvRequest& request) {
  return std::make_unique<TamsRead>(link(), owed_, request);
}

std::unique_ptr<CvExchange> TamsProtocol::writeCv(const CvRequest& request) {
  return std::make_unique<TamsWrite>(link(), owed_, request);
}

std::unique_ptr<StationProtocol> makeTamsProtocol(StationLink& link) {
  return std::make_unique<TamsProtocol>(link);
}

}  // namespace lokari
