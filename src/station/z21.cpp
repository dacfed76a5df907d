#include "station/z21.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/bytes.h"
#include "base/numbers.h"
#include "link/station_link.h"
#include "link/z21.h"
#include "link/z21_codec.h"
#include "link/z21_form.h"

namespace lokari {
namespace {

constexpr int kSerialNumberSize = 8;
constexpr int kFirmwareSize = 9;
constexpr int kHardwareSize = 12;
constexpr int kLockSize = 5;
constexpr int kStatusSize = 8;
constexpr int kOutputSize = 9;
constexpr char16_t kAskFirmware[] = u"07 00 40 00 F1 0A FB";
constexpr char16_t kAskFirstOutput[] = u"08 00 40 00 43 00 00";
/// What a station answers at once; older ones leave some of it unanswered.
constexpr int kPatience = 2;  // s

struct Hardware {
  quint32 type;
  const char16_t* name;
};
constexpr quint32 kZ21Start = 0x204;
constexpr Hardware kHardware[] = {
    {0x200, u"Z21 (2012)"}, {0x201, u"Z21"},          {0x202, u"SmartRail"},
    {0x203, u"z21"},        {kZ21Start, u"z21start"}, {0x211, u"Z21 XL"},
};

struct StatusWords {
  int bit;
  const char16_t* words;
};
constexpr StatusWords kStatus[] = {
    {z21::kShortCircuit, u"Kurzschluss"},
    {z21::kOff, u"Gleisspannung aus"},
    {z21::kStopped, u"Alle Fahrzeuge angehalten"},
    {z21::kProgramming, u"Programmiermodus"},
};

/// Of four bytes, low byte first.
quint32 numberAt(const QByteArray& message, qsizetype at) {
  quint32 number = 0;
  for (qsizetype i = 3; i >= 0; --i) {
    number = number * 256 + static_cast<quint32>(byteAt(message, at + i));
  }
  return number;
}

quint32 hardwareType(const QByteArray& message) {
  return message.size() < kHardwareSize ? 0 : numberAt(message, 4);
}

class Z21Inquiry final : public StationInquiry {
 public:
  using StationInquiry::StationInquiry;

  void ask() override {
    question(bytes({0x08, 0x00, 0x10, 0x00}), z21::kAskSerialNumber);
    setWant(kSerialNumberSize);
  }

  StationReport evaluate() override {
    StationReport report;
    append(report, z21SerialNumberLine(z21().z21LastReply));
    question(bytes({0x09, 0x00, 0x40, 0x00, 0xF3, 0x0A}), kAskFirmware);
    link().WaitForData(kFirmwareSize);
    const bool hears = z21().z21ReplyLen >= kFirmwareSize;
    if (hears) append(report, z21FirmwareLine(z21().z21LastReply));
    if (z21().form().subscribes) {
      askMore(report);
    } else if (hears && !link().cancelRequested) {
      report.wantsMakerForm = !understandsOurChecksum();
    }
    z21().z21ReplyLen = 0;
    z21().z21Wanted.clear();
    return report;
  }

 private:
  Z21Protocol& z21() const { return static_cast<Z21Protocol&>(link().protocol()); }

  /// Sends a question. What came before it is dropped: an arrival takes one datagram only, so that
  /// an old one would hold up the answer.
  void question(const QByteArray& wanted, QStringView text) {
    z21().dropInput();
    z21().z21ReplyLen = 0;
    z21().z21Wanted = wanted;
    z21().z21Send(text);
    link().Delay(0);
  }

  /// Empty without an answer.
  QByteArray answerTo(const QByteArray& wanted, QStringView text, int size) {
    if (link().cancelRequested) return {};
    question(wanted, text);
    link().WaitForData(size, kPatience);
    return z21().z21ReplyLen >= size ? z21().z21LastReply : QByteArray();
  }

  /// The questions so far have a checksum that is right in either form, or none. This one has ours,
  /// and no station minds it: how its first output stands. One datagram may be lost.
  bool understandsOurChecksum() {
    const QByteArray head = bytes({0x09, 0x00, 0x40, 0x00, 0x43, 0x00, 0x00});
    const QString text = z21::withChecksum(QString::fromUtf16(kAskFirstOutput));
    return !answerTo(head, text, kOutputSize).isEmpty() ||
           !answerTo(head, text, kOutputSize).isEmpty() || link().cancelRequested;
  }

  void askMore(StationReport& report) {
    const QByteArray hardware =
        answerTo(bytes({0x0C, 0x00, 0x1A, 0x00}), z21::kAskHardware, kHardwareSize);
    append(report, z21HardwareLine(hardware));
    if (hardwareType(hardware) == kZ21Start) {
      append(report,
             z21LockLine(answerTo(bytes({0x05, 0x00, 0x18, 0x00}), z21::kAskLock, kLockSize)));
    }
    append(report, z21StatusLine(answerTo(bytes({0x08, 0x00, 0x40, 0x00, 0x62, 0x22}),
                                          z21::kAskStatus, kStatusSize)));
  }

  static void append(StationReport& report, const QString& line) {
    if (!line.isEmpty()) report.lines << line;
  }
};

}  // namespace

QString z21SerialNumberLine(const QByteArray& message) {
  if (message.size() < kSerialNumberSize) return {};
  return QStringLiteral("Roco Z21 Ser. Nr. %1").arg(numberAt(message, 4));
}

QString z21FirmwareLine(const QByteArray& message) {
  if (message.size() < kFirmwareSize) return {};
  return QStringLiteral("Firmware Vers. %1.%2")
      .arg(hex(byteAt(message, 6)), hex(byteAt(message, 7)));
}

QString z21HardwareLine(const QByteArray& message) {
  if (message.size() < kHardwareSize) return {};
  const quint32 type = hardwareType(message);
  const auto* const known =
      std::find_if(std::begin(kHardware), std::end(kHardware),
                   [type](const Hardware& each) { return each.type == type; });
  const QString name = known == std::end(kHardware) ? QStringLiteral("Bauart %1").arg(hex(type))
                                                    : QString::fromUtf16(known->name);
  // The version's digits stand for themselves.
  return QStringLiteral("Gerät: %1, Version %2.%3")
      .arg(name, hex(byteAt(message, 9)), hexPadded(byteAt(message, 8)));
}

QString z21LockLine(const QByteArray& message) {
  constexpr int kLocked = 1;
  if (message.size() < kLockSize || byteAt(message, 4) != kLocked) return {};
  return QStringLiteral("Gesperrt: Fahren und Schalten brauchen den Freischaltcode der z21start.");
}

QString z21StatusLine(const QByteArray& message) {
  const auto status = z21::statusBits(message);
  if (!status || message.size() < kStatusSize) return {};
  QStringList words;
  for (const StatusWords& each : kStatus) {
    if ((*status & each.bit) != 0) words << QString::fromUtf16(each.words);
  }
  return words.isEmpty() ? QStringLiteral("Gleisspannung ein") : words.join(QStringLiteral(", "));
}

std::unique_ptr<StationInquiry> makeZ21Inquiry(StationLink& link, Settings& settings) {
  return std::make_unique<Z21Inquiry>(link, settings);
}

}  // namespace lokari
