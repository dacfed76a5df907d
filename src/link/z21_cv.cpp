// Reading and writing a CV through a Z21.
#include "link/cv_result.h"
#include "link/doubtful_value.h"
#include "link/station_link.h"
#include "link/z21.h"
#include "link/z21_codec.h"
#include "link/z21_form.h"

namespace lokari {
namespace {

constexpr int kResultLength = 10;
constexpr int kStateLength = 7;
/// A station message has come: it tells what is wrong, repeating the question would not help.
constexpr int kTellingLength = 7;
/// The station answers when the decoder has, which takes its time.
constexpr int kTimeout = 60;

class Z21Exchange : public CvExchange {
 public:
  Z21Exchange(Z21Protocol& station, StationLink& link, const CvRequest& request)
      : CvExchange(link, request), station_(station) {}
  ~Z21Exchange() override { station_.endCvOperation(); }

  int timeoutSeconds() const final { return kTimeout; }
  bool secondChanceHelps() const final {
    return station_.z21LastReply.size() < kTellingLength && !station_.isPortClosed();
  }

  CvStep evaluate() override {
    const auto value = z21::cvResultValue(station_.z21LastReply);
    if (station_.z21ReplyLen >= want() && value) return believe(*value);
    if (link().cancelRequested && !z21::refusalCode(station_.z21LastReply)) {
      return CvStep::finish(cv_result::kCancelled);
    }
    const int code = z21::refusalCode(station_.z21LastReply).value_or(cv_result::kWrongReply);
    return CvStep::finish(doubt_.failure(code));
  }

 protected:
  Z21Protocol& station() { return station_; }
  const Z21Form& form() const { return station_.form(); }

  std::optional<QString> mainRead() const { return z21::readOnMain(mainAddress(), request().cv); }
  std::optional<QString> mainWrite() const {
    return z21::writeOnMain(mainAddress(), request().cv, request().value);
  }

  CvStep await(const std::optional<QString>& text) {
    // No message can carry these numbers; one cut to fit would mean another CV or value.
    if (!text) return CvStep::finish(cv_result::kWrongReply);
    station_.beginCvOperation(request().cv);
    send(*text, z21::cvResultHead(request().cv), kResultLength);
    return CvStep::wait();
  }

  using CvExchange::send;
  void send(const QString& text, const QByteArray& wanted, int length) {
    station_.z21Wanted = wanted;
    setWant(length);
    station_.z21Send(text);
    link().Delay(0);
  }

 private:
  int mainAddress() const {
    return form().marksMainAddresses ? z21::markedAddress(request().address) : request().address;
  }

  CvStep believe(int value) {
    const bool sound = station_.isSound(station_.z21LastReply);
    if (const auto result = doubt_.take(value, sound)) return CvStep::finish(*result);
    return link().cancelRequested ? CvStep::finish(cv_result::kCancelled) : CvStep::fromStart();
  }

  Z21Protocol& station_;
  DoubtfulValue doubt_;
};

class Z21Read final : public Z21Exchange {
 public:
  using Z21Exchange::Z21Exchange;

  CvStep send() override {
    return await(link().progTrack ? z21::readOnProgTrack(request().cv) : mainRead());
  }

  /// A datagram is lost now and then, so the main track is asked once more. Behind that the
  /// programming track is asked where the form has it: it tells what is wrong with the tracks.
  void secondChance() override {
    if (!link().progTrack && !repeated_) {
      repeated_ = true;
      Z21Exchange::send(*mainRead(), z21::cvResultHead(request().cv), kResultLength);
      return;
    }
    elsewhere_ = !link().progTrack;
    Z21Exchange::send(*z21::readOnProgTrack(request().cv), z21::stateHead(), kStateLength);
  }

  CvStep evaluate() override {
    const bool valueCame = z21::cvResultValue(station().z21LastReply).has_value();
    if (elsewhere_ && valueCame) {
      // Of whatever decoder stands on the programming track, and not of the vehicle.
      return CvStep::finish(link().cancelRequested ? cv_result::kCancelled
                                                   : cv_result::kWrongReply);
    }
    const bool silent = !valueCame && secondChanceHelps() && !link().cancelRequested;
    const bool elseLeft = repeated_ && !elsewhere_ && form().asksOtherTrack;
    if (silent && elseLeft) return CvStep::fromSecondChance();
    return Z21Exchange::evaluate();
  }

 private:
  bool repeated_ = false;   // on the main track
  bool elsewhere_ = false;  // asked on the programming track for a vehicle on the main track
};

class Z21Write final : public Z21Exchange {
 public:
  using Z21Exchange::Z21Exchange;

  CvStep send() override {
    const CvRequest& cv = request();
    if (link().progTrack) return await(z21::writeOnProgTrack(cv.cv, cv.value));
    const auto text = mainWrite();
    if (!text) return CvStep::finish(cv_result::kWrongReply);
    station().z21Wanted.clear();
    station().z21Send(*text);
    link().Delay(0);
    return CvStep::finish(cv.value);
  }

  void secondChance() override {
    Z21Exchange::send(*z21::writeOnProgTrack(request().cv, request().value),
                      z21::cvResultHead(request().cv), kResultLength);
  }
};

}  // namespace

std::unique_ptr<CvExchange> Z21Protocol::readCv(const CvRequest& request) {
  return std::make_unique<Z21Read>(*this, link(), request);
}

std::unique_ptr<CvExchange> Z21Protocol::writeCv(const CvRequest& request) {
  return std::make_unique<Z21Write>(*this, link(), request);
}

}  // namespace lokari
