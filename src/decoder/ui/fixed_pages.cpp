#include "decoder/ui/fixed_pages.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "base/ui/fit_area.h"
#include "base/ui/option_group.h"
#include "decoder/ui/control_binder.h"
#include "decoder/ui/speed_group.h"
#include "decoder/ui/value_edit.h"

namespace lokari {
namespace {

enum Column { kLabel, kField, kRead, kWrite };

/// Between the controls of one line.
constexpr int kSpacing = 8;

QString text(const char16_t* characters) {
  return QString::fromUtf16(characters);
}

/// A field with its label and boxes; the label's text stands until the description names the CV.
struct FieldLine {
  const char16_t* label;
  const char16_t* field;
  const char16_t* read;
  const char16_t* write;
  const char16_t* caption;
  const char16_t* cv;  ///< for screen readers
};

constexpr FieldLine kAddress{u"labAdr",        u"dc_adr",   u"chkDcAdrRead",
                             u"chkDcAdrWrite", u"Adresse:", u"Adresse"};
constexpr FieldLine kGeneralFields[] = {
    {u"labDcComAccTime", u"txtDcComAccTime", u"chkRd_3", u"chkWrt_3", u"Beschleunigungszeit:",
     u"CV 3"},
    {u"labDcComDecTime", u"txtDcComDecTime", u"chkRd_4", u"chkWrt_4", u"Bremszeit:", u"CV 4"},
    {u"labDcComConsist", u"txtDcComConsist", u"chkRd_19", u"chkWrt_19", u"Verbundadresse (0-127):",
     u"CV 19"},
};
constexpr FieldLine kDriveFields[] = {
    {u"labDcDrvMinVolt", u"txtDcDrvMinVolt", u"chkRd_2", u"chkWrt_2", u"Minimalspannung:", u"CV 2"},
    {u"labDcDrvMedSpeed", u"txtDcDrvMedSpeed", u"chkRd_6", u"chkWrt_6", u"Mittengeschwindigkeit:",
     u"CV 6"},
    {u"labDcDrvMaxSpeed", u"txtDcDrvMaxSpeed", u"chkRd_5", u"chkWrt_5", u"Maximalgeschwindigkeit:",
     u"CV 5"},
    {u"labDcDrvUser", u"txtDcDrvUser", u"chkRd_9", u"chkWrt_9", u"Motoransteuerung:", u"CV 9"},
};

/// Two options of which one is on.
struct OptionPair {
  const char16_t* label;
  const char16_t* first;
  const char16_t* second;
  const char16_t* caption;
  const char16_t* firstText;
  const char16_t* secondText;
};

constexpr OptionPair kGeneralOptions[] = {
    {u"labDcComDir", u"optDcComDirNormal", u"optDcComDirReverse", u"Fahrtrichtung:", u"Normal",
     u"Umgekehrt"},
    {u"labDcComSteps", u"optDcComSteps14", u"optDcComSteps28", u"Fahrstufen:", u"14", u"28/128"},
    {u"labDcComAnalog", u"optDcComAnalogNo", u"optDcComAnalogYes", u"Analogbetrieb:", u"Nein",
     u"Ja"},
    {u"labDcComSpdTbl", u"optDcComSpdTblNo", u"optDcComSpdTblYes", u"Geschwindigkeitstabelle:",
     u"Nein", u"Ja"},
    {u"labDcComDetectPulse", u"optDcComDetectPulseNo", u"optDcComDetectPulseYes",
     u"Zugnummernimpuls:", u"Nein", u"Ja"},
    {u"labDcComRailCom", u"optDcComRailComNo", u"optDcComRailComYes", u"RailCom:", u"Nein", u"Ja"},
    {u"labDcComManBit", u"optDcComManBitNo", u"optDcComManBitYes", u"Herstellerbit:", u"Nein",
     u"Ja"},
};
constexpr OptionPair kDriveOptions[] = {
    {u"labDcDrvSteps", u"optDcDrvSteps14", u"optDcDrvSteps28", u"Fahrstufen:", u"14", u"28/128"},
    {u"labDcDrvSpdTbl", u"optDcDrvSpdTblNo", u"optDcDrvSpdTblYes", u"Geschwindigkeitstabelle:",
     u"Nein", u"Ja"},
};

class PageMaker {
 public:
  /// `contents` of the page scroll; its buttons stay in view.
  PageMaker(ControlBinder& binder, QWidget* page)
      : binder_(binder), page_(page), area_(new FitArea(page)), contents_(new QWidget(area_)) {
    rows_ = new QVBoxLayout(page);
    halves_ = new QHBoxLayout(contents_);
    halves_->setContentsMargins(0, 0, 0, 0);
    halves_->setSpacing(12);
    rows_->addWidget(area_, 1);
  }

