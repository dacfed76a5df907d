#include "link/p50x_cv.h"

#include "link/cv_result.h"
#include "link/ibx_send.h"
#include "link/intellibox_codec.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari::p50x {
namespace {

using Kind = P50xOutcome::Kind;

/// What an outcome without an event is.
int failure(const P50xOutcome& outcome) {
  switch (outcome.kind) {
    case Kind::Unknown:
    case Kind::Refused:
      return cv_result::kNotReady;
    case Kind::Cancelled:
      return cv_result::kCancelled;
    case Kind::Event:
    case Kind::Text:
      return cv_result::kWrongReply;
    case Kind::Silent:
    case Kind::NoResult:
      break;
  }
  return cv_result::kNoReply;
}

bool isWhole(const P50xOutcome& outcome) {
  return outcome.kind == Kind::Event && ibx::missing(outcome.event) == 0;
}

/// All of it happens in evaluate(); nothing is awaited ahead of it.
class BinaryExchange : public CvExchange {
 public:
  using CvExchange::CvExchange;

  CvStep send() override { return CvStep::wait(); }
  void secondChance() final {}
  void epilogue() final { endProgramming(link()); }

 protected:
  CvStep finish(const P50xOutcome& outcome, int result) {
    if (result == cv_result::kNoReply && outcome.kind != Kind::Event) return shortReply();
    const bool refused = outcome.kind == Kind::Unknown || outcome.kind == Kind::Refused;
    return refused && outcome.sendings == 1 ? CvStep::refuse(result) : CvStep::finish(result);
  }
};

class BinaryRead final : public BinaryExchange {
 public:
  BinaryRead(StationLink& link, const CvRequest& request, const QByteArray& command,
             const std::optional<QByteArray>& instead)
      : BinaryExchange(link, request), command_(command), instead_(instead) {}

  CvStep evaluate() override {
    P50xOutcome outcome = p50xAccess(link(), command_);
    if (instead_ && wantsByte(outcome)) outcome = p50xAccess(link(), *instead_);
    return finish(outcome, readResult(outcome));
  }

 private:
  QByteArray command_;
  std::optional<QByteArray> instead_;
};

class BinaryWrite final : public BinaryExchange {
 public:
  BinaryWrite(StationLink& link, const CvRequest& request, const std::optional<QByteArray>& command)
      : BinaryExchange(link, request), command_(command) {}

  CvStep send() override {
    return command_ ? BinaryExchange::send() : CvStep::finishAtOnce(cv_result::kWrongReply);
  }

  CvStep evaluate() override {
    const P50xOutcome outcome = p50xAccess(link(), *command_);
    return finish(outcome, writeResult(outcome, request().value));
  }

 private:
  std::optional<QByteArray> command_;  ///< nothing for what no command can name
};

}  // namespace

bool wantsByte(const P50xOutcome& outcome) {
  return outcome.kind == Kind::Unknown || (isWhole(outcome) && ibx::bitsFailed(outcome.event));
}

int readResult(const P50xOutcome& outcome) {
  return isWhole(outcome) ? ibx::readResult(outcome.event) : failure(outcome);
}

int writeResult(const P50xOutcome& outcome, int value) {
  return isWhole(outcome) ? ibx::writeResult(outcome.event, value) : failure(outcome);
}

void endProgramming(StationLink& link) {
  ibxSend(link, ibx::endProgramming());
  link.WaitForData(1);
  link.protocol().dropInput();
}

std::unique_ptr<CvExchange> makeRead(StationLink& link, const CvRequest& request,
                                     const QByteArray& command,
                                     const std::optional<QByteArray>& instead) {
  return std::make_unique<BinaryRead>(link, request, command, instead);
}

std::unique_ptr<CvExchange> makeWrite(StationLink& link, const CvRequest& request, int mode) {
  const bool main = link.commJob == CommJob::WriteMain;
  return std::make_unique<BinaryWrite>(
      link, request,
      main ? ibx::writeCvMain(link.pomAddr, request.address, request.cv, request.value)
           : ibx::writeCv(request.cv, request.value, mode));
}

}  // namespace lokari::p50x
