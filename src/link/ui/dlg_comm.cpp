#include "link/ui/dlg_comm.h"

#include <QClipboard>
#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "link/station_link.h"
#include "link/switch_on_question.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

/// A desktop may refuse the front to a program in the background; the job starts all the same.
constexpr int kFrontPatienceMs = 1000;

QString runningCaption() {
  return QStringLiteral("Abbruch");
}

QString endedCaption() {
  return QStringLiteral("OK");
}

}  // namespace

DlgComm::DlgComm(StationLink& link, QWidget* parent) : QDialog(parent), link_(link) {
  build();
}

void DlgComm::build() {
  setObjectName(QStringLiteral("dlg_comm"));
  setWindowTitle(QStringLiteral("Kommunikation"));
  setModal(true);

  // Names of CVs come from files: never markup.
  lblCommStatus_ = new QLabel(this);
  lblCommStatus_->setObjectName(QStringLiteral("lblCommStatus"));
  lblCommStatus_->setTextFormat(Qt::PlainText);
  lblCommStatus_->setWordWrap(true);
  lblCommStatus_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  lblCommStatus_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  lblCommStatus_->setAccessibleName(QStringLiteral("Stand der Kommunikation"));
  const QFontMetrics metrics(font());
  lblCommStatus_->setMinimumSize(metrics.averageCharWidth() * 56, metrics.lineSpacing() * 5);

  lblCommDetail_ = new QLabel(this);
  lblCommDetail_->setObjectName(QStringLiteral("lblCommDetail"));
  lblCommDetail_->setTextFormat(Qt::PlainText);
  lblCommDetail_->setWordWrap(true);
  lblCommDetail_->setTextInteractionFlags(lblCommStatus_->textInteractionFlags());
  lblCommDetail_->setAccessibleName(QStringLiteral("Näheres"));

  panProgress_ = new QProgressBar(this);
  panProgress_->setObjectName(QStringLiteral("panProgress"));
  panProgress_->setAccessibleName(QStringLiteral("Fortschritt"));
  panProgress_->setRange(0, 100);
  panProgress_->setAlignment(Qt::AlignCenter);
  // The dialog keeps its size when the bar comes and goes.
  QSizePolicy policy = panProgress_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  panProgress_->setSizePolicy(policy);

  cmdCancel_ = new QPushButton(runningCaption(), this);
  cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
  cmdCancel_->setDefault(true);
  connect(cmdCancel_, &QPushButton::clicked, this, &DlgComm::cancel);

  cmdCopyText_ = new QPushButton(QStringLiteral("&Kopieren"), this);
  cmdCopyText_->setObjectName(QStringLiteral("cmdCopyText"));
  cmdCopyText_->setAccessibleName(QStringLiteral("Text in die Zwischenablage kopieren"));
  cmdCopyText_->setAutoDefault(false);
  connect(cmdCopyText_, &QPushButton::clicked, this, &DlgComm::copyText);

  cmdStop_ = new QPushButton(QStringLiteral("Halt"), this);
  cmdStop_->setObjectName(QStringLiteral("cmdStop"));
  cmdStop_->setAccessibleName(QStringLiteral("Ganze Anlage anhalten"));
  cmdStop_->setAutoDefault(false);
  connect(cmdStop_, &QPushButton::clicked, this, [this] { link_.trackStop().pressAndTell(); });

  // Three equal columns: the button that ends stays in the middle.
  auto* buttons = new QGridLayout;
  buttons->addWidget(cmdCopyText_, 0, 0, Qt::AlignLeft);
  buttons->addWidget(cmdCancel_, 0, 1, Qt::AlignHCenter);
  buttons->addWidget(cmdStop_, 0, 2, Qt::AlignRight);
  for (int column = 0; column < 3; ++column) {
    buttons->setColumnStretch(column, 1);
    buttons->setColumnMinimumWidth(column, cmdCopyText_->sizeHint().width());
  }

  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(16, 16, 16, 16);
  rows->setSpacing(12);
  rows->addWidget(lblCommStatus_, 1);
  rows->addWidget(lblCommDetail_);
  rows->addWidget(panProgress_);
  rows->addLayout(buttons);

  frontTimer_ = new QTimer(this);
  frontTimer_->setSingleShot(true);
  frontTimer_->setInterval(kFrontPatienceMs);
  connect(frontTimer_, &QTimer::timeout, this, &DlgComm::startJob);
  prepare(CommJob::None);
}

void DlgComm::prepare(CommJob job) {
  lblCommStatus_->clear();
  farewell_.clear();
  setDetail(QString());
  resetProgress();
  setProgressEnabled(false);
  cmdCancel_->setText(runningCaption());
  cmdCancel_->setEnabled(true);
  cmdCancel_->setFocus();
  cmdCopyText_->hide();
  const bool transfer = job == CommJob::SendFirm;
  cmdStop_->setEnabled(!transfer && link_.settings().station().cab.available());
  cmdStop_->setToolTip(
      transfer
          ? QStringLiteral("Während der Übertragung wird kein Halt gesendet.")
          : QStringLiteral("Ganze Anlage anhalten, Taste Pause; der Auftrag wird abgebrochen"));
}

