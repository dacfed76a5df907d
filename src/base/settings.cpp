#include "base/settings.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/ini_file.h"
#include "base/numbers.h"

namespace lokari {
namespace {

constexpr QStringView kYes = u"J";
constexpr QStringView kNo = u"N";

/// The keys of one settings file, all of the same moment.
class Keys {
 public:
  explicit Keys(const IniFile& ini) : ini_(ini.read()) {}

  QString text(const QString& key, const QString& fallback, int size) const {
    return ini_.getString(section(), key, fallback, size);
  }

  /// Takes the key's number when it lies within the range.
  void number(const QString& key, int fallback, int lowest, int highest, int& target) const {
    const int value = ini_.getInt(section(), key, fallback);
    if (value >= lowest && value <= highest) target = value;
  }

  /// Takes 0 or 1; the default of every flag is 1.
  void flag(const QString& key, bool& target) const {
    int value = target ? 1 : 0;
    number(key, 1, 0, 1, value);
    target = value == 1;
  }

  /// Takes J or N.
  void yesOrNo(const QString& key, bool& target) const {
    const QString value = text(key, QString(), 64);
    if (value.compare(kYes, Qt::CaseInsensitive) == 0) target = true;
    if (value.compare(kNo, Qt::CaseInsensitive) == 0) target = false;
  }

 private:
  static QString section() { return QString::fromUtf16(kSettingsSection); }
  IniState ini_;
};

constexpr std::array kBaudrates{0, 300, 600, 1200, 2400, 4800, 9600, 19200, 38400, 57600};

void readBaudrate(const Keys& keys, Settings& settings) {
  const auto value = parseNumber(keys.text(QStringLiteral("Baudrate"), QStringLiteral("0"), 10));
  if (!value) return;
  const auto known = std::find(kBaudrates.begin(), kBaudrates.end(), *value);
  if (known != kBaudrates.end()) settings.baudrate = *known;
}

QString stationName(const Keys& keys) {
  return keys.text(QStringLiteral("BaseUnit"), QStringLiteral("MX1"), 64);
}

void readStation(const Keys& keys, Settings& settings) {
  const StationKindRow* row = stationKindByName(stationName(keys));
  if (row == nullptr) return;
  settings.baseUnit = row->kind;
  if (row->impliesLenzV36) settings.lenzV36 = true;
  if (row->usesIpAddress) {
    settings.ipAddr = keys.text(QStringLiteral("IPAddr"), QStringLiteral("0"), 16);
  }
}

QString reportPath(const Keys& keys, const QString& key, const QString& name,
                   const QString& appPath) {
  const QString value = keys.text(key, name, 64);
  return appPath + u'/' + (value.isEmpty() ? name : value);
}

}  // namespace

Settings loadSettings(const IniFile& ini, const QString& appPath) {
  const Keys keys(ini);
  Settings settings;
  settings.dbPath = appPath + QStringLiteral("/DB/LOKARIV3.MDB");
  keys.number(QStringLiteral("Resize"), settings.resizeMode, 0, 1, settings.resizeMode);
  const QString dbPath = keys.text(QStringLiteral("DBPath"), settings.dbPath, 64);
  if (!dbPath.isEmpty()) settings.dbPath = dbPath;
  readStation(keys, settings);
  keys.flag(QStringLiteral("LenzV36"), settings.lenzV36);
  keys.number(QStringLiteral("ComPort"), 1, 1, 10, settings.comPort);
  keys.number(QStringLiteral("Timeout"), 1, 1, 999, settings.timeoutVal);
  keys.flag(QStringLiteral("Delay"), settings.delayFlag);
  readBaudrate(keys, settings);
  keys.flag(QStringLiteral("AddressCheck"), settings.addressCheck);
  keys.flag(QStringLiteral("ManufacturerCheck"), settings.manufacturerCheck);
  settings.addressCheckNow = settings.addressCheck;
  settings.manufacturerCheckNow = settings.manufacturerCheck;
  keys.flag(QStringLiteral("ContinueOnError"), settings.continueOnError);
  int twelve = 1;
  keys.number(QStringLiteral("Zimo12Functions"), 1, 0, std::numeric_limits<int>::max(), twelve);
  settings.zimoFunctionCount = twelve == 0 ? 8 : 12;
  settings.listReport =
      reportPath(keys, QStringLiteral("ListReport"), QStringLiteral("repl_ger.rpt"), appPath);
  settings.csvReport =
      reportPath(keys, QStringLiteral("CSVReport"), QStringLiteral("repc_ger.rpt"), appPath);
  keys.yesOrNo(QStringLiteral("MakerForm"), settings.makerForm);
  keys.flag(QStringLiteral("CANLog"), settings.canLog);
  int trace = 0;
  keys.number(QStringLiteral("Trace"), 0, 0, 1, trace);
  settings.trace = trace == 1;
  return settings;
}

std::optional<QString> unknownStation(const IniFile& ini) {
  const QString name = stationName(Keys(ini));
  return stationKindByName(name) == nullptr ? std::optional(name) : std::nullopt;
}

}  // namespace lokari
