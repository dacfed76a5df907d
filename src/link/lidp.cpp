#include "link/lidp.h"

#include "link/cv_result.h"
#include "link/lidp_codec.h"
#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// What reading and writing share: one line out, one reply back, the same line on the second
/// chance.
class LidpExchange : public ReplyExchange {
 public:
  LidpExchange(StationLink& link, OwedReplies& owed, const CvRequest& request, QByteArray command)
      : ReplyExchange(link, request), owed_(owed), command_(std::move(command)) {}

  CvStep send() final {
    if (!owed_.settle()) return CvStep::finish(cv_result::kCancelled);
    link().protocol().dropInput();
    ask();
    setWant(lidp::kReplyLength);
    return CvStep::wait();
  }

  void secondChance() final { ask(); }

 protected:
  QByteArray takeReply() final {
    const QByteArray waiting = link().serial().read();
    if (waiting.size() < want()) return waiting;
    QByteArray reply = lidp::withoutLateEnd(waiting);
    if (reply.size() < want()) {
      link().WaitForData(want() - static_cast<qint32>(reply.size()));
      reply += link().serial().read();
    }
    owed_.taken(reply);
    return reply;
  }

 private:
  void ask() {
    link().serial().write(command_);
    owed_.asked();
  }

  OwedReplies& owed_;
  QByteArray command_;
};

class LidpRead final : public LidpExchange {
 public:
  LidpRead(StationLink& link, OwedReplies& owed, const CvRequest& request)
      : LidpExchange(link, owed, request, lidp::readCommand(request.cv)) {}

 protected:
  CvStep parse(const QByteArray& reply) override { return CvStep::finish(lidp::readResult(reply)); }
};

class LidpWrite final : public LidpExchange {
 public:
  LidpWrite(StationLink& link, OwedReplies& owed, const CvRequest& request)
      : LidpExchange(link, owed, request, lidp::writeCommand(request.cv, request.value)) {}

 protected:
  CvStep parse(const QByteArray& reply) override {
    return CvStep::finish(lidp::writeResult(reply, request().value));
  }
};

}  // namespace

LidpProtocol::LidpProtocol(StationLink& link)
    : SerialProtocol(link), owed_(link, lidp::repliesIn) {}

void LidpProtocol::dropInput() {
  SerialLine& line = link().serial();
  while (line.inBufferCount() > 0) owed_.taken(line.read());
}

std::unique_ptr<CvExchange> LidpProtocol::readCv(const CvRequest& request) {
  return std::make_unique<LidpRead>(link(), owed_, request);
}

std::unique_ptr<CvExchange> LidpProtocol::writeCv(const CvRequest& request) {
  return std::make_unique<LidpWrite>(link(), owed_, request);
}

void LidpProtocol::sayGoodbye(bool) {
  link().serial().write(lidp::endCommand());
}

std::unique_ptr<StationProtocol> makeLidpProtocol(StationLink& link) {
  return std::make_unique<LidpProtocol>(link);
}

}  // namespace lokari
