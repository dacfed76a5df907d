#include "station/tams.h"

#include "base/bytes.h"
#include "link/ibx_send.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "station/ibx_state.h"
#include "station/p50x_versions.h"

namespace lokari {
namespace {

constexpr int kReplyLength = 10;
constexpr qsizetype kSerialNumberSize = 4;
constexpr int kLastNoLetter = 40;

/// The character of a digit's number; the station may count beyond 9.
QChar digit(int number) {
  return QChar(static_cast<char16_t>(number + u'0'));
}

class TamsInquiry final : public StationInquiry {
 public:
  using StationInquiry::StationInquiry;

  void ask() override {
    ibxSend(link(), bytes({0xA0}));
    setWant(kReplyLength);
  }

  /// The station answers late rather than never: a second question would only be answered behind
  /// the first.
  void askAgain() override {}

  StationReport evaluate() override {
    const QByteArray reply = link().serial().read();
    const P50xModel model = p50xModel(reply);
    const bool other = model == P50xModel::Intellibox || model == P50xModel::Other;
    if (other) return withIbxState(link(), p50xReport(reply, P50xModel::Tams));
    // The documents' list; what it tells stands at the told places.
    return withIbxState(link(),
                        {.lines = tamsLines(reply), .wantsMakerForm = model == P50xModel::Tams});
  }

  StationReport evaluateShort() override { return reportOtherP50x(link(), P50xModel::Tams); }
};

}  // namespace

QStringList tamsLines(const QByteArray& reply) {
  QStringList lines;
  if (reply.size() < 4) return lines;
  QString version = QStringLiteral("Tams MC SPU Version ");
  version += digit(byteAt(reply, 1));
  version += u'.';
  version += digit(byteAt(reply, 2));
  version += digit(byteAt(reply, 3));
  const int letter = byteAt(reply, 4);
  if (letter > kLastNoLetter) version += QChar(static_cast<char16_t>(letter));
  lines << version;
  if (reply.size() < kReplyLength) return lines;
  const QByteArray serialNumber =
      reply.mid(reply.size() - 1 - kSerialNumberSize, kSerialNumberSize).toHex().toUpper();
  lines << QStringLiteral("MC Serien-#: ") + QString::fromLatin1(serialNumber);
  return lines;
}

std::unique_ptr<StationInquiry> makeTamsInquiry(StationLink& link, Settings& settings) {
  return std::make_unique<TamsInquiry>(link, settings);
}

}  // namespace lokari
