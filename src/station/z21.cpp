#include "station/z21.h"

#include "base/bytes.h"
#include "base/numbers.h"
#include "link/station_link.h"
#include "link/z21.h"
#include "link/z21_codec.h"

namespace lokari {
namespace {

constexpr int kSerialNumberSize = 8;
constexpr int kFirmwareSize = 9;
constexpr char16_t kAskFirmware[] = u"07 00 40 00 F1 0A FB";

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
    if (z21().z21ReplyLen >= kFirmwareSize) append(report, z21FirmwareLine(z21().z21LastReply));
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

  static void append(StationReport& report, const QString& line) {
    if (!line.isEmpty()) report.lines << line;
  }
};

}  // namespace

QString z21SerialNumberLine(const QByteArray& message) {
  if (message.size() < kSerialNumberSize) return {};
  const qint64 number = byteAt(message, 4) + 256 * qint64{byteAt(message, 5)} +
                        65536 * qint64{byteAt(message, 6)} + 16777216 * qint64{byteAt(message, 7)};
  return QStringLiteral("Roco Z21 Ser. Nr. %1").arg(number);
}

QString z21FirmwareLine(const QByteArray& message) {
  if (message.size() < kFirmwareSize) return {};
  return QStringLiteral("Firmware Vers. %1.%2")
      .arg(hex(byteAt(message, 6)), hex(byteAt(message, 7)));
}

std::unique_ptr<StationInquiry> makeZ21Inquiry(StationLink& link, Settings& settings) {
  return std::make_unique<Z21Inquiry>(link, settings);
}

}  // namespace lokari
