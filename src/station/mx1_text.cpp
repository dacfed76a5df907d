#include "station/mx1_text.h"

#include "base/numbers.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "station/flag_lines.h"

namespace lokari {
namespace {

constexpr int kReplyLength = 4;
constexpr int kNewGeneration = 0x80;

constexpr std::array kFormats{
    FlagLine{0x40, u"Zimo Datenformat aktiv"},
    FlagLine{0x20, u"DCC Datenformat aktiv"},
    FlagLine{0x10, u"Motorola Datenformat aktiv"},
};

class Mx1TextInquiry final : public StationInquiry {
 public:
  using StationInquiry::StationInquiry;

  void ask() override {
    link().serial().write("Z\r");
    setWant(kReplyLength);
  }

  StationReport evaluate() override { return mx1TextReport(link().serial().read()); }
};

}  // namespace

StationReport mx1TextReport(const QByteArray& reply) {
  const QByteArray digits = reply.mid(1, 2);
  const std::optional<quint32> number = parseHex(QString::fromLatin1(digits));
  if (digits.size() < 2 || !number) {
    return {.lines = {QStringLiteral("Unbekannte Antwort!")}, .understood = false};
  }
  const int state = static_cast<int>(*number);
  StationReport report;
  report.lines << (state >= kNewGeneration ? QStringLiteral("MX1 neue Generation")
                                           : QStringLiteral("MX1 alte Generation"));
  report.lines << flagLines(state, kFormats) << flagLines(state, kTrackFlags);
  return report;
}

std::unique_ptr<StationInquiry> makeMx1TextInquiry(StationLink& link, Settings& settings) {
  return std::make_unique<Mx1TextInquiry>(link, settings);
}

}  // namespace lokari
