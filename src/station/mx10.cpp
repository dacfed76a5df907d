#include "station/mx10.h"

#include "base/bytes.h"
#include "link/mx10.h"
#include "link/mx10_codec.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr quint32 kQuestion = 0x082086C2;
constexpr int kTimes = 4;
constexpr int kPartSize = 6;
constexpr int kVersionSize = 8;

class Mx10Inquiry final : public StationInquiry {
 public:
  using StationInquiry::StationInquiry;

  void ask() override {
    int code = 0;
    for (int i = 0; i < kTimes; ++i) {
      if (i > 0) link().Delay(0);
      code = mx10().canWrite(mx10Question(mx10().mx10Nid));
    }
    setWant(code == 0 ? static_cast<qint32>(kQuestion) : 0);
  }

  StationReport evaluate() override {
    return {.lines =
                mx10Lines(mx10().mx10Serial, mx10().canRxMsg, settings().station().usesIpAddress)};
  }

 private:
  Mx10Protocol& mx10() const { return static_cast<Mx10Protocol&>(link().protocol()); }
};

}  // namespace

CanMessage mx10Question(qint16 nid) {
  return mx10::message(kQuestion, {byteLow(nid), byteSecond(nid), 0x02, 0x00});
}

QStringList mx10Lines(quint32 serialNumber, const CanMessage& answer, bool network) {
  const auto& data = answer.DATA;
  QStringList lines{QStringLiteral("MX10 Ser. Nr. %1").arg(serialNumber)};
  if (answer.LEN < kPartSize) return lines;
  lines << QStringLiteral("%1 %2")
               .arg(network ? QStringLiteral("Ethernet") : QStringLiteral("USB"))
               .arg(256 * data[5] + data[4], 4, 10, QLatin1Char('0'));
  if (answer.LEN < kVersionSize) return lines;
  lines << QStringLiteral("SW Vers. %1.%2.%3").arg(data[7]).arg(data[6]).arg(data[5]);
  return lines;
}

std::unique_ptr<StationInquiry> makeMx10Inquiry(StationLink& link, Settings& settings) {
  return std::make_unique<Mx10Inquiry>(link, settings);
}

}  // namespace lokari
