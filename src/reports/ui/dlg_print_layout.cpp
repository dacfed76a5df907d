// How the controls of `dlgPrint` are laid out.
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "base/ui/option_group.h"
#include "base/ui/window_scale.h"
#include "reports/printer.h"
#include "reports/ui/address_edit.h"
#include "reports/ui/dlg_print.h"

namespace lokari {
namespace {

constexpr int kAddressDigits = 5;

template <class Control>
Control* named(Control* control, const char16_t* name, const QString& accessibleName) {
  control->setObjectName(QString::fromUtf16(name));
  control->setAccessibleName(accessibleName);
  return control;
}

QRadioButton* option(OptionGroup* group, const char16_t* name, const QString& caption,
                     QWidget* parent) {
  auto* radio = named(new QRadioButton(caption, parent), name, caption);
  group->add(radio);
  return radio;
}

QLineEdit* addressField(const char16_t* name, const QString& accessibleName, QWidget* parent) {
  auto* field = named(new AddressEdit(parent), name, accessibleName);
  field->setMaxLength(kAddressDigits);
  field->setFixedWidth(field->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 16);
  return field;
}

}  // namespace

DlgPrint::DlgPrint(DlgPrintParts parts, const WindowScale& scale, QWidget* parent)
    : QDialog(parent), parts_(std::move(parts)), scale_(scale), contents_(new QWidget(this)) {
  setObjectName(QStringLiteral("dlgPrint"));
  setWindowTitle(QStringLiteral("Drucken"));
  setModal(true);
  auto* rows = new QVBoxLayout(contents_);
  rows->setContentsMargins(12, 12, 12, 12);
  rows->setSpacing(10);
  addSelection(rows);
  addOutput(rows);
  addButtons(rows);
  scale.arrange(this, contents_);
  preset();
}

void DlgPrint::addSelection(QBoxLayout* rows) {
  auto* box = new QGroupBox(QStringLiteral("Auswahl"), contents_);
  auto* grid = new QGridLayout(box);
  grid->setHorizontalSpacing(8);
  auto* group = new OptionGroup(this);
  optPrintAll_ = option(group, u"optPrintAll", QStringLiteral("&Alle Datensätze"), box);
  optPrintSel_ = option(group, u"optPrintSel", QStringLiteral("Aktuelle Aus&wahl"), box);
  optPrintColl_ = option(group, u"optPrintColl", QStringLiteral("&Sammlung:"), box);
  optPrintSel_->setToolTip(QStringLiteral("Die Fahrzeuge, die der aktive Filter durchlässt"));
  cb_printColl_ =
      named(new QComboBox(box), u"cb_printColl", QStringLiteral("Sammlung, leer für alle"));
  // A user may clear it: then the addresses alone select.
  cb_printColl_->setEditable(true);
  cb_printColl_->setInsertPolicy(QComboBox::NoInsert);
  cb_printColl_->lineEdit()->setPlaceholderText(QStringLiteral("alle Sammlungen"));
  cb_printColl_->setMinimumContentsLength(16);
  txtAdrFrom_ = addressField(u"txtAdrFrom", QStringLiteral("Adresse von"), box);
  txtAdrTo_ = addressField(u"txtAdrTo", QStringLiteral("Adresse bis"), box);
  auto* labFrom = new QLabel(QStringLiteral("Adresse &von:"), box);
  auto* labTo = new QLabel(QStringLiteral("&bis:"), box);
  labFrom->setBuddy(txtAdrFrom_);
  labTo->setBuddy(txtAdrTo_);
  auto* addresses = new QHBoxLayout;
  addresses->setSpacing(8);
  addresses->addWidget(labFrom);
  addresses->addWidget(txtAdrFrom_);
  addresses->addWidget(labTo);
  addresses->addWidget(txtAdrTo_);
  addresses->addStretch();
  grid->addWidget(optPrintAll_, 0, 0, 1, 2);
  grid->addWidget(optPrintSel_, 1, 0, 1, 2);
  grid->addWidget(optPrintColl_, 2, 0);
  grid->addWidget(cb_printColl_, 2, 1);
  grid->addLayout(addresses, 3, 1);
  grid->setColumnStretch(1, 1);
  connect(group, &QButtonGroup::buttonToggled, this, &DlgPrint::enable);
  rows->addWidget(box);
}

void DlgPrint::addOutput(QBoxLayout* rows) {
  auto* box = new QGroupBox(QStringLiteral("Ausgabe"), contents_);
  auto* grid = new QGridLayout(box);
  grid->setHorizontalSpacing(8);
  auto* group = new OptionGroup(this);
  optPrintList_ = option(group, u"optPrintList", QStringLiteral("Drucker (&Liste)"), box);
  optPrintSheet_ =
      option(group, u"optPrintSheet", QStringLiteral("Drucker (&1 Blatt / Fahrzeug)"), box);
  optPrintExcel_ = option(group, u"optPrintExcel", QStringLiteral("&Excel (CSV-Datei)"), box);
  cb_PrinterSel_ = named(new QComboBox(box), u"cb_PrinterSel", QStringLiteral("Drucker"));
  auto* labPrinter = new QLabel(QStringLiteral("D&rucker:"), box);
  labPrinter->setBuddy(cb_PrinterSel_);
  grid->addWidget(optPrintList_, 0, 0, 1, 2);
  grid->addWidget(optPrintSheet_, 1, 0, 1, 2);
  grid->addWidget(optPrintExcel_, 2, 0, 1, 2);
  // The line keeps its place while it has nothing to say, so that nothing moves.
  labRemark_ = named(new QLabel(box), u"labRemark", QStringLiteral("Hinweis zu den Druckern"));
  grid->addWidget(labPrinter, 3, 0);
  grid->addWidget(cb_PrinterSel_, 3, 1);
  grid->addWidget(labRemark_, 4, 0, 1, 2);
  grid->setColumnStretch(1, 1);
  connect(group, &QButtonGroup::buttonToggled, this, &DlgPrint::enable);
  connect(cb_PrinterSel_, &QComboBox::textActivated, this,
          [this](const QString& name) { parts_.printer.choose(name); });
  rows->addWidget(box);
}

void DlgPrint::addButtons(QBoxLayout* rows) {
  auto* line = new QHBoxLayout;
  butPreview_ = named(new QPushButton(QStringLiteral("V&orschau..."), contents_), u"butPreview",
                      QStringLiteral("Vorschau der Seiten"));
  butPreview_->setAutoDefault(false);
  auto* ok = named(new QPushButton(QStringLiteral("OK"), contents_), u"butOK",
                   QStringLiteral("Drucken oder exportieren"));
  ok->setDefault(true);
  auto* cancel = named(new QPushButton(QStringLiteral("Abbruch"), contents_), u"butCancel",
                       QStringLiteral("Abbruch"));
  cancel->setAutoDefault(false);
  line->addWidget(butPreview_);
  line->addStretch();
  line->addWidget(ok);
  line->addWidget(cancel);
  connect(butPreview_, &QPushButton::clicked, this, &DlgPrint::preview);
  connect(ok, &QPushButton::clicked, this, &DlgPrint::accept);
  connect(cancel, &QPushButton::clicked, this, &DlgPrint::reject);
  rows->addStretch();
  rows->addLayout(line);
}

}  // namespace lokari
