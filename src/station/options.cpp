#include "station/options.h"

#include <algorithm>

#include "base/settings.h"

namespace lokari {
namespace {

constexpr int kLongestTimeout = 999;
constexpr int kPartSize = 3;

QString padded(const QString& part) {
  return part.rightJustified(kPartSize, u'0');
}

QString joined(const std::array<QString, 4>& address) {
  QStringList parts;
  for (const QString& part : address) parts << padded(part);
  return parts.join(u'.');
}

/// A part that is none, in a file edited by hand, is zeros: the dialog must not begin with a field
/// that cannot be left.
std::array<QString, 4> partsOf(const QString& address) {
  const QStringList given = address.split(u'.');
  std::array<QString, 4> parts;
  for (size_t i = 0; i < parts.size(); ++i) {
    const QString part = given.value(static_cast<qsizetype>(i));
    parts[i] = padded(isAddressPart(part) ? part : QString());
  }
  return parts;
}

bool isBaudrate(const QString& text) {
  return std::any_of(kBaudrateEntries.begin(), kBaudrateEntries.end(),
                     [&text](const char16_t* entry) { return text == QStringView(entry); });
}

/// What a session is opened with.
void takeLink(const OptionsForm& form, Settings& settings) {
  settings.baudrate = form.baudrate.toInt();
  settings.baseUnit = form.station.kind;
  settings.lenzV36 = form.station.lenzV36;
  settings.comPort = form.comPort;
  settings.ipAddr = joined(form.address);
  settings.makerForm = form.makerForm;
}

QString yesOrNo(bool value) {
  return value ? QStringLiteral("J") : QStringLiteral("N");
}

QString flag(bool value) {
  return value ? QStringLiteral("1") : QStringLiteral("0");
}

/// As it stands in the file; empty without one.
QString addressInFile(const IniFile& ini) {
  constexpr int kAddressSize = 16;
  return ini.read().getString(QString::fromUtf16(kSettingsSection), QStringLiteral("IPAddr"),
                              QString(), kAddressSize);
}

}  // namespace

std::array<QString, 4> storedAddress(const Settings& settings, const IniFile& ini) {
  const QString inFile = settings.station().usesIpAddress ? QString() : addressInFile(ini);
  return partsOf(inFile.isEmpty() ? settings.ipAddr : inFile);
}

bool keepsAddress(const Settings& settings, const IniFile& ini) {
  const QString inFile = addressInFile(ini);
  return !settings.station().usesIpAddress && !inFile.isEmpty() &&
         joined(partsOf(inFile)) == settings.ipAddr;
}

OptionsForm formOf(const Settings& settings) {
  return {
      .station = stationChoice(settings.baseUnit, settings.lenzV36).choice,
      .comPort = settings.comPort,
      .timeout = QString::number(settings.timeoutVal),
      .baudrate = settings.baudrate > 0 ? QString::number(settings.baudrate) : QString(),
      .dbPath = settings.dbPath,
      .address = partsOf(settings.ipAddr),
      .delay = settings.delayFlag,
      .addressCheck = settings.addressCheck,
      .manufacturerCheck = settings.manufacturerCheck,
      .continueOnError = settings.continueOnError,
      .makerForm = settings.makerForm,
      .trace = settings.trace,
  };
}

bool isAddressPart(const QString& text) {
  const bool digits =
      std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
  bool valid = false;
  const uint number = text.toUInt(&valid, 10);
  return digits && valid && number <= 255;
}

std::optional<FormFault> faultIn(const OptionsForm& form) {
  for (size_t i = 0; i < form.address.size(); ++i) {
    if (isAddressPart(form.address[i])) continue;
    return FormFault{
        QStringLiteral("txtIP%1").arg(i + 1),
        QStringLiteral("Jeder Teil der IP-Adresse muss eine Zahl von 0 bis 255 sein!")};
  }
  bool valid = false;
  const int timeout = form.timeout.toInt(&valid);
  if (!valid || timeout < 1 || timeout > kLongestTimeout) {
    return FormFault{QStringLiteral("txtComTimeout"),
                     QStringLiteral("Die Wartezeit muss zwischen 1 und 999 Sekunden liegen!")};
  }
  if (!form.baudrate.isEmpty() && !isBaudrate(form.baudrate)) {
    return FormFault{QStringLiteral("lstBaudrate"),
                     QStringLiteral("Die Baudrate %1 gibt es nicht!").arg(form.baudrate)};
  }
  return {};
}

std::array<QString, 4> addressFor(const StationChoiceRow& row,
                                  const std::array<QString, 4>& address) {
  const QString none = QStringLiteral("000");
  const QString fallback = QString::fromUtf16(row.defaultAddress);
  const bool set = address.front() != none || address.back() != none;
  return set || fallback.isEmpty() ? address : partsOf(fallback);
}

void takeForm(const OptionsForm& form, Settings& settings) {
  settings.timeoutVal = form.timeout.toInt();
  takeLink(form, settings);
  settings.dbPath = form.dbPath;
  settings.delayFlag = form.delay;
  settings.addressCheck = form.addressCheck;
  settings.addressCheckNow = form.addressCheck;
  settings.manufacturerCheck = form.manufacturerCheck;
  settings.manufacturerCheckNow = form.manufacturerCheck;
  settings.continueOnError = form.continueOnError;
  settings.trace = form.trace;
}

QList<IniEntry> optionEntries(const Settings& settings) {
  QList<IniEntry> entries{
      {QStringLiteral("DBPath"), settings.dbPath},
      {QStringLiteral("BaseUnit"), QString::fromUtf16(settings.station().name)},
      {QStringLiteral("LenzV36"), flag(settings.lenzV36)},
      {QStringLiteral("ComPort"), QString::number(settings.comPort)},
      {QStringLiteral("Timeout"), QString::number(settings.timeoutVal)},
      {QStringLiteral("Baudrate"), QString::number(settings.baudrate)},
      {QStringLiteral("Delay"), flag(settings.delayFlag)},
      {QStringLiteral("AddressCheck"), flag(settings.addressCheck)},
      {QStringLiteral("ManufacturerCheck"), flag(settings.manufacturerCheck)},
      {QStringLiteral("ContinueOnError"), flag(settings.continueOnError)},
      {QStringLiteral("IPAddr"), settings.ipAddr},
  };
  if (settings.dbPath.size() > kLongestDbPath) entries.removeFirst();
  return entries;
}

QList<IniEntry> rareEntries(const Settings& settings, const IniFile& ini) {
  const Settings inFile = loadSettings(ini, {});
  QList<IniEntry> entries;
  if (inFile.makerForm != settings.makerForm) {
    entries.append({QStringLiteral("MakerForm"), yesOrNo(settings.makerForm)});
  }
  if (inFile.trace != settings.trace) {
    entries.append({QStringLiteral("Trace"), flag(settings.trace)});
  }
  return entries;
}

bool sameLine(const OptionsForm& form, const Settings& settings) {
  if (form.station.kind != settings.baseUnit || form.makerForm != settings.makerForm) return false;
  if (settings.station().usesIpAddress) {
    return joined(form.address) == joined(partsOf(settings.ipAddr));
  }
  return form.comPort == settings.comPort && form.baudrate.toInt() == settings.baudrate;
}

BorrowedLink::BorrowedLink(const OptionsForm& form, Settings& settings)
    : settings_(settings),
      baseUnit_(settings.baseUnit),
      comPort_(settings.comPort),
      ipAddr_(settings.ipAddr),
      makerForm_(settings.makerForm) {
  takeLink(form, settings);
}

BorrowedLink::~BorrowedLink() {
  settings_.makerForm = makerForm_;
  settings_.ipAddr = ipAddr_;
  settings_.baseUnit = baseUnit_;
  settings_.comPort = comPort_;
}

QString portListText(const QList<PortTable::Port>& present) {
  QString text;
  for (const PortTable::Port& port : present) {
    text += QStringLiteral("COM%1=%2:").arg(port.comPort).arg(port.device);
  }
  if (!text.contains(QLatin1String("COM"))) {
    for (int n = 1; n <= PortTable::kLastPort; ++n) text += QStringLiteral("COM%1:").arg(n);
  }
  return text;
}

QList<int> portsIn(const QString& text) {
  QList<int> ports;
  for (int n = 1; n <= PortTable::kLastPort; ++n) {
    if (text.contains(QStringLiteral("COM%1").arg(n))) ports << n;
  }
  return ports;
}

}  // namespace lokari
