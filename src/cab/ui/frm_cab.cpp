#include "cab/ui/frm_cab.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "base/ui/fit_area.h"
#include "cab/cab.h"
#include "cab/ui/function_lamps.h"
#include "cab/ui/main_cv_box.h"
#include "cab/ui/notice_line.h"
#include "cab/ui/picture_button.h"
#include "cab/ui/speed_bar.h"
#include "db/ui/picture_frame.h"

namespace lokari {
namespace {

constexpr QPoint kDesignPlace(160, 80);
constexpr int kPictureHeight = 100;
/// Of the number beside the window's own letters.
constexpr double kSpeedLetters = 2.6;
constexpr double kNameLetters = 1.25;

QLabel* label(QWidget* parent, const QString& name, double letters) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  // Names come from the user: never markup.
  label->setTextFormat(Qt::PlainText);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * letters);
  font.setBold(true);
  label->setFont(font);
  return label;
}

/// A picture with a word below it.
QLabel* addCaptioned(QBoxLayout* line, PictureButton* button, const QString& caption) {
  auto* label = new QLabel(caption, button->parentWidget());
  label->setAlignment(Qt::AlignHCenter);
  auto* rows = new QVBoxLayout;
  rows->setSpacing(0);
  rows->addWidget(button);
  rows->addWidget(label);
  line->addLayout(rows);
  return label;
}

}  // namespace

FrmCab::FrmCab(const std::shared_ptr<Cab>& cab, const Pictures& pictures, const WindowScale& scale)
    : SlotForm(cab, scale), cab_(*cab) {
  setObjectName(QStringLiteral("frmCab"));
  setWindowIcon(pictures.icon(QStringLiteral("lokari.bmp")));
  auto* all = new QVBoxLayout(contents());
  all->setSpacing(8);
  auto* columns = new QHBoxLayout;
  all->addLayout(columns, 1);
  makeReread(all);
  columns->setSpacing(14);
  makeSpeed(columns);
  auto* rows = new QVBoxLayout;
  rows->setSpacing(8);
  columns->addLayout(rows, 1);
  makeHeader(rows);
  makeDriveButtons(rows, pictures);
  makeScrolled(rows, pictures);
  makeFooter(rows);
  connectCab();
  installEventFilter(this);
  for (QWidget* control : findChildren<QWidget*>()) control->installEventFilter(this);
  showAll();
  vsbSpeed_->setFocus();
}

void FrmCab::makeReread(QBoxLayout* rows) {
  cmdReread_ = new QPushButton(QStringLiteral("&Neu lesen"), contents());
  cmdReread_->setObjectName(QStringLiteral("cmdReread"));
  cmdReread_->setToolTip(QStringLiteral("Den Stand des Fahrzeugs bei der Zentrale erfragen"));
  cmdReread_->hide();
  connect(cmdReread_, &QPushButton::clicked, this, [this] { cab_.reread(); });
  auto* line = new QHBoxLayout;
  line->addWidget(makeNotice(), 1);
  line->addWidget(cmdReread_, 0, Qt::AlignTop);
  rows->addLayout(line);
}

// What nobody knows is not offered.
void FrmCab::showKnown() {
  cmdReread_->setVisible(cab_.isStateMissing());
  lamps_->setHighest(cab_.state().funcCount);
  lamps_->setEnabled(cab_.functionsKnown());
  lamps_->setToolTip(cab_.functionsKnown()
                         ? QString()
                         : QStringLiteral("Der Stand der Funktionen ist nicht bekannt."));
}

void FrmCab::makeSpeed(QBoxLayout* columns) {
  auto* rows = new QVBoxLayout;
  labSpeed_ = label(contents(), QStringLiteral("labSpeed"), kSpeedLetters);
  labSpeed_->setAccessibleName(QStringLiteral("Geschwindigkeit"));
  labSpeed_->setAlignment(Qt::AlignCenter);
  vsbSpeed_ = new SpeedBar(contents());
  vsbSpeed_->setToolTip(
      QStringLiteral("Geschwindigkeit: mit der Maus, dem Mausrad oder den Pfeiltasten.\n"
                     "Tasten: 0 bis 7 Funktionen, + vorwärts, − rückwärts, M manuell, "
                     "Leertaste Halt und Los"));
  labSpeed_->setMinimumWidth(labSpeed_->fontMetrics().horizontalAdvance(QStringLiteral("000")));
  rows->addWidget(labSpeed_);
  rows->addWidget(vsbSpeed_, 1, Qt::AlignHCenter);
  columns->addLayout(rows);
}

