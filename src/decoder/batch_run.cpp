#include "decoder/batch_run.h"

#include "base/prompt.h"
#include "decoder/decoder_bench.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

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

int BatchRun::configCv() const {
  constexpr int kConfigRegister = 5;
  const bool byRegister = description().PROGMODE == static_cast<int>(ProgMethod::Register) &&
                          settings().station().progMethods.has(ProgMethod::Register);
  return byRegister ? kConfigRegister : cv::kConfig;
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
  if (mayRun()) {
    total_ = countPlanned();
    runSession();
  } else {
    link().cancelRequested = false;
    view_->hide();
  }
  view_->setCancelCaption(QStringLiteral("OK"));
}

bool BatchRun::mayRun() {
  bench_.jobEnd = JobEnd::Stopped;
  if (cancelled()) return false;
  // The user takes his time: the cabs go on meanwhile.
  const auto aside = link().stepAside();
  const TrackStop::JobAside job(link().trackStop());
  const QString leftOut = bench_.leftOut(direction_.write);
  if (!anythingPlanned()) {
    bench_.jobEnd = JobEnd::NothingMarked;
    bench_.parts_.prompt.message(textOf(direction_.nothingToDo), Icon::Warning, leftOut);
    return false;
  }
  if (!leftOut.isEmpty()) {
    bench_.parts_.prompt.message(textOf(direction_.leavesOut), Icon::Information, leftOut);
  }
  return mayBegin() && !job.isStopped() && !cancelled();
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
  addRemarks();
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
