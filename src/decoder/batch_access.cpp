// What a batch does on the line with one CV: accesses, their failures, banks.
#include "base/numbers.h"
#include "base/prompt.h"
#include "decoder/batch_run.h"
#include "decoder/decoder_bench.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// Seconds between a failure that is shown and the next CV.
constexpr int kPauseAfterFailure = 3;

/// A bank is selected by writing, in a read as well. Some stations tell the tracks apart by the job
/// alone; under the job of a read they would write on the main track.
class AsWrite {
 public:
  AsWrite(StationLink& link, bool progOn) : link_(link), job_(link.commJob) {
    link_.commJob = progOn ? CommJob::WriteProgTrack : CommJob::WriteMain;
  }
  ~AsWrite() { link_.commJob = job_; }
  AsWrite(const AsWrite&) = delete;
  AsWrite& operator=(const AsWrite&) = delete;

 private:
  StationLink& link_;
  CommJob job_;
};

}  // namespace

int BatchRun::readCv(int number) {
  return cancelled() ? cv_result::kCancelled : link().ReadCV(number, address_);
}

int BatchRun::writeCv(int number, int value) {
  return cancelled() ? cv_result::kCancelled
                     : link().WriteCV(number, value, address_, description().PROGMODE);
}

std::optional<int> BatchRun::read(CvIndex cv) {
  inHand_ = description().cvText(cv);
  const int result = readCv(description().realNumber(cv).value());
  if (result >= 0) return result;
  if (survive(cv, result)) return 0;
  return std::nullopt;
}

std::optional<int> BatchRun::readConfigCv() {
  inHand_ = configText();
  const int result = readCv(configCv());
  if (result >= 0) return result;
  if (survive(CvIndex(cv::kConfig), result)) return 0;
  return std::nullopt;
}

bool BatchRun::survive(CvIndex cv, int code) {
  return surviveFailure({.cv = cv, .code = code, .text = cvResultText(code)});
}

QString BatchRun::failedWriteText(int wanted, int result) {
  return result < 0 ? cvResultText(result)
                    : QStringLiteral("Wert %1 nicht programmiert (gelesen:%2)!")
                          .arg(printed(wanted), printed(result));
}

bool BatchRun::surviveWrite(CvIndex cv, int wanted, int result) {
  return surviveFailure(
      {.cv = cv, .code = result, .text = failedWriteText(wanted, result), .ofWrite = true});
}

bool BatchRun::surviveUnsendable(CvIndex cv) {
  return surviveFailure({.cv = cv,
                         .code = cv_result::kWrongReply,
                         .text = QStringLiteral("Mit dieser Zentrale nicht zu schreiben!"),
                         .ofWrite = true});
}

bool BatchRun::surviveFailure(const Failure& failure) {
  if (cancelled() || failure.code == cv_result::kCancelled) return endAs(End::Orderly);
  status(failure.text);
  tellBelow(inHand_);
  link().cancelRequested = false;
  bench_.parts_.prompt.beep();
  const bool goesOn = settings().continueOnError;
  // A CV that was not reached for want of its bank, and never will be, is as it was.
  if (goesOn || !failure.ofBank) {
    bench_.report_.add({.cv = failure.cv,
                        .deed = CvDeed::Failed,
                        .before = bench_.sets.value(failure.cv),
                        .reason = failure.text});
  }
  if (!goesOn) {
    if (!failure.ofBank) markFailed(failure);
    return endAs(End::Failed);
  }
  link().lastCvFailed = true;
  link().Delay(kPauseAfterFailure);
  return true;
}

void BatchRun::markFailed(const Failure& failure) {
  // The value stays; one that an earlier failure has taken the place of stays known as well.
  const CvIndex cv = failure.cv;
  if (failure.ofWrite) {
    bench_.sets.setWriteFailed(cv);
  } else {
    bench_.sets.takeFailedRead(cv, bench_.sets.value(cv));
  }
  bench_.showMarkOf(cv);
}

BatchRun::Bank BatchRun::selectBank(CvIndex cv) {
  const DecoderDescription& d = description();
  const CvDescriptor& entry = d.info(cv);
  if (!entry.inBank() || entry.cvBank == lastBank_) return Bank::Selected;
  const CvBank& bank = d.bankOf(entry);
  const AsWrite asWrite(link(), progOn_);
  struct Register {
    int cv;
    int value;
  };
  for (const Register& index : {Register{d.MAPCVA, bank.selectA}, {d.MAPCVB, bank.selectB}}) {
    if (index.cv <= 0) continue;
    inHand_ = QStringLiteral("%1: Bank nicht gewählt (CV %2)").arg(d.cvText(cv)).arg(index.cv);
    const int result = writeCv(index.cv, index.value);
    if (result == index.value) continue;
    lastBank_ = 0;
    const bool goesOn = surviveFailure(
        {.cv = cv, .code = result, .text = failedWriteText(index.value, result), .ofBank = true});
    return goesOn ? Bank::Missed : Bank::Ended;
  }
  lastBank_ = entry.cvBank;
  return Bank::Selected;
}

}  // namespace lokari
