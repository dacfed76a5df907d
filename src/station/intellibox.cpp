#include "station/intellibox.h"

#include "base/bytes.h"
#include "base/numbers.h"
#include "link/ibx_send.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"
#include "station/ibx_state.h"
#include "station/p50x_versions.h"

namespace lokari {
namespace {

constexpr int kReplyLength = 19;
constexpr qsizetype kSerialNumber = 13;
constexpr qsizetype kSerialNumberSize = 5;

/// The whole and the three places behind the point, as the digits of the two bytes stand.
QString longVersion(const QByteArray& reply, qsizetype low, qsizetype high) {
  const QString digits = hex(byteAt(reply, high)) + hex(byteAt(reply, low));
  return digits.left(1) + u'.' + digits.right(3);
}

QString shortVersion(const QByteArray& reply, qsizetype place) {
  const QString digits = hexPadded(byteAt(reply, place));
  return digits.left(1) + u'.' + digits.right(1);
}

class IntelliboxInquiry final : public StationInquiry {
 public:
  using StationInquiry::StationInquiry;

  void ask() override {
    ibxSend(link(), bytes({0xA0}));
    setWant(kReplyLength);
  }

  void askAgain() override {
    // A carriage return ends whatever line the station may be waiting for.
    link().serial().write("\r");
    link().protocol().dropInput();
    link().Delay(1);
    link().protocol().dropInput();
    ask();
  }

  StationReport evaluate() override {
    return withIbxState(link(), {.lines = intelliboxLines(link().serial().read())});
  }

  /// Other stations of the protocol have shorter lists.
  StationReport evaluateShort() override { return reportOtherP50x(link(), P50xModel::Intellibox); }
};

}  // namespace

QStringList intelliboxLines(const QByteArray& reply) {
  QStringList lines;
  if (reply.size() < 3) return lines;
  QString first = QStringLiteral("IBX SPU Version ") + longVersion(reply, 1, 2);
  if (reply.size() >= 6) first += QStringLiteral(" / KPU Version ") + longVersion(reply, 4, 5);
  lines << first;
  if (reply.size() < 8) return lines;
  QString second = QStringLiteral("PPU Version ") + shortVersion(reply, 7);
  if (reply.size() >= 10) second += QStringLiteral(" / LIPU Version ") + shortVersion(reply, 9);
  lines << second;
  if (reply.size() < 12) return lines;
  lines << QStringLiteral("DNG Version ") + shortVersion(reply, 11);
  if (reply.size() < kSerialNumber + kSerialNumberSize) return lines;
  const QByteArray serialNumber = reply.mid(kSerialNumber, kSerialNumberSize).toHex().toUpper();
  lines << QStringLiteral("IBX Serien-#: ") + QString::fromLatin1(serialNumber);
  return lines;
}

std::unique_ptr<StationInquiry> makeIntelliboxInquiry(StationLink& link, Settings& settings) {
  return std::make_unique<IntelliboxInquiry>(link, settings);
}

}  // namespace lokari
