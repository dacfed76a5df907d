#include "decoder/batch_run.h"

#include "base/numbers.h"
#include "base/prompt.h"
#include "db/catalogue.h"
#include "decoder/decoder_bench.h"
#include "link/link_error.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// Seconds between a failure that is shown and the next CV.
constexpr int kPauseAfterFailure = 3;
/// Makers that raise no question: none, and the number for home-built decoders.
constexpr int kNoMaker = 0;
constexpr int kPublicMaker = 13;

QString textOf(const char16_t* text) {
  return QStringView(text).toString();
}

class NoView final : public CommView {
 public:
  void setStatus(const QString&) override {}
  void setProgress(double) override {}
  void resetProgress() override {}
  void setProgressEnabled(bool) override {}
  void setCancelCaption(const QString&) override {}
  void hide() override {}
};

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

/// The names of the CVs of the first tabs in the status line.
QString fixedName(int cv) {
  switch (cv) {
    case 2:
      return QStringLiteral("Minimalspannung");
    case 3:
      return QStringLiteral("Beschleunigungszeit");
    case 4:
      return QStringLiteral("Bremszeit");
    case 5:
      return QStringLiteral("Maximalgeschwindigkeit");
    case 6:
      return QStringLiteral("Mittengeschwindigkeit");
    default:
      return {};
  }
}

}  // namespace

BatchRun::BatchRun(DecoderBench& bench, bool progOn, const Direction& direction)
    : bench_(bench),
      progOn_(progOn),
      direction_(direction),
      noView_(std::make_unique<NoView>()),
      view_(link().view() ? link().view() : noView_.get()) {}

BatchRun::~BatchRun() = default;

StationLink& BatchRun::link() const {
  return bench_.parts_.link;
}

Settings& BatchRun::settings() const {
  return bench_.parts_.settings;
}

const DecoderDescription& BatchRun::description() const {
  return bench_.description;
}

bool BatchRun::cancelled() const {
  return link().cancelRequested;
}

bool BatchRun::addressMarked() const {
  return description().address.of(direction_.write);
}

// ---- What is marked ---------------------------------------------------------------------------

bool BatchRun::marked(CvIndex cv) const {
  return spared_.count(cv) == 0 && bench_.isPlanned(direction_.write, cv);
}

int BatchRun::countPlanned() const {
  int total = addressMarked() ? direction_.addressSteps : 0;
  for (int i = 2; i <= kHighestCvIndex; ++i) {
    if (marked(CvIndex(i))) ++total;
  }
  return total;
}

// ---- The run ----------------------------------------------------------------------------------

void BatchRun::run() {
  bench_.clearReport();
  status(QStringLiteral("Beginne Kommunikation ..."));
  view_->setCancelCaption(QStringLiteral("Abbruch"));
  bench_.parts_.clock.pump();
  total_ = countPlanned();
  const QString leftOut = bench_.leftOut(direction_.write);
  if (total_ == 0) {
    bench_.jobEnd = JobEnd::NothingMarked;
    bench_.parts_.prompt.message(textOf(direction_.nothingToDo), Icon::Warning, leftOut);
    link().cancelRequested = false;
    bench_.commRunning = false;
    view_->hide();
  } else {
    if (!leftOut.isEmpty()) {
      bench_.parts_.prompt.message(textOf(direction_.leavesOut), Icon::Information, leftOut);
    }
    if (mayBegin()) {
      total_ = countPlanned();
      runSession();
    } else {
      bench_.jobEnd = JobEnd::Stopped;
      view_->hide();
    }
  }
  view_->setCancelCaption(QStringLiteral("OK"));
}