void FrmCab::makeHeader(QBoxLayout* rows) {
  picContainer_ = new PictureFrame(contents());
  // The picture alone, without the frame of an empty one around it.
  picContainer_->setFrameShape(QFrame::NoFrame);
  picContainer_->setAutoFillBackground(false);
  picContainer_->setMinimumSize(120, kPictureHeight);
  rows->addWidget(picContainer_);
  labName_ = label(contents(), QStringLiteral("labName"), kNameLetters);
  labName_->setAccessibleName(QStringLiteral("Fahrzeug"));
  labName_->setAlignment(Qt::AlignCenter);
  labCollection_ = new QLabel(contents());
  labCollection_->setObjectName(QStringLiteral("labCollection"));
  labCollection_->setAccessibleName(QStringLiteral("Sammlung"));
  labCollection_->setTextFormat(Qt::PlainText);
  labCollection_->setAlignment(Qt::AlignCenter);
  auto* names = new QVBoxLayout;
  names->setSpacing(0);
  names->addWidget(labName_);
  names->addWidget(labCollection_);
  rows->addLayout(names);
}

void FrmCab::makeDriveButtons(QBoxLayout* rows, const Pictures& pictures) {
  const auto button = [&](const char16_t* name, const QString& tip, const QString& text) {
    auto* made = new PictureButton(pictures, QString::fromUtf16(name), tip, contents());
    made->setText(text);
    made->setActsOnPress();
    return made;
  };
  imgDirForward_ =
      button(u"imgDirForward", QStringLiteral("Vorwärts, Taste +"), QStringLiteral("vorwärts"));
  imgDirBackward_ =
      button(u"imgDirBackward", QStringLiteral("Rückwärts, Taste −"), QStringLiteral("rückwärts"));
  imgMan_ =
      button(u"imgMan", QStringLiteral("Manueller Betrieb, Taste M"), QStringLiteral("manuell"));
  imgStop_ = button(u"imgStop", {}, {});
  auto* line = new QHBoxLayout;
  line->setSpacing(6);
  addCaptioned(line, imgDirForward_, imgDirForward_->text());
  addCaptioned(line, imgDirBackward_, imgDirBackward_->text());
  labMan_ = addCaptioned(line, imgMan_, imgMan_->text());
  labStop_ = addCaptioned(line, imgStop_, {});
  rows->addLayout(line);
  labWhole_ = new QLabel(contents());
  labWhole_->setObjectName(QStringLiteral("labWhole"));
  labWhole_->setAlignment(Qt::AlignHCenter);
  labWhole_->setWordWrap(true);
  // No button moves away from under the mouse when the words get longer.
  labWhole_->setMinimumHeight(2 * labWhole_->fontMetrics().lineSpacing());
  rows->addWidget(labWhole_);
}

// On a screen that is too small these scroll; the bar, the arrows and Halt stay in view.
void FrmCab::makeScrolled(QBoxLayout* rows, const Pictures& pictures) {
  auto* area = new FitArea(contents());
  auto* scrolled = new QWidget(area);
  auto* parts = new QVBoxLayout(scrolled);
  parts->setContentsMargins(0, 0, 0, 0);
  parts->setSpacing(rows->spacing());
  lamps_ = new FunctionLamps(pictures, scrolled);
  parts->addWidget(lamps_);
  mainCvs_ = new MainCvBox(cab_, scrolled);
  parts->addWidget(mainCvs_);
  area->take(scrolled);
  rows->addWidget(area);
}

void FrmCab::makeFooter(QBoxLayout* rows) {
  auto* cmdOK = new QPushButton(QStringLiteral("&OK"), contents());
  cmdOK->setObjectName(QStringLiteral("cmdOK"));
  cmdOK->setToolTip(QStringLiteral("Fahrpult schließen"));
  connect(cmdOK, &QPushButton::clicked, this, [this] { cab_.cmdOK(); });
  rows->addWidget(cmdOK, 0, Qt::AlignRight);
}

void FrmCab::connectCab() {
  connect(vsbSpeed_, &SpeedBar::valueChanged, this, [this](int value) { cab_.vsbSpeed(value); });
  connect(imgDirForward_, &PictureButton::pressed, this, [this] { cab_.imgDirForward(); });
  connect(imgDirBackward_, &PictureButton::pressed, this, [this] { cab_.imgDirBackward(); });
  connect(imgMan_, &PictureButton::pressed, this, [this] { cab_.imgMan(); });
  connect(imgStop_, &PictureButton::pressed, this, [this] { cab_.imgStop(); });
  connect(lamps_, &FunctionLamps::pressed, this, [this](int n) { cab_.cmdFunc(n); });

  connect(&cab_, &Cab::loaded, this, &FrmCab::showAll);
  connect(&cab_, &Cab::noticeChanged, this, &FrmCab::showKnown);
  connect(&cab_, &Cab::barMoved, vsbSpeed_, &SpeedBar::setValue);
  connect(&cab_, &Cab::speedShown, this, &FrmCab::showSpeed);
  connect(&cab_, &Cab::functionChanged, lamps_, &FunctionLamps::showOn);
  connect(&cab_, &Cab::directionChanged, this, &FrmCab::showDirection);
  connect(&cab_, &Cab::manualChanged, this, &FrmCab::showManual);
  connect(&cab_, &Cab::stoppedChanged, this, &FrmCab::showStopped);
}