  QHBoxLayout* halves() const { return halves_; }
  QWidget* contents() const { return contents_; }

  QGridLayout* group(const QString& title, QBoxLayout* into, int stretch = 0) {
    auto* box = new QGroupBox(title, contents_);
    into->addWidget(box, stretch);
    box_ = box;
    grid_ = new QGridLayout(box);
    grid_->setHorizontalSpacing(kSpacing);
    grid_->setVerticalSpacing(6);
    row_ = 0;
    return grid_;
  }

  void heads() {
    grid_->setColumnStretch(kLabel, 1);
    grid_->addWidget(new QLabel(QStringLiteral("Wert"), box_), row_, kField, Qt::AlignCenter);
    grid_->addWidget(new QLabel(QStringLiteral("Lesen"), box_), row_, kRead, Qt::AlignCenter);
    grid_->addWidget(new QLabel(QStringLiteral("Schreiben"), box_), row_, kWrite, Qt::AlignCenter);
    ++row_;
  }

  void field(const FieldLine& line) {
    const QString cv = text(line.cv);
    QLabel* label = binder_.label(box_, text(line.label), text(line.caption));
    ValueEdit* field = binder_.field(box_, text(line.field), cv);
    field->setFixedWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 16);
    auto* words = new QHBoxLayout;
    words->addWidget(label, 1);
    words->addWidget(binder_.holds(box_, text(line.field)));
    grid_->addLayout(words, row_, kLabel);
    grid_->addWidget(field, row_, kField);
    boxes(text(line.read), text(line.write), cv);
    // Room for two lines, so that a long name does not push the page apart.
    grid_->setRowMinimumHeight(row_, 2 * label->fontMetrics().lineSpacing() + 2);
    ++row_;
  }

  void boxes(const QString& read, const QString& write, const QString& what) {
    grid_->addWidget(binder_.checkBox(box_, read, {}, what + QStringLiteral(" lesen")), row_, kRead,
                     Qt::AlignCenter);
    grid_->addWidget(binder_.checkBox(box_, write, {}, what + QStringLiteral(" schreiben")), row_,
                     kWrite, Qt::AlignCenter);
  }

  void options(const OptionPair& pair) {
    QLabel* label = binder_.label(box_, text(pair.label), text(pair.caption));
    label->setWordWrap(false);
    grid_->addWidget(label, row_, 0);
    addOptions(pair, 1);
    ++row_;
  }

  void addOptions(const OptionPair& pair, int column) {
    auto* group = new OptionGroup(box_);
    for (const auto& [name, caption] :
         {std::pair(pair.first, pair.firstText), std::pair(pair.second, pair.secondText)}) {
      QRadioButton* option = binder_.option(box_, text(name), text(caption),
                                            text(pair.caption) + u' ' + text(caption));
      group->add(option);
      grid_->addWidget(option, row_, column++, Qt::AlignLeft);
    }
  }

  /// The boxes of a whole group, with their texts.
  void groupBoxes(const QString& read, const QString& write, const QString& what) {
    auto* line = new QHBoxLayout;
    line->setSpacing(kSpacing);
    line->addWidget(
        binder_.checkBox(box_, read, QStringLiteral("Lesen"), what + QStringLiteral(" lesen")));
    line->addWidget(binder_.checkBox(box_, write, QStringLiteral("Schreiben"),
                                     what + QStringLiteral(" schreiben")));
    line->addStretch();
    grid_->addLayout(line, row_++, 0, 1, -1);
  }

  void nextRow() { ++row_; }
  int row() const { return row_; }
  QWidget* box() const { return box_; }
  void stretch() { grid_->setRowStretch(row_, 1); }

