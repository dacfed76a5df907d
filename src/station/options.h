// The options without their window: what its controls hold, what becomes of it.
#pragma once

#include <QList>
#include <QStringList>

#include <array>
#include <optional>

#include "base/ini_file.h"
#include "link/port_table.h"
#include "station/station_choice.h"

namespace lokari {

struct Settings;

/// Entries of the list of rates; an empty field stands for the station's own rate.
inline constexpr std::array kBaudrateEntries{u"300",  u"600",   u"1200",  u"2400", u"4800",
                                             u"9600", u"19200", u"38400", u"57600"};

/// What the controls hold.
struct OptionsForm {
  StationChoice station;
  int comPort = 1;
  QString timeout;   ///< whole seconds
  QString baudrate;  ///< an entry, or empty
  QString dbPath;
  std::array<QString, 4> address;  ///< the parts of the network address
  bool delay = true;
  bool addressCheck = true;
  bool manufacturerCheck = true;
  bool continueOnError = true;
  bool makerForm = false;  ///< messages follow the makers' documents
  bool trace = false;
};

/// The controls when the dialog comes up. Parts that the stored address lacks are filled with
/// zeros.
OptionsForm formOf(const Settings& settings);

/// What is wrong with an entry: the control to go back to and a German sentence.
struct FormFault {
  QString control;
  QString text;
};
/// The first entry that cannot be taken, or nothing.
std::optional<FormFault> faultIn(const OptionsForm& form);

/// True for a number from 0 to 255.
bool isAddressPart(const QString& text);

/// The address to show when a station is chosen: its default one where none has been set, which the
/// first and the last part tell; else `address`.
std::array<QString, 4> addressFor(const StationChoiceRow& row,
                                  const std::array<QString, 4>& address);

/// Takes a form without faults over, into the working copies of the session as well.
void takeForm(const OptionsForm& form, Settings& settings);

/// Longest path that a start reads.
inline constexpr qsizetype kLongestDbPath = 63;

/// What the settings file gets, in its order. A path of the database that the next start would cut
/// is left out: it would find no database there.
QList<IniEntry> optionEntries(const Settings& settings);
/// What it gets behind them, of settings whose key is missing in most files: only what the file has
/// otherwise.
QList<IniEntry> rareEntries(const Settings& settings, const IniFile& ini);

/// The address that the dialog begins with. A start reads none for a station behind a serial port,
/// but the file may hold that of the station used before.
std::array<QString, 4> storedAddress(const Settings& settings, const IniFile& ini);
/// True where the file holds the settings' address already, in whatever form, and the station needs
/// none: it then stays as it stands.
bool keepsAddress(const Settings& settings, const IniFile& ini);

/// Whether a session of the form would have the line of the settings': the same station, spoken to
/// in the same form, behind the same port at the same rate, or behind the same address.
bool sameLine(const OptionsForm& form, const Settings& settings);

/// Lends the settings the form's choice of station, port, rate, address and form of messages for a
/// test. In the end all but the rate are given back.
class BorrowedLink {
 public:
  BorrowedLink(const OptionsForm& form, Settings& settings);
  ~BorrowedLink();
  BorrowedLink(const BorrowedLink&) = delete;
  BorrowedLink& operator=(const BorrowedLink&) = delete;

 private:
  Settings& settings_;
  StationKind baseUnit_;
  int comPort_;
  QString ipAddr_;
  bool makerForm_;
};

/// The ports of this machine as one text, "COM3=/dev/ttyUSB0:"; all ten names when there is none.
QString portListText(const QList<PortTable::Port>& present);
/// The numbers whose names are found in the text: a search for "COM1" also finds COM10.
QList<int> portsIn(const QString& text);

}  // namespace lokari
