#include "station/zimo_binary.h"

#include "base/bytes.h"
#include "link/station_link.h"
#include "link/zimo_binary.h"
#include "link/zimo_binary_codec.h"
#include "station/flag_lines.h"

namespace lokari {
namespace {

constexpr int kWant = 5;
constexpr int kNoModel = 0;
constexpr int kStopped = 0x01;
constexpr int kWithoutVoltage = 0x02;
constexpr int kModelWithSerialNumber = 4;

/// Bytes that a reply has at least to hold them.
constexpr qsizetype kModelSize = 4;
constexpr qsizetype kSoftwareSize = 14;
constexpr qsizetype kBootRomSize = 18;
constexpr qsizetype kSerialNumberSize = 24;
constexpr qsizetype kTrackSize = 2;

struct Model {
  int number;
  const char16_t* name;
};
constexpr std::array kModels{
    Model{1, u"MX1 2000 / HS"}, Model{2, u"MX1 2000 EC"}, Model{3, u"MX31ZL"},
    Model{4, u"MXULF"},         Model{10, u"MX10"},
};

constexpr std::array kFormats{
    FlagLine{0x80, u"DCC Datenformat aktiv"},
    FlagLine{0x40, u"Motorola Datenformat aktiv"},
};

QString modelName(int number) {
  for (const Model& model : kModels) {
    if (model.number == number) return QString::fromUtf16(model.name);
  }
  return QStringLiteral("MX1 (unbekannter Typ)");
}

QString twoDigits(int number) {
  return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

class ZimoBinaryInquiry final : public StationInquiry {
 public:
  using StationInquiry::StationInquiry;

  void ask() override {
    framing().zbinSend(bytes({0x0D, 0x00}), false);
    setWant(kWant);
  }

  StationReport evaluate() override {
    const QByteArray model = framing().zbinReceive();
    StationReport report{.lines = zimoBinaryModelLines(model)};
    // What has not told who it is has not answered, unless it confirms as the documents have it.
    report.wantsMakerForm = !model.isEmpty() && framing().zbinKind == zbin::kConfirmation;
    if (report.lines.isEmpty() && !report.wantsMakerForm) return report;
    if (report.lines.isEmpty()) report.lines << modelName(kNoModel);
    framing().zbinSend(bytes({0x02, 0x03}), false);
    const QByteArray track = framing().zbinReceive();
    report.lines << (report.wantsMakerForm ? zimoDocumentedTrackLines(track)
                                           : zimoBinaryTrackLines(track));
    return report;
  }

 private:
  ZimoBinaryFraming& framing() const {
    return static_cast<ZimoBinaryProtocol&>(link().protocol()).framing();
  }
};

}  // namespace

QStringList zimoBinaryModelLines(const QByteArray& reply) {
  // Counted from 1, as in the table above.
  const auto at = [&reply](qsizetype place) { return byteAt(reply, place - 1); };
  QStringList lines;
  if (reply.size() < kModelSize) return lines;
  lines << modelName(at(4));
  if (reply.size() < kSoftwareSize) return lines;
  lines << QStringLiteral("Software %1.%2.%3 vom %4.%5.%6")
               .arg(QString::number(at(9)), twoDigits(at(10)), twoDigits(at(14)),
                    QString::number(at(11)), QString::number(at(12)), QString::number(at(13)));
  if (reply.size() < kBootRomSize) return lines;
  lines << QStringLiteral("Boot ROM %1.%2").arg(QString::number(at(17)), twoDigits(at(18)));
  if (at(4) != kModelWithSerialNumber || reply.size() < kSerialNumberSize) return lines;
  const qint64 serialNumber =
      ((at(21) * qint64{256} + at(22)) * qint64{256} + at(23)) * qint64{256} + at(24);
  lines << QStringLiteral("Ser. Nr. %1").arg(serialNumber);
  return lines;
}

QStringList zimoBinaryTrackLines(const QByteArray& reply) {
  if (reply.size() < kTrackSize) return {};
  const int state = byteAt(reply, reply.size() - 1);
  return flagLines(state, kFormats) + flagLines(state, kTrackFlags);
}

QStringList zimoDocumentedTrackLines(const QByteArray& reply) {
  if (reply.size() < kTrackSize) return {};
  const int state = byteAt(reply, reply.size() - 1);
  QStringList lines;
  if ((state & kStopped) != 0) lines << QStringLiteral("Sammelstop ein");
  lines << ((state & kWithoutVoltage) != 0 ? QStringLiteral("Fahrspannung ausgeschaltet")
                                           : QStringLiteral("Fahrspannung eingeschaltet"));
  return lines;
}

std::unique_ptr<StationInquiry> makeZimoBinaryInquiry(StationLink& link, Settings& settings) {
  return std::make_unique<ZimoBinaryInquiry>(link, settings);
}

}  // namespace lokari
