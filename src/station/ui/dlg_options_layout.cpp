// How the controls of `dlgOptions` are laid out.
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "base/ui/fit_area.h"
#include "base/ui/option_group.h"
#include "base/ui/window_scale.h"
#include "link/station_link.h"
#include "link/trace_head.h"
#include "station/ui/address_part.h"
#include "station/ui/dlg_options.h"

namespace lokari {
namespace {

constexpr int kPortsPerRow = 5;
constexpr int kFieldWidth = 130;
constexpr int kSpacing = 12;

template <class Control>
Control* named(Control* control, const QString& name, const QString& accessibleName = {}) {
  control->setObjectName(name);
  if (!accessibleName.isEmpty()) control->setAccessibleName(accessibleName);
  return control;
}

QLabel* labelFor(QWidget* field, const QString& text, const QString& name, QWidget* parent) {
  auto* label = named(new QLabel(text, parent), name);
  label->setBuddy(field);
  return label;
}

/// Width of the column of captions, the same in both views and below them.
int captionWidth(const QWidget* view) {
  return view->fontMetrics().horizontalAdvance(QStringLiteral("Wartezeit (Sekunden):")) + 8;
}

struct ExplainedBox {
  const char16_t* text;
  const char16_t* name;
  const char16_t* sentenceName;
};

/// A tick box with a sentence below it that says what it does.
QCheckBox* makeExplainedBox(QBoxLayout* rows, QWidget* parent, const ExplainedBox& box,
                            const QString& text) {
  auto* tick =
      named(new QCheckBox(QString::fromUtf16(box.text), parent), QString::fromUtf16(box.name));
  auto* sentence = named(new QLabel(text, parent), QString::fromUtf16(box.sentenceName));
  sentence->setWordWrap(true);
  tick->setAccessibleDescription(text);
  auto* lines = new QVBoxLayout;
  lines->setSpacing(4);
  lines->addWidget(tick);
  lines->addWidget(sentence);
  rows->addLayout(lines);
  return tick;
}

}  // namespace

DlgOptions::DlgOptions(OptionsParts parts, const WindowScale& scale, QWidget* parent)
    : QDialog(parent), parts_(std::move(parts)), scale_(scale), contents_(new QWidget(this)) {
  setObjectName(QStringLiteral("dlgOptions"));
  setWindowTitle(QStringLiteral("Optionen"));
  setModal(true);
  auto* all = new QVBoxLayout(contents_);
  all->setContentsMargins(12, 12, 12, 12);
  all->setSpacing(10);
  auto* area = new FitArea(contents_);
  page_ = new QWidget(area);
  auto* rows = new QVBoxLayout(page_);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(10);
  makeStations(rows);
  makeLink(rows);
  makeJobs(rows);
  makeDatabase(rows);
  makeMakerForm(rows);
  makeTrace(rows);
  rows->addStretch();
  area->take(page_);
  all->addWidget(area, 1);
  makeButtons(all);
  scale.arrange(this, contents_);
  load();
}

void DlgOptions::makeStations(QBoxLayout* rows) {
  auto* box = new QGroupBox(QStringLiteral("Digitalzentrale"), page_);
  auto* grid = new QGridLayout(box);
  grid->setHorizontalSpacing(24);
  auto* stations = new OptionGroup(this);
  stations_ = stations;
  std::array<int, kStationColumns> filled{};
  for (int row = 0; row < static_cast<int>(kStationChoices.size()); ++row) {
    const StationChoiceRow& choice = kStationChoices[static_cast<size_t>(row)];
    auto* radio = named(new QRadioButton(QString::fromUtf16(choice.caption), box),
                        QString::fromUtf16(choice.control));
    stations->add(radio, row);
    grid->addWidget(radio, filled[static_cast<size_t>(choice.column)]++, choice.column);
  }
  for (int column = 0; column < kStationColumns; ++column) grid->setColumnStretch(column, 1);
  connect(stations_, &QButtonGroup::idClicked, this, &DlgOptions::chooseStation);
  rows->addWidget(box);
}

void DlgOptions::makeLink(QBoxLayout* rows) {
  auto* box = new QGroupBox(QStringLiteral("Verbindung"), page_);
  auto* grid = new QGridLayout(box);
  views_ = new QStackedWidget(box);
  views_->addWidget(makeSerialView());
  views_->addWidget(makeNetworkView());
  grid->addWidget(views_, 0, 0, 1, 4);

  txtComTimeout_ = named(new QLineEdit(box), QStringLiteral("txtComTimeout"),
                         QStringLiteral("Wartezeit in Sekunden"));
  txtComTimeout_->setValidator(new QIntValidator(0, 999, txtComTimeout_));
  txtComTimeout_->setFixedWidth(kFieldWidth);
  grid->addWidget(labelFor(txtComTimeout_, QStringLiteral("&Wartezeit (Sekunden):"),
                           QStringLiteral("labTimeout"), box),
                  1, 0);
  grid->addWidget(txtComTimeout_, 1, 1);
  auto* test =
      named(new QPushButton(QStringLiteral("Verbindung &testen"), box), QStringLiteral("Command1"));
  test->setAutoDefault(false);
  connect(test, &QPushButton::clicked, this, &DlgOptions::testLink);
  grid->addWidget(test, 1, 3);
  grid->setColumnMinimumWidth(0, captionWidth(box));
  grid->setHorizontalSpacing(kSpacing);
  grid->setColumnStretch(2, 1);
  rows->addWidget(box);
}

QWidget* DlgOptions::makeSerialView() {
  auto* view = new QWidget(views_);
  auto* grid = new QGridLayout(view);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(kSpacing);
  grid->setColumnMinimumWidth(0, captionWidth(view));
  auto* ports = new OptionGroup(this);
  comPorts_ = ports;
  auto* labPort =
      named(new QLabel(QStringLiteral("Schnittstelle:"), view), QStringLiteral("labPort"));
  grid->addWidget(labPort, 0, 0);
  for (int number = 1; number <= PortTable::kLastPort; ++number) {
    auto* radio = named(new QRadioButton(QStringLiteral("COM%1").arg(number), view),
                        QStringLiteral("optComPort%1").arg(number));
    // What is plugged in comes and goes; the others keep their places.
    QSizePolicy policy = radio->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    radio->setSizePolicy(policy);
    ports->add(radio, number);
    grid->addWidget(radio, (number - 1) / kPortsPerRow, 1 + (number - 1) % kPortsPerRow);
  }
  lstBaudrate_ = named(new QComboBox(view), QStringLiteral("lstBaudrate"),
                       QStringLiteral("Baudrate, leer für die Vorgabe der Zentrale"));
  lstBaudrate_->setEditable(true);
  lstBaudrate_->setInsertPolicy(QComboBox::NoInsert);
  lstBaudrate_->setValidator(new QRegularExpressionValidator(
      QRegularExpression(QStringLiteral("[0-9]{0,6}")), lstBaudrate_));
  for (const char16_t* entry : kBaudrateEntries) lstBaudrate_->addItem(QString::fromUtf16(entry));
  lstBaudrate_->setToolTip(QStringLiteral("Leer: die Vorgabe der Zentrale"));
  lstBaudrate_->setFixedWidth(kFieldWidth);
  grid->addWidget(
      labelFor(lstBaudrate_, QStringLiteral("&Baudrate:"), QStringLiteral("labBaudrate"), view), 2,
      0);
  grid->addWidget(lstBaudrate_, 2, 1, 1, 3, Qt::AlignLeft);
  grid->setColumnStretch(1 + kPortsPerRow, 1);
  return view;
}

QWidget* DlgOptions::makeNetworkView() {
  auto* view = new QWidget(views_);
  auto* rows = new QVBoxLayout(view);
  rows->setContentsMargins(0, 0, 0, 0);
  auto* line = new QHBoxLayout;
  line->setSpacing(4);
  rows->addLayout(line);
  rows->addStretch();
  auto* labIP = named(new QLabel(QStringLiteral("&IP-Adresse:"), view), QStringLiteral("labIP"));
  labIP->setFixedWidth(captionWidth(view));
  line->addWidget(labIP);
  line->addSpacing(kSpacing - line->spacing());
  for (size_t i = 0; i < txtIP_.size(); ++i) {
    if (i > 0) line->addWidget(new QLabel(QStringLiteral("."), view));
    txtIP_[i] = named(new AddressPart(view), QStringLiteral("txtIP%1").arg(i + 1),
                      QStringLiteral("IP-Adresse, Teil %1").arg(i + 1));
    line->addWidget(txtIP_[i]);
  }
  AddressPart::join(txtIP_);
  labIP->setBuddy(txtIP_[0]);
  line->addStretch();
  return view;
}

void DlgOptions::makeJobs(QBoxLayout* rows) {
  struct Line {
    const char16_t* name;
    const char16_t* text;
    bool OptionsForm::*value;
  };
  static constexpr std::array kLines{
      Line{u"optComDelay", u"Pause vor jedem CV-Zugriff", &OptionsForm::delay},
      Line{u"optComAdrChk", u"Adresse des Decoders vorher prüfen", &OptionsForm::addressCheck},
      Line{u"optComManufChk", u"Hersteller des Decoders vorher prüfen",
           &OptionsForm::manufacturerCheck},
      Line{u"optComCont", u"Nach einem Fehler mit der nächsten CV weitermachen",
           &OptionsForm::continueOnError},
  };
  auto* box = new QGroupBox(QStringLiteral("CVs lesen und schreiben"), page_);
  auto* grid = new QGridLayout(box);
  grid->setHorizontalSpacing(16);
  for (int row = 0; row < static_cast<int>(kLines.size()); ++row) {
    const Line& each = kLines[static_cast<size_t>(row)];
    const QString text = QString::fromUtf16(each.text);
    const QString name = QString::fromUtf16(each.name);
    auto* group = new OptionGroup(this);
    auto* yes = named(new QRadioButton(QStringLiteral("Ja"), box), name + QStringLiteral("Yes"),
                      text + QStringLiteral(": ja"));
    auto* no = named(new QRadioButton(QStringLiteral("Nein"), box), name + QStringLiteral("No"),
                     text + QStringLiteral(": nein"));
    group->add(yes);
    group->add(no);
    grid->addWidget(new QLabel(text + u':', box), row, 0);
    grid->addWidget(yes, row, 1);
    grid->addWidget(no, row, 2);
    choices_.push_back({each.value, yes, no});
  }
  grid->setColumnStretch(3, 1);
  rows->addWidget(box);
}

void DlgOptions::makeDatabase(QBoxLayout* rows) {
  auto* line = new QHBoxLayout;
  txtDbPath_ = named(new QLineEdit(page_), QStringLiteral("txtDbPath"),
                     QStringLiteral("Datenbank, die der nächste Start öffnet"));
  line->addWidget(labelFor(txtDbPath_, QStringLiteral("&Datenbank beim Start:"),
                           QStringLiteral("labDbPath"), page_));
  line->addWidget(txtDbPath_, 1);
  rows->addLayout(line);
}

void DlgOptions::makeMakerForm(QBoxLayout* rows) {
  chkMakerForm_ = makeExplainedBox(
      rows, page_, {u"Nachrichten: nach &Herstellerunterlagen", u"chkMakerForm", u"labMakerForm"},
      QStringLiteral("Prüfsummen, Fahrstufen, Funktionen über F8, das Abschalten der Weichen und "
                     "das Programmieren, wie es die Hersteller veröffentlicht haben; ohne Haken "
                     "wie bisher."));
  connect(chkMakerForm_, &QCheckBox::clicked, this, &DlgOptions::tellUnitAddresses);
}

void DlgOptions::makeTrace(QBoxLayout* rows) {
  chkTrace_ = makeExplainedBox(
      rows, page_, {u"&Mitschreiben, was gesendet und empfangen wird", u"chkTrace", u"labTrace"},
      QStringLiteral("Für eine Fehlermeldung, in %1: Uhrzeit, Bytes und Bedeutung, "
                     "keine Namen und nichts aus der Datenbank.")
          .arg(withoutHome(parts_.link.tracePath())));
}

void DlgOptions::makeButtons(QBoxLayout* rows) {
  auto* line = new QHBoxLayout;
  line->addStretch();
  auto* ok = named(new QPushButton(QStringLiteral("OK"), contents_), QStringLiteral("cmdOK"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &DlgOptions::accept);
  auto* cancel =
      named(new QPushButton(QStringLiteral("Abbruch"), contents_), QStringLiteral("cmdCancel"));
  cancel->setAutoDefault(false);
  // A click leaves the focus where it is: a field that will not let go of it must not swallow it.
  for (QPushButton* button : {ok, cancel}) button->setFocusPolicy(Qt::TabFocus);
  connect(cancel, &QPushButton::clicked, this, &DlgOptions::reject);
  line->addWidget(ok);
  line->addWidget(cancel);
  rows->addLayout(line);
}

}  // namespace lokari
