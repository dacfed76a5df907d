// `dlgOptions`: the station, how it is reached, and how CV jobs behave.
#pragma once

#include <QDialog>

#include <array>
#include <functional>
#include <vector>

#include "base/ini_file.h"
#include "link/port_table.h"
#include "station/options.h"

class QBoxLayout;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QStackedWidget;

namespace lokari {

class AddressPart;
class Prompt;
class StationLink;
class WindowScale;

struct OptionsParts {
  Settings& settings;  ///< those of the link
  StationLink& link;
  Prompt& prompt;
  IniFile ini;
  PortTable ports;
  /// Runs what needs the station for itself, at once or as soon as the station is free; without
  /// it, at once.
  std::function<void(std::function<void()> job)> alone = {};
};

class DlgOptions final : public QDialog {
  Q_OBJECT

 public:
  /// What the parts refer to, and `scale`, must outlive the dialog. OK changes the settings and
  /// writes them; a session that is open keeps what it was opened with.
  DlgOptions(OptionsParts parts, const WindowScale& scale, QWidget* parent = nullptr);

  void accept() override;
  void reject() override;

 private:
  void makeStations(QBoxLayout* rows);
  void makeLink(QBoxLayout* rows);
  QWidget* makeSerialView();
  QWidget* makeNetworkView();
  void makeJobs(QBoxLayout* rows);
  void makeDatabase(QBoxLayout* rows);
  void makeMakerForm(QBoxLayout* rows);
  void makeTrace(QBoxLayout* rows);
  void makeButtons(QBoxLayout* rows);

  void load();
  OptionsForm form() const;
  void chooseStation(int row);
  void showPorts();
  void select(const StationChoice& choice);
  /// True when every entry can be taken; else the user has been told and stands in the field.
  bool checked(const OptionsForm& form);
  /// A cab or panel holds another line open than the form's; the user has been told.
  bool isHeldBack(const OptionsForm& form);
  void testLink();
  void offerMakerForm();
  /// That the units' addresses become others, when the user ticks the box.
  void tellUnitAddresses(bool makerForm);

  OptionsParts parts_;
  const WindowScale& scale_;
  QWidget* contents_ = nullptr;
  QWidget* page_ = nullptr;           // what scrolls: all but the buttons
  QButtonGroup* stations_ = nullptr;  // ids are rows of kStationChoices
  QButtonGroup* comPorts_ = nullptr;  // ids are numbers of ports
  QStackedWidget* views_ = nullptr;
  QComboBox* lstBaudrate_ = nullptr;
  QLineEdit* txtComTimeout_ = nullptr;
  QLineEdit* txtDbPath_ = nullptr;
  QCheckBox* chkMakerForm_ = nullptr;
  QCheckBox* chkTrace_ = nullptr;
  std::array<AddressPart*, 4> txtIP_{};

  /// A question with the answers yes and no.
  struct Choice {
    bool OptionsForm::*value;
    QRadioButton* yes;
    QRadioButton* no;
  };
  std::vector<Choice> choices_;
  bool testing_ = false;
};

}  // namespace lokari
