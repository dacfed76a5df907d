// Reading and writing a CV through an MX10.
#include "link/cv_result.h"
#include "link/mx10.h"
#include "link/mx10_codec.h"
#include "link/station_link.h"

namespace lokari {
namespace {

class Mx10Exchange : public CvExchange {
 public:
  Mx10Exchange(Mx10Protocol& station, StationLink& link, const CvRequest& request)
      : CvExchange(link, request), station_(station) {}
  ~Mx10Exchange() override { station_.endCvOperation(); }

  /// Nobody listens at the station's port: asking again would not help.
  bool secondChanceHelps() const final { return !station_.isRefused(); }

 protected:
  Mx10Protocol& station() { return station_; }

  /// Gives the result of sending, after the pause that the bus needs.
  int sendMessage(const CanMessage& message) {
    link().Delay(0);
    link().Delay(0);
    station_.ClearMX10Input();
    return station_.canWrite(message);
  }

 private:
  Mx10Protocol& station_;
};

class Mx10Read final : public Mx10Exchange {
 public:
  using Mx10Exchange::Mx10Exchange;

  CvStep send() override {
    // No message can carry these numbers; one cut to fit would mean another CV.
    if (!question()) return CvStep::finish(cv_result::kWrongReply);
    ask();
    return CvStep::wait();
  }

  void secondChance() override { ask(); }

  CvStep evaluate() override {
    if (station().canRxMsg.ID == 0) return shortReply();
    return CvStep::finish(mx10::cvValue(station().canRxMsg).value_or(cv_result::kWrongReply));
  }

 private:
  std::optional<CanMessage> question() {
    return mx10::readCv(station().mx10Nid, request().address, request().cv);
  }

  void ask() {
    const CanMessage message = *question();
    station().awaitCv(message);
    setWant(sendMessage(message) == 0 ? static_cast<qint32>(message.ID) : 0);
    station().canRxMsg.LEN = 0;
  }
};

class Mx10Write final : public Mx10Exchange {
 public:
  using Mx10Exchange::Mx10Exchange;

  CvStep send() override {
    const CvRequest& cv = request();
    const auto message = mx10::writeCv(station().mx10Nid, cv.address, cv.cv, cv.value);
    if (!message) return CvStep::finish(cv_result::kWrongReply);
    const bool sent = sendMessage(*message) == 0;
    station().canRxMsg = {};
    if (!sent) return shortReply();
    // Nothing is awaited: the message stands for its own answer.
    CanMessage& answer = station().canRxMsg;
    answer.ID = message->ID;
    answer.LEN = 7;
    answer.DATA[6] = static_cast<quint8>(cv.value);
    return evaluate();
  }

  void secondChance() override {}

  CvStep evaluate() override { return CvStep::finish(station().canRxMsg.DATA[6]); }
};

}  // namespace

std::unique_ptr<CvExchange> Mx10Protocol::readCv(const CvRequest& request) {
  return std::make_unique<Mx10Read>(*this, link(), request);
}

std::unique_ptr<CvExchange> Mx10Protocol::writeCv(const CvRequest& request) {
  return std::make_unique<Mx10Write>(*this, link(), request);
}

}  // namespace lokari