QWidget* FrmCab::keptInView() const {
  return imgStop_;
}

QPoint FrmCab::designPlace() const {
  return kDesignPlace;
}

void FrmCab::showAll() {
  setWindowTitle(cab_.caption());
  labName_->setText(cab_.labName());
  labName_->setVisible(!cab_.labName().isEmpty());
  labCollection_->setText(QStringLiteral("Sammlung: %1").arg(cab_.collection()));
  labCollection_->setVisible(!cab_.collection().isEmpty());
  picContainer_->showPicture(cab_.picture());
  picContainer_->setVisible(!cab_.picture().isEmpty());
  showSpeed(cab_.state().speed);
  for (int n = 0; cab_.hasFunction(n); ++n)
    lamps_->showOn(n, cab_.state().funcOn[static_cast<size_t>(n)]);
  showDirection();
  showManual();
  showStopped();
  showKnown();
  mainCvs_->showList();
}

void FrmCab::showSpeed(int speed) {
  labSpeed_->setText(QString::number(speed));
  vsbSpeed_->startFrom(speed);
}

void FrmCab::showDirection() {
  const bool backward = cab_.state().backward;
  imgDirForward_->showPicture(
      backward ? QStringLiteral("arrupr_n.bmp") : QStringLiteral("arrupg_n.bmp"),
      QStringLiteral("arrupg_p.bmp"));
  imgDirBackward_->showPicture(
      backward ? QStringLiteral("arrdng_n.bmp") : QStringLiteral("arrdnr_n.bmp"),
      QStringLiteral("arrdng_p.bmp"));
  imgDirForward_->showOn(!backward);
  imgDirBackward_->showOn(backward);
}

void FrmCab::showManual() {
  const bool manual = cab_.state().manual;
  imgMan_->setVisible(cab_.manualVisible());
  labMan_->setVisible(cab_.manualVisible());
  imgMan_->showPicture(manual ? QStringLiteral("manon_n.bmp") : QStringLiteral("manoff_n.bmp"),
                       manual ? QStringLiteral("manon_p.bmp") : QStringLiteral("manoff_p.bmp"));
  imgMan_->showOn(manual);
}

void FrmCab::showStopped() {
  // The picture is what a press does next.
  const bool stopped = cab_.state().stopped;
  const QString word = stopped ? QStringLiteral("Los") : QStringLiteral("Halt");
  imgStop_->showPicture(stopped ? QStringLiteral("go_n.bmp") : QStringLiteral("stop_n.bmp"),
                        stopped ? QStringLiteral("go_p.bmp") : QStringLiteral("stop_p.bmp"));
  imgStop_->showOn(stopped);
  imgStop_->setText(word);
  imgStop_->setAccessibleName(word);
  const QString whole = stopped ? QStringLiteral(
                                      "„Los“ lässt alle Fahrzeuge mit ihrer "
                                      "Geschwindigkeit weiterfahren.")
                                : QStringLiteral("„Halt“ hält die ganze Anlage an.");
  imgStop_->setToolTip(whole + QStringLiteral("\nLeertaste; Pause hält aus jedem Fenster an."));
  labStop_->setText(word);
  labWhole_->setText(whole);
}

// Whatever has the focus: who looks for the stop does not look for the focus first.
bool FrmCab::takesSpaceBar(QObject* watched, const QKeyEvent& key) {
  if (key.key() != Qt::Key_Space || key.modifiers() != Qt::NoModifier) return false;
  const auto* field = qobject_cast<QLineEdit*>(watched);
  if (field != nullptr && !field->isReadOnly()) return false;
  if (!key.isAutoRepeat()) cab_.imgStop();
  return true;
}

bool FrmCab::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && takesSpaceBar(watched, *static_cast<QKeyEvent*>(event)))
    return true;
  if (watched == vsbSpeed_ && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool plain = (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
    // A key that is held down acts once.
    if (plain && key->text().size() == 1 && !key->isAutoRepeat() && cab_.keyDown(key->text().at(0)))
      return true;
  }
  return SlotForm::eventFilter(watched, event);
}

}  // namespace lokari