void DlgComm::run(CommJob job, std::function<void()> work) {
  if (!mayRun(job)) return;
  prepare(job);
  link_.commJob = job;
  work_ = std::move(work);
  failure_ = nullptr;
  stage_ = Stage::Waiting;

  before_ = link_.view();
  link_.setView(this);
  exec();
  link_.setView(before_);
  aside_.reset();
  leave_.reset();

  frontTimer_->stop();
  stage_ = Stage::Ended;
  work_ = nullptr;
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

/// The user takes his time: the cabs go on meanwhile.
bool DlgComm::mayRun(CommJob job) {
  const auto aside = link_.stepAside();
  const auto leave = askToSwitchOn(link_, job);
  leave_ = leave.value_or(nullptr);
  return leave.has_value();
}

void DlgComm::startJob() {
  if (stage_ != Stage::Waiting || !isVisible()) return;
  frontTimer_->stop();
  stage_ = Stage::Running;
  link_.cancelRequested = false;
  const QScopedValueRollback running(link_.runningJob, link_.commJob);
  try {
    work_();
  } catch (...) {
    // Nothing may be thrown through the event loop that called this.
    failure_ = std::current_exception();
  }
  stage_ = Stage::Ended;
  leave_.reset();
  if (failure_) {
    hide();
  } else if (isVisible()) {
    setCancelCaption(endedCaption());
    // The result may be read for as long as the user likes. What others say on the line meanwhile
    // is not shown in it.
    link_.setView(before_);
    aside_ = link_.stepAside();
  }
}

void DlgComm::cancel() {
  const bool close = stage_ != Stage::Running || cmdCancel_->text() == endedCaption() ||
                     link_.commJob == CommJob::ProgressOnly;
  // Where nothing runs any more there is nothing of this job's to cancel.
  if (stage_ == Stage::Running) {
    link_.cancelRequested = true;
    link_.hurryFarewell();
  }
  cmdCancel_->setEnabled(false);
  if (close) hide();
}

void DlgComm::reject() {
  cancel();
}

void DlgComm::setStatus(const QString& text) {
  QString lines = text;
  lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  lblCommStatus_->setText(lines);
  makeRoom();
  lblCommStatus_->repaint();
}

// A result of many lines must not be cut.
void DlgComm::makeRoom() {
  const int needed = layout()->totalHeightForWidth(width());
  if (needed > height()) {
    resize(width(), needed);
    keepButtonsOnScreen();
  }
}

// It grows downwards.
void DlgComm::keepButtonsOnScreen() {
  const QRect room = screen()->availableGeometry();
  const QRect frame = frameGeometry();
  if (frame.bottom() <= room.bottom()) return;
  move(frame.left(), std::max(room.top(), room.bottom() + 1 - frame.height()));
}

void DlgComm::setDetail(const QString& text) {
  detail_ = text;
  showDetail();
}

void DlgComm::showDetail() {
  QStringList lines{detail_, farewell_};
  lines.removeAll(QString());
  lblCommDetail_->setText(lines.join(u'\n'));
  makeRoom();
}

void DlgComm::copyText() {
  QStringList lines{lblCommStatus_->text()};
  if (!lblCommDetail_->text().isEmpty()) lines << lblCommDetail_->text();
  QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void DlgComm::setProgress(double percent) {
  const int whole = static_cast<int>(std::clamp(percent, 0.0, 9999.0));
  panProgress_->setValue(std::min(whole, panProgress_->maximum()));
  panProgress_->setFormat(QStringLiteral("%1%").arg(whole));
  panProgress_->show();
  panProgress_->repaint();
  raise();
}

void DlgComm::resetProgress() {
  panProgress_->setValue(panProgress_->minimum());
  panProgress_->setFormat(QString());
  panProgress_->hide();
}

void DlgComm::setProgressEnabled(bool enabled) {
  panProgress_->setEnabled(enabled);
}

void DlgComm::setCancelCaption(const QString& caption) {
  cmdCancel_->setText(caption);
  cmdCopyText_->setVisible(caption == endedCaption());
  if (caption == endedCaption()) {
    cmdCancel_->setEnabled(true);
    cmdCancel_->setFocus();
  }
}

// The result keeps its place above; a first press of the button does not count for the farewell.
void DlgComm::setFarewell(bool running) {
  if (stage_ != Stage::Running) return;
  farewell_ = running ? QStringLiteral(
                            "Abschied von der Digitalzentrale ... „%1“ beendet das "
                            "Warten.")
                            .arg(cmdCancel_->text())
                      : QString();
  showDetail();
  if (running) cmdCancel_->setEnabled(true);
}

void DlgComm::hide() {
  done(Accepted);
}

bool DlgComm::event(QEvent* event) {
  const bool handled = QDialog::event(event);
  if (event->type() == QEvent::WindowActivate && stage_ == Stage::Waiting) {
    // Queued, so that the activation itself is complete (the focus, the first painting) before the
    // job takes over this loop.
    QMetaObject::invokeMethod(this, &DlgComm::startJob, Qt::QueuedConnection);
  } else if (event->type() == QEvent::WindowDeactivate) {
    panProgress_->hide();
  }
  return handled;
}

void DlgComm::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (stage_ == Stage::Waiting) frontTimer_->start();
}

void DlgComm::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  raise();
}

}  // namespace lokari
