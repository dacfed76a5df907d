#include "cab/ui/frm_panel.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "cab/panel.h"
#include "cab/ui/notice_line.h"
#include "cab/ui/picture_button.h"

namespace lokari {
namespace {

constexpr QPoint kDesignPlace(200, 120);
constexpr int kSmallestWidth = 230;
constexpr double kNameLetters = 1.25;

}  // namespace

FrmPanel::FrmPanel(const std::shared_ptr<Panel>& panel, const Pictures& pictures,
                   const WindowScale& scale)
    : SlotForm(panel, scale), panel_(*panel) {
  setObjectName(QStringLiteral("frmPanel"));
  setWindowIcon(pictures.icon(QStringLiteral("lokari.bmp")));
  auto* rows = new QVBoxLayout(contents());
  rows->setSpacing(8);
  contents()->setMinimumWidth(kSmallestWidth);
  makeHeader(rows);
  makeSwitches(rows, pictures);
  makeFooter(rows);
  rows->addWidget(makeNotice());
  contents()->findChild<QLineEdit*>(QStringLiteral("dc_adr"))->installEventFilter(this);
  connect(&panel_, &Panel::loaded, this, &FrmPanel::showAll);
  connect(&panel_, &Panel::outputChanged, this, &FrmPanel::showOutput);
  showAll();
  contents()->findChild<QPushButton*>(QStringLiteral("cmdSwitch_0"))->setFocus();
}

void FrmPanel::makeHeader(QBoxLayout* rows) {
  auto* labNm = new QLabel(QStringLiteral("Funktionsteil"), contents());
  labNm->setObjectName(QStringLiteral("labNm"));
  auto* labName = new QLabel(contents());
  labName->setObjectName(QStringLiteral("labName"));
  labName->setAccessibleName(labNm->text());
  // The name comes from the user: never markup.
  labName->setTextFormat(Qt::PlainText);
  QFont font = labName->font();
  font.setPointSizeF(font.pointSizeF() * kNameLetters);
  font.setBold(true);
  labName->setFont(font);
  auto* Label1 = new QLabel(QStringLiteral("Ausgänge"), contents());
  Label1->setObjectName(QStringLiteral("Label1"));
  auto* names = new QVBoxLayout;
  names->setSpacing(0);
  names->addWidget(labNm);
  names->addWidget(labName);
  rows->addLayout(names);
  rows->addWidget(Label1);
}

void FrmPanel::makeSwitches(QBoxLayout* rows, const Pictures& pictures) {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(4);
  for (int n = 0; n < PanelState::kOutputs; ++n) {
    const QString tip = QStringLiteral("Ausgang %1, Taste %1").arg(n + 1);
    auto* lamp = new PictureButton(pictures, QStringLiteral("cmdFunc_%1").arg(n), tip, contents());
    lamp->setText(QString::number(n + 1));
    lamp->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    lamp->showPicture(QStringLiteral("lmpgrey.bmp"));
    auto* button = new QPushButton(QStringLiteral("Ausgang &%1").arg(n + 1), contents());
    button->setObjectName(QStringLiteral("cmdSwitch_%1").arg(n));
    button->setToolTip(tip);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    connect(lamp, &PictureButton::clicked, this, [this, n] { panel_.cmdFunc(n); });
    connect(button, &QPushButton::clicked, this, [this, n] { panel_.cmdSwitch(n); });
    lamp->installEventFilter(this);
    button->installEventFilter(this);
    grid->addWidget(lamp, n, 0);
    grid->addWidget(button, n, 1);
    labNever_[static_cast<size_t>(n)] = makeNeverSign(n);
    grid->addWidget(labNever_[static_cast<size_t>(n)], n, 2);
    cmdFunc_[static_cast<size_t>(n)] = lamp;
  }
  rows->addLayout(grid, 1);
}

QLabel* FrmPanel::makeNeverSign(int n) {
  auto* sign = new QLabel(QStringLiteral("?"), contents());
  sign->setObjectName(QStringLiteral("labNever_%1").arg(n));
  const QString meaning =
      QStringLiteral("Ausgang %1 wurde noch nie geschaltet: Die Zentrale weiß nicht, wie er steht.")
          .arg(n + 1);
  sign->setToolTip(meaning);
  sign->setAccessibleName(meaning);
  QFont font = sign->font();
  font.setBold(true);
  sign->setFont(font);
  sign->hide();
  return sign;
}

void FrmPanel::makeFooter(QBoxLayout* rows) {
  auto* cmdOK = new QPushButton(QStringLiteral("&OK"), contents());
  cmdOK->setObjectName(QStringLiteral("cmdOK"));
  cmdOK->setToolTip(QStringLiteral("Schaltpult schließen"));
  cmdOK->installEventFilter(this);
  connect(cmdOK, &QPushButton::clicked, this, [this] { panel_.cmdOK(); });
  cmdOK_ = cmdOK;
  rows->addWidget(cmdOK, 0, Qt::AlignRight);
}

QWidget* FrmPanel::keptInView() const {
  return cmdOK_;
}

QPoint FrmPanel::designPlace() const {
  return kDesignPlace;
}

void FrmPanel::showAll() {
  setWindowTitle(panel_.caption());
  contents()->findChild<QLabel*>(QStringLiteral("labName"))->setText(panel_.labName());
  if (!panel_.hasState()) return;
  for (int n = 0; n < PanelState::kOutputs; ++n)
    showOutput(n, panel_.state().outOn[static_cast<size_t>(n)]);
}

void FrmPanel::showOutput(int n, bool on) {
  PictureButton* lamp = cmdFunc_[static_cast<size_t>(n)];
  lamp->showPicture(on ? QStringLiteral("lmpon_n.bmp") : QStringLiteral("lmpred_n.bmp"));
  lamp->showOn(on);
  labNever_[static_cast<size_t>(n)]->setVisible(
      panel_.state().neverSwitched[static_cast<size_t>(n)]);
}

bool FrmPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool plain = (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0;
    // A key that is held down switches once.
    if (plain && key->text().size() == 1 && !key->isAutoRepeat() &&
        panel_.keyDown(key->text().at(0)))
      return true;
  }
  return SlotForm::eventFilter(watched, event);
}

}  // namespace lokari
