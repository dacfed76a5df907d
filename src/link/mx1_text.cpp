#include "link/mx1_text.h"

#include <utility>

#include "base/clock.h"
#include "base/prompt.h"
#include "link/mx1_text_codec.h"
#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// What reading and writing share: one line out, one reply of nine characters back.
class Mx1Exchange : public ReplyExchange {
 public:
  Mx1Exchange(Mx1TextProtocol& station, StationLink& link, const CvRequest& request)
      : ReplyExchange(link, request), station_(station) {}

  CvStep send() override {
    station_.dropInput();
    ask();
    setWant(mx1::kReplyLength);
    return CvStep::wait();
  }

  void secondChance() final { ask(); }

 protected:
  virtual QByteArray command() const = 0;
  /// A status other than success; `failure` is its code.
  virtual CvStep refused(int failure) = 0;

  Mx1TextProtocol& station() { return station_; }

  /// What waits, without the late replies to earlier questions in front of it. Those are passed
  /// over, and the rest is awaited.
  QByteArray takeReply() final {
    QByteArray text = link().serial().read();
    while (text.size() >= want() && isLate(text)) {
      text.remove(0, want());
      takeUntil(text, [this](const QByteArray& all) { return all.size() >= want(); });
    }
    // Left under way, the reply would meet the next question.
    if (text.size() >= want() && mx1::parseReply(text).kind == mx1::Reply::Kind::NotAReply) {
      takeUntil(text, [](const QByteArray& all) { return mx1::findReply(all) >= 0; });
    }
    return text;
  }

  CvStep parse(const QByteArray& text) final {
    const mx1::Reply reply = mx1::parseReply(text);
    if (reply.kind == mx1::Reply::Kind::Status) {
      return refused(reply.number ? -*reply.number : cv_result::kWrongReply);
    }
    // A reply that is none has no number either.
    return CvStep::finish(reply.number.value_or(cv_result::kWrongReply));
  }

 private:
  void ask() {
    station_.cvQuestions().asked(request().cv % mx1::kNamedCvs);
    link().serial().write(command());
  }

  bool isLate(const QByteArray& text) {
    const mx1::Reply reply = mx1::parseReply(text);
    return reply.kind != mx1::Reply::Kind::NotAReply && reply.named &&
           !station_.cvQuestions().answers(*reply.named);
  }

  /// Adds what comes within the usual time, until `enough` is there.
  template <class Enough>
  void takeUntil(QByteArray& text, Enough enough) {
    const qint64 lastSecond = link().clock().wholeSeconds() + timeoutSeconds();
    while (!enough(text) && !link().cancelRequested) {
      const auto left = static_cast<int>(lastSecond - link().clock().wholeSeconds());
      if (left < 0) return;
      link().WaitForData(1, left);
      text += link().serial().read();
    }
  }

  Mx1TextProtocol& station_;
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
    station().mainWriteGoesOut();
    link().serial().write(mx1::writeMainCommand(link().pomAddr, cv.address, cv.cv, cv.value));
    return CvStep::finish(cv.value);
  }

 protected:
  QByteArray command() const override { return mx1::writeCommand(request().cv, request().value); }

  CvStep refused(int failure) override { return CvStep::finish(failure); }
};

}  // namespace

std::unique_ptr<CvExchange> Mx1TextProtocol::readCv(const CvRequest& request) {
  return std::make_unique<Mx1Read>(*this, link(), request);
}

std::unique_ptr<CvExchange> Mx1TextProtocol::writeCv(const CvRequest& request) {
  return std::make_unique<Mx1Write>(*this, link(), request);
}

int Mx1TextProtocol::addrIndex(int address) {
  if (address < mx1::kFirstLongAddress) return address;
  SerialLine& line = link().serial();
  const QByteArray question = mx1::askIndexCommand(address);
  const auto ask = [&] {
    indexQuestions_.asked(address);
    line.write(question);
    link().WaitForData(mx1::kIndexReplyLength);
  };
  // The index that an earlier question asked for would name another vehicle to the writes.
  dropInput();
  ask();
  if (line.inBufferCount() == 0) ask();
  while (line.inBufferCount() >= mx1::kIndexReplyLength) {
    if (line.inBufferCount() % mx1::kIndexReplyLength != 0) return -1;
    const QByteArray reply = line.read(mx1::kIndexReplyLength);
    const std::optional<int> named = mx1::indexAddress(reply);
    if (!named || indexQuestions_.answers(*named)) {
      return line.inBufferCount() == 0 ? mx1::parseIndex(reply).value_or(-1) : -1;
    }
    if (line.inBufferCount() == 0) link().WaitForData(mx1::kIndexReplyLength);
  }
  return -1;
}

void Mx1TextProtocol::beginSession() {
  mainWritten_ = false;
  addressRefused_ = false;
}

void Mx1TextProtocol::dropInput() {
  SerialLine& line = link().serial();
  QByteArray waiting;
  while (line.inBufferCount() > 0) waiting += line.read();
  const mx1::Refusals refused = mx1::refusalsIn(waiting);
  if (refused.address && mainWritten_) addressRefused_ = true;
  if (refused.switching) switchRefused_ = true;
}

bool Mx1TextProtocol::takeSwitchRefusal() {
  dropInput();
  return std::exchange(switchRefused_, false);
}

void Mx1TextProtocol::greet() {
  cvQuestions_.clear();
  indexQuestions_.clear();
  switchRefused_ = false;
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
  dropInput();
  if (std::exchange(addressRefused_, false)) {
    link().lateRefusal = QStringLiteral("Adresse gesperrt - Programmierung nicht möglich!");
    link().prompt().message(link().lateRefusal);
  }
}

std::unique_ptr<StationProtocol> makeMx1TextProtocol(StationLink& link) {
  return std::make_unique<Mx1TextProtocol>(link);
}

}  // namespace lokari