  /// The last of the page: what scrolls is complete.
  void buttons(const QString& suffix) {
    area_->take(contents_);
    auto* line = new QHBoxLayout;
    line->setSpacing(kSpacing);
    line->addWidget(binder_.button(page_, QStringLiteral("cmdRead") + suffix,
                                   QStringLiteral("Lesen markieren")));
    line->addWidget(binder_.button(page_, QStringLiteral("cmdWrite") + suffix,
                                   QStringLiteral("Schreiben markieren")));
    line->addStretch();
    line->addWidget(binder_.copyButton(page_, suffix));
    rows_->addLayout(line);
  }

 private:
  ControlBinder& binder_;
  QWidget* page_;
  FitArea* area_;
  QWidget* contents_;
  QVBoxLayout* rows_ = nullptr;
  QHBoxLayout* halves_ = nullptr;
  QWidget* box_ = nullptr;
  QGridLayout* grid_ = nullptr;
  int row_ = 0;
};

}  // namespace

QWidget* makeGeneralPage(ControlBinder& binder, QWidget* parent) {
  auto* page = new QWidget(parent);
  PageMaker make(binder, page);

  QGridLayout* grid = make.group(QStringLiteral("Adresse und Zeiten"), make.halves(), 1);
  make.heads();
  make.field(kAddress);
  for (const FieldLine& line : kGeneralFields) make.field(line);
  auto* direction = new QHBoxLayout;
  direction->setSpacing(kSpacing);
  auto* directions = new OptionGroup(make.box());
  direction->addWidget(new QLabel(QStringLiteral("Richtung im Verbund:"), make.box()));
  for (const auto& [name, caption] : {std::pair(u"optDcConsistDirNormal", u"Normal"),
                                      std::pair(u"optDcConsistDirReverse", u"Umgekehrt")}) {
    QRadioButton* option = binder.option(make.box(), text(name), text(caption),
                                         QStringLiteral("Richtung im Verbund: ") + text(caption));
    directions->add(option);
    direction->addWidget(option);
  }
  direction->addStretch();
  grid->addLayout(direction, make.row(), kLabel, 1, -1);
  make.nextRow();

  auto* version = new QHBoxLayout;
  version->setSpacing(kSpacing);
  version->addWidget(new QLabel(QStringLiteral("Decoderversion:"), make.box()));
  auto* txtDcComVersion = new ValueEdit(make.box());
  txtDcComVersion->setObjectName(QStringLiteral("txtDcComVersion"));
  txtDcComVersion->setAccessibleName(QStringLiteral("Decoderversion"));
  txtDcComVersion->setReadOnly(true);  // it can be selected and copied
  binder.bind(txtDcComVersion->objectName(), [txtDcComVersion](const Control& control) {
    txtDcComVersion->setText(control.text);
    showState(txtDcComVersion, control);
  });
  version->addWidget(txtDcComVersion, 1);
  grid->addLayout(version, make.row(), kLabel, 1, -1);
  make.nextRow();
  make.stretch();

  grid = make.group(QStringLiteral("Grundeinstellungen (CV 29)"), make.halves(), 1);
  grid->setColumnStretch(2, 1);
  make.groupBoxes(QStringLiteral("chkRd_29"), QStringLiteral("chkWrt_29"), QStringLiteral("CV 29"));
  for (const OptionPair& pair : kGeneralOptions) make.options(pair);
  make.stretch();

  make.buttons(QStringLiteral("Gen"));
  return page;
}

QWidget* makeDrivePage(DecoderBench& bench, ControlBinder& binder, QWidget* parent) {
  auto* page = new QWidget(parent);
  PageMaker make(binder, page);
  auto* left = new QVBoxLayout;
  make.halves()->addLayout(left, 1);

  make.group(QStringLiteral("Geschwindigkeiten"), left);
  make.heads();
  for (const FieldLine& line : kDriveFields) make.field(line);

  QGridLayout* grid = make.group(QStringLiteral("Grundeinstellungen (CV 29)"), left);
  grid->setColumnStretch(2, 1);
  make.groupBoxes(QStringLiteral("chkDrvRd_29"), QStringLiteral("chkDrvWrt_29"),
                  QStringLiteral("CV 29"));
  for (const OptionPair& pair : kDriveOptions) make.options(pair);
  left->addStretch(1);

  make.halves()->addWidget(makeSpeedGroup(bench, binder, make.contents()), 1);

  make.buttons(QStringLiteral("Drv"));
  return page;
}

}  // namespace lokari
