// The settings: read once at start from the section [LOKARI] of the settings file, changed by the
// options dialog.
#pragma once

#include <QString>

#include <optional>

#include "base/station_kind.h"

namespace lokari {

class IniFile;

/// Section of the settings file.
inline constexpr char16_t kSettingsSection[] = u"LOKARI";

/// The values here are the initial ones. They stay when a key holds a value outside its range; a
/// missing key has a default of its own, which differs for `comPort`, `timeoutVal` and `lenzV36`.
struct Settings {
  StationKind baseUnit = StationKind::Mx1;
  int comPort = 2;        ///< 1 to 10
  int timeoutVal = 20;    ///< whole seconds, 1 to 999
  bool delayFlag = true;  ///< one second ahead of every CV access
  int baudrate = 0;       ///< 0: the station kind's default rate
  bool addressCheck = true;
  bool manufacturerCheck = true;
  bool addressCheckNow = true;       ///< working copy for this run
  bool manufacturerCheckNow = true;  ///< working copy for this run
  bool continueOnError = true;
  int zimoFunctionCount = 12;  ///< 12 or 8
  QString ipAddr = QStringLiteral("000.000.000.000");
  bool lenzV36 = false;
  bool makerForm = false;  ///< what goes out follows the makers' documents where they differ
  bool canLog = false;
  bool trace = false;  ///< all traffic is written into TRACE.log
  int resizeMode = 1;  ///< 0 fixed layout, 1 layouts scale with the window
  QString dbPath;
  QString listReport;  ///< full path
  QString csvReport;   ///< full path

  /// The row of the station, in the form of the messages.
  const StationKindRow& station() const { return stationKind(baseUnit, makerForm); }
};

/// Program title: caption, splash, about.
inline constexpr char16_t kTitle[] = u"Lokari V4.11";

/// Reads every key in its order. `appPath` is where the database and the report templates are
/// named from. Nothing is reported: a missing file or key gives the default, a bad value leaves
/// the initial one.
Settings loadSettings(const IniFile& ini, const QString& appPath);

/// The value of `BaseUnit` when it names no station kind; loadSettings() then keeps the initial
/// one.
std::optional<QString> unknownStation(const IniFile& ini);

}  // namespace lokari
