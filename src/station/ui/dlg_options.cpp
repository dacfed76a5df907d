#include "station/ui/dlg_options.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>

#include "base/prompt.h"
#include "base/settings.h"
#include "base/ui/window_scale.h"
#include "link/station_link.h"
#include "link/ui/dlg_comm.h"
#include "station/comm_test.h"
#include "station/ui/address_part.h"

namespace lokari {
namespace {

constexpr int kSerialView = 0;
constexpr int kNetworkView = 1;
constexpr char16_t kUnitAddresses[] =
    u"Eine Funktionseinheit D hat dann an jeder Zentrale die Adressen (D - 1) x 4 + 1 bis 4: die "
    u"Einheit 13 schaltet die Weichen 49 bis 52. An der Z21 waren es bisher 13 bis 16.";

const StationChoiceRow& choiceRow(int row) {
  return kStationChoices[static_cast<size_t>(row)];
}

}  // namespace

void DlgOptions::load() {
  OptionsForm form = formOf(parts_.settings);
  form.address = storedAddress(parts_.settings, parts_.ini);
  txtDbPath_->setText(form.dbPath);
  for (size_t i = 0; i < txtIP_.size(); ++i) txtIP_[i]->setText(form.address[i]);
  select(form.station);
  comPorts_->button(form.comPort)->setChecked(true);
  txtComTimeout_->setText(form.timeout);
  lstBaudrate_->setEditText(form.baudrate);
  chkMakerForm_->setChecked(form.makerForm);
  chkTrace_->setChecked(form.trace);
  for (const Choice& choice : choices_) {
    (form.*choice.value ? choice.yes : choice.no)->setChecked(true);
  }
}

OptionsForm DlgOptions::form() const {
  OptionsForm form{
      .station = choiceRow(stations_->checkedId()).choice,
      .comPort = comPorts_->checkedId(),
      .timeout = txtComTimeout_->text(),
      .baudrate = lstBaudrate_->currentText(),
      .dbPath = txtDbPath_->text(),
      .address = {},
  };
  for (size_t i = 0; i < txtIP_.size(); ++i) form.address[i] = txtIP_[i]->text();
  for (const Choice& choice : choices_) form.*choice.value = choice.yes->isChecked();
  form.makerForm = chkMakerForm_->isChecked();
  form.trace = chkTrace_->isChecked();
  return form;
}

void DlgOptions::select(const StationChoice& choice) {
  for (int row = 0; row < static_cast<int>(kStationChoices.size()); ++row) {
    if (choiceRow(row).choice != choice) continue;
    stations_->button(row)->setChecked(true);
    chooseStation(row);
  }
}

void DlgOptions::chooseStation(int row) {
  const StationChoiceRow& chosen = choiceRow(row);
  const StationKindRow& kind = stationKind(chosen.choice.kind);
  const auto address = addressFor(chosen, form().address);
  for (size_t i = 0; i < txtIP_.size(); ++i) txtIP_[i]->setText(address[i]);
  lstBaudrate_->lineEdit()->setPlaceholderText(
      kind.defaultRate == 0 ? QString() : QStringLiteral("Vorgabe (%1)").arg(kind.defaultRate));
  views_->setCurrentIndex(kind.usesIpAddress ? kNetworkView : kSerialView);
  if (!kind.usesIpAddress) showPorts();
}

void DlgOptions::showPorts() {
  const QList<PortTable::Port> present = parts_.ports.presentPorts();
  const QList<int> found = portsIn(portListText(present));
  const QList<QAbstractButton*> buttons = comPorts_->buttons();
  for (QAbstractButton* button : buttons) {
    const int number = comPorts_->id(button);
    button->setVisible(found.contains(number));
    QString device;
    for (const PortTable::Port& port : present) {
      if (port.comPort == number) device = port.device;
    }
    button->setToolTip(device.isEmpty() ? QStringLiteral("Hier ist kein Gerät angeschlossen.")
                                        : device);
  }
}

bool DlgOptions::checked(const OptionsForm& form) {
  const std::optional<FormFault> fault = faultIn(form);
  if (!fault) return true;
  parts_.prompt.message(fault->text);
  findChild<QWidget*>(fault->control)->setFocus();
  return false;
}

bool DlgOptions::isHeldBack(const OptionsForm& form) {
  if (parts_.link.commUseCount == 0 || sameLine(form, parts_.settings)) return false;
  parts_.prompt.message(
      QStringLiteral("Ein Fahrpult oder Schaltpult hält die eingestellte Verbindung offen.\n"
                     "Bitte alle schließen, dann kann eine andere getestet werden!"));
  return true;
}

void DlgOptions::accept() {
  const OptionsForm taken = form();
  // Cabs drive on the line that they have; on another one their stop would reach nobody.
  if (testing_ || !checked(taken) || isHeldBack(taken)) return;
  takeForm(taken, parts_.settings);
  QList<IniEntry> entries = optionEntries(parts_.settings);
  if (keepsAddress(parts_.settings, parts_.ini)) entries.removeLast();
  entries += rareEntries(parts_.settings, parts_.ini);
  QStringList texts;
  // One write for all: a program that ends in the middle leaves no mixture of old and new.
  if (!parts_.ini.writeAll(QString::fromUtf16(kSettingsSection), entries)) {
    for (const IniEntry& entry : entries) {
      texts << QStringLiteral("Fehler beim Schreiben der INI-Datei (%1)!").arg(entry.key);
    }
  }
  if (taken.dbPath.size() > kLongestDbPath) {
    texts << QStringLiteral(
        "Der Pfad der Datenbank ist länger als 63 Zeichen und wurde nicht gespeichert!");
  }
  parts_.link.followTrace();
  if (!texts.isEmpty()) parts_.prompt.message(texts.join(u'\n'));
  QDialog::accept();
}

void DlgOptions::reject() {
  if (!testing_) QDialog::reject();
}

void DlgOptions::testLink() {
  const OptionsForm tried = form();
  if (testing_ || !checked(tried)) return;
  // The test would be answered on the line that is open, or take it from whoever drives on it.
  if (isHeldBack(tried)) return;
  // Without an answer the progress dialog may be closed while the session still says goodbye.
  testing_ = true;
  contents_->setEnabled(false);
  const auto test = [this, tried] {
    CommTestResult result;
    {
      const BorrowedLink lent(tried, parts_.settings);
      DlgComm dialog(parts_.link, this);
      scale_.ResizeWindow(&dialog);
      dialog.run(CommJob::TestComm, [&] { result = TestComm(parts_.link, parts_.settings); });
    }
    contents_->setEnabled(true);
    testing_ = false;
    if (result.connected) select(*result.connected);
    if (result.wantsMakerForm) offerMakerForm();
  };
  parts_.alone ? parts_.alone(test) : test();
}

void DlgOptions::offerMakerForm() {
  const Answer answer =
      parts_.prompt.ask(Box{.text = QString::fromUtf16(kMakerFormAdvice) +
                                    QStringLiteral("\nNachrichten künftig so senden?"),
                            .buttons = Buttons::YesNo,
                            .more = QString::fromUtf16(kUnitAddresses),
                            .preset = Answer::No});
  if (answer == Answer::Yes) chkMakerForm_->setChecked(true);
}

void DlgOptions::tellUnitAddresses(bool makerForm) {
  if (makerForm) {
    parts_.prompt.message(QString::fromUtf16(kUnitAddresses), Icon::Information);
  }
}

}  // namespace lokari
