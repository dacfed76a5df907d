#include "station/lidp.h"

#include "link/lidp_codec.h"
#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

class LidpInquiry final : public StationInquiry {
 public:
  using StationInquiry::StationInquiry;

  void ask() override {
    link().serial().write("01\r");
    setWant(lidp::kReplyLength);
  }

  StationReport evaluate() override {
    return lidpReport(lidp::withoutLateEnd(link().serial().read()));
  }
};

}  // namespace

StationReport lidpReport(const QByteArray& reply) {
  StationReport report{.lines = {QStringLiteral("Lenz Decoderprogrammer")}};
  if (reply.startsWith("OK")) {
    report.lines << QStringLiteral("Status OK, Gleisausgang aus");
  } else if (reply.startsWith("X3")) {
    report.lines << QStringLiteral("Überstrom!");
  } else {
    report.lines << QStringLiteral("Unbekannte Antwort!");
    report.understood = false;
  }
  return report;
}

std::unique_ptr<StationInquiry> makeLidpInquiry(StationLink& link, Settings& settings) {
  return std::make_unique<LidpInquiry>(link, settings);
}

}  // namespace lokari