void BatchRun::runSession() {
  const QString failure = link().openForJob(progOn_);
  if (!failure.isEmpty()) {
    bench_.jobEnd = JobEnd::NoSession;
    bench_.parts_.prompt.beep();
    status(failure);
    view_->setDetail(link().openFailureReason());
    return;
  }
  bench_.commRunning = true;
  bench_.reachedStation_ = true;
  bench_.jobEnd = JobEnd::Stopped;
  try {
    if (checks() && mainLoop()) bench_.jobEnd = JobEnd::Complete;
  } catch (const LinkError& error) {
    // Nobody is left on the line: going on would fail once per CV.
    status(error.message());
    tellBelow(inHand_);
    link().cancelRequested = false;
    bench_.parts_.prompt.beep();
    end_ = End::Failed;
  }
  if (end_ == End::Failed) bench_.jobEnd = JobEnd::Failed;
  addRemarks();
  close();
  bench_.showReport();
}

void BatchRun::close() {
  const bool orderly = end_ == End::Orderly;
  if (orderly) emit bench_.speedTableChanged();
  view_->resetProgress();
  view_->setProgressEnabled(false);
  bench_.progressEnabled_ = false;
  if (orderly) status(QStringLiteral("Beende Kommunikation ..."));
  // A cancelled write stays cancelled through the farewell.
  if (!direction_.write) link().cancelRequested = false;
  link().endcomm(true, progOn_);
  link().cancelRequested = false;
  bench_.commRunning = false;
  if (orderly) view_->hide();
}

bool BatchRun::endAs(End end) {
  end_ = end;
  return false;
}

bool BatchRun::mainLoop() {
  for (int i = 2; i <= kHighestCvIndex; ++i) {
    if (!step(CvIndex(i))) return false;
    if (cancelled()) return endAs(End::Orderly);
  }
  return true;
}

bool BatchRun::step(CvIndex cv) {
  const int number = cv.value();
  if (number == cv::kConsist) return !marked(cv) || consist();
  if (number == cv::kConfig) return !(marked(cv) || configForced()) || config();
  if (!marked(cv)) return true;
  const CvDescriptor& entry = description().info(cv);
  const bool point = cv::inTable(cv) && (!entry.exists() || entry.ofTable);
  return point ? tablePoint(cv) : plain(cv);
}

// ---- Access -----------------------------------------------------------------------------------

std::optional<int> BatchRun::read(CvIndex cv) {
  inHand_ = description().cvText(cv);
  const int result = link().ReadCV(description().realNumber(cv).value(), address_);
  if (result >= 0) return result;
  if (survive(cv, result)) return 0;
  return std::nullopt;
}

std::optional<int> BatchRun::readConfigCv() {
  inHand_ = QStringLiteral("CV %1").arg(configCv());
  const int result = link().ReadCV(configCv(), address_);
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
    const int result = link().WriteCV(index.cv, index.value, address_, d.PROGMODE);
    if (result == index.value) continue;
    lastBank_ = 0;
    const bool goesOn = surviveFailure(
        {.cv = cv, .code = result, .text = failedWriteText(index.value, result), .ofBank = true});
    return goesOn ? Bank::Missed : Bank::Ended;
  }
  lastBank_ = entry.cvBank;
  return Bank::Selected;
}

// ---- Checks -----------------------------------------------------------------------------------

std::optional<int> BatchRun::readAddress() {
  const auto config = readConfigCv();
  if (!config) return std::nullopt;
  // What could not be read is not known: it must neither warn nor be written back.
  if (link().lastCvFailed) return 0;
  config_ = *config;
  if ((config_ & config_bit::kLongAddress) == 0) return read(CvIndex(cv::kAddress));
  const auto low = read(CvIndex(cv::kLongAddressLow));
  if (!low || link().lastCvFailed) return low;
  const auto high = read(CvIndex(cv::kLongAddressHigh));
  if (!high || link().lastCvFailed) return high;
  constexpr int kHighMask = 63;
  return (*high & kHighMask) * 256 + *low;
}

