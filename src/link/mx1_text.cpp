#include "link/mx1_text.h"

#include "base/prompt.h"
#include "link/mx1_text_codec.h"
#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// What reading and writing share: one line out, one reply of nine characters back. The input is
/// not dropped before the first attempt.
class Mx1Exchange : public ReplyExchange {
 public:
  using ReplyExchange::ReplyExchange;

  CvStep send() override {
    link().serial().write(command());
    setWant(mx1::kReplyLength);
    return CvStep::wait();
  }

  void secondChance() final { link().serial().write(command()); }

 protected:
  virtual QByteArray command() const = 0;
  /// A status other than success; `failure` is its code.
  virtual CvStep refused(int failure) = 0;

  CvStep parse(const QByteArray& text) final {
    const mx1::Reply reply = mx1::parseReply(text);
    if (reply.kind == mx1::Reply::Kind::Status) {
      return refused(reply.number ? -*reply.number : cv_result::kWrongReply);
    }
    // A reply that is none has no number either.
    return CvStep::finish(reply.number.value_or(cv_result::kWrongReply));
  }
};

class Mx1Read final : public Mx1Exchange {
 public:
  using Mx1Exchange::Mx1Exchange;

 protected:
  QByteArray command() const override { return mx1::readCommand(request().cv); }

  CvStep refused(int failure) override {
    if (tries_ < 1) return CvStep::finish(failure);
    --tries_;
    link().Delay(1);
    if (link().cancelRequested) return CvStep::finish(cv_result::kCancelled);
    return CvStep::fromSecondChance();
  }

 private:
  int tries_ = 1;
};

class Mx1Write final : public Mx1Exchange {
 public:
  using Mx1Exchange::Mx1Exchange;

  CvStep send() override {
    if (link().commJob == CommJob::WriteProgTrack) return Mx1Exchange::send();
    const CvRequest& cv = request();
    link().serial().write(mx1::writeMainCommand(link().pomAddr, cv.address, cv.cv, cv.value));
    return CvStep::finish(cv.value);
  }

 protected:
  QByteArray command() const override { return mx1::writeCommand(request().cv, request().value); }

  CvStep refused(int failure) override { return CvStep::finish(failure); }
};

}  // namespace

std::unique_ptr<CvExchange> Mx1TextProtocol::readCv(const CvRequest& request) {
  return std::make_unique<Mx1Read>(link(), request);
}

std::unique_ptr<CvExchange> Mx1TextProtocol::writeCv(const CvRequest& request) {
  return std::make_unique<Mx1Write>(link(), request);
}

int Mx1TextProtocol::addrIndex(int address) {
  if (address < mx1::kFirstLongAddress) return address;
  SerialLine& line = link().serial();
  const QByteArray question = mx1::askIndexCommand(address);
  line.write(question);
  link().WaitForData(mx1::kIndexReplyLength);
  if (line.inBufferCount() == 0) {
    line.write(question);
    link().WaitForData(mx1::kIndexReplyLength);
  }
  if (line.inBufferCount() != mx1::kIndexReplyLength) return -1;
  return mx1::parseIndex(line.read()).value_or(-1);
}

void Mx1TextProtocol::greet() {
  link().serial().write(mx1::wakeUp());
}

void Mx1TextProtocol::sayGoodbye(bool leaveMode) {
  if (link().commJob == CommJob::WriteMain) {
    reportRefusal();
    return;
  }
  if (!leaveMode) return;
  link().serial().write(mx1::leaveFirst());
  link().Delay(1);
  link().serial().write(mx1::leaveSecond());
}

/// A main-track write is not answered unless the station refuses its address.
void Mx1TextProtocol::reportRefusal() {
  if (mx1::isRefusal(link().serial().read())) {
    link().prompt().message(QStringLiteral("Adresse gesperrt - Programmierung nicht möglich!"));
  }
}

std::unique_ptr<StationProtocol> makeMx1TextProtocol(StationLink& link) {
  return std::make_unique<Mx1TextProtocol>(link);
}

}  // namespace lokari