bool BatchRun::acceptAddress(int found) {
  bench_.sets.setMark(CvIndex(cv::kAddress), CvMark::Failed);
  refillAddress();
  const QString text = QStringLiteral("Abweichende Adresse im Empfänger (%1)!").arg(found);
  return bench_.parts_.prompt.ask(text, Buttons::OkCancel, Icon::Warning) == Answer::Ok;
}

bool BatchRun::acceptFunctionDecoder() {
  return bench_.parts_.prompt.ask(QStringLiteral("Achtung: Funktionsdecoder!"), Buttons::OkCancel,
                                  Icon::Warning) == Answer::Ok;
}

QString BatchRun::makerName(int number) const {
  const auto maker = bench_.parts_.catalogue.makerByNumber(number);
  return maker ? maker->name : QString::number(number);
}

BatchRun::MakerAnswer BatchRun::askMaker(int number) {
  if (number == bench_.dcManufNo || number == kNoMaker || number == kPublicMaker) {
    return MakerAnswer::Same;
  }
  const QString text =
      QStringLiteral("Abweichender Decoderhersteller (%1)!").arg(makerName(number));
  const Answer answer = bench_.parts_.prompt.ask(Box{.text = text,
                                                     .buttons = Buttons::OkCancel,
                                                     .icon = Icon::Warning,
                                                     .more = textOf(direction_.takingOver)});
  return answer == Answer::Ok ? MakerAnswer::TakeOver : MakerAnswer::Cancel;
}

void BatchRun::takeOverMaker(int number) {
  bench_.chooseManufacturer(makerName(number));
}

// ---- Showing ----------------------------------------------------------------------------------

void BatchRun::status(const QString& text) {
  view_->setStatus(text);
  if (belowStatus_) tellBelow({});
}

void BatchRun::tellBelow(const QString& text) {
  view_->setRemark(text);
  belowStatus_ = !text.isEmpty();
}

void BatchRun::statusVerb(const QString& what) {
  status(textOf(direction_.verb) + u' ' + what);
}

void BatchRun::plainStatus(CvIndex cv) {
  const QString cvText = description().cvText(cv);
  QString name = fixedName(cv.value());
  if (name.isEmpty()) name = description().info(cv).cvName;
  statusVerb(name.isEmpty() ? cvText : QStringLiteral("%1 (%2)").arg(name, cvText));
}

void BatchRun::startProgress() {
  view_->setProgress(0);
  view_->setProgressEnabled(true);
  bench_.progressEnabled_ = true;
  view_->setProgress(100.0 * done_ / total_);
}

void BatchRun::countDone() {
  ++done_;
  view_->setProgress(100.0 * done_ / total_);
}

void BatchRun::takeRead(CvIndex cv, int value) {
  if (link().lastCvFailed) {
    bench_.sets.takeFailedRead(cv, value);
    return;
  }
  report(cv, CvDeed::Read, value);
  bench_.sets.setValue(cv, value);
  bench_.sets.setMark(cv, CvMark::Verified);
}

void BatchRun::report(CvIndex cv, CvDeed deed, int value) {
  bench_.report_.add(
      {.cv = cv, .deed = deed, .value = value, .before = bench_.sets.value(cv), .reason = {}});
}

void BatchRun::remark(const QString& sentence) {
  bench_.report_.remarks << sentence;
}

void BatchRun::refillAddress() {
  const QString field = QStringLiteral("dc_adr");
  bench_.refillField(field, bench_.controls.at(field).text);
}

void BatchRun::showInControl(CvIndex cv, int value) {
  const QString text = QString::number(value);
  const QString& range = description().info(cv).cvRange;
  const QString field = bench_.fieldOf(cv);
  if (!field.isEmpty()) {
    bench_.refillField(field, text);
    bench_.CheckDcField(field, cv, range);
  } else {
    const QString box = QStringLiteral("tabText");
    bench_.controls.setText(box, text);
    bench_.CheckDcField(box, cv, range);
  }
  bench_.showValue(cv);
}

}  // namespace lokari
