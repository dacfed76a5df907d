#include "cab/zimo_binary_exchange.h"

#include "cab/zimo_binary_codec.h"
#include "link/link_error.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/zimo_binary.h"

namespace lokari {
namespace {

constexpr int kMostBusyAnswers = 5;
constexpr int kMostExchanges = 20;
constexpr int kBusyPauseMs = 100;
constexpr int kFailurePauseMs = 500;

void checkOpen(StationLink& link) {
  if (!link.serial().isOpen()) {
    throw LinkError(QStringLiteral("Die Schnittstelle zur Zentrale ist nicht mehr da!"));
  }
}

}  // namespace

ZimoBinaryFraming* zimoFraming(StationLink& link) {
  auto* const protocol = dynamic_cast<ZimoBinaryProtocol*>(&link.protocol());
  return protocol == nullptr ? nullptr : &protocol->framing();
}

void withZimoFraming(StationLink& link, const std::function<void(ZimoBinaryFraming&)>& talk) {
  ZimoBinaryFraming* const framing = zimoFraming(link);
  if (framing == nullptr) return;
  checkOpen(link);
  talk(*framing);
  // The framing ends its rounds on a port that is lost, without a word.
  checkOpen(link);
}

std::optional<QByteArray> askZimoBinary(StationLink& link, ZimoBinaryFraming& framing,
                                        const QByteArray& question, int least) {
  int busyAnswers = 0;
  for (int exchanges = 0; exchanges < kMostExchanges; ++exchanges) {
    framing.zbinSettle();
    if (link.cancelRequested || !link.serial().isOpen()) return {};
    // What waits is no answer to it.
    link.protocol().dropInput();
    framing.zbinSend(question, false);
    const QByteArray answer = framing.zbinReceive();
    if (framing.zbinSilent) return {};
    switch (zbincab::judge(question, answer, least)) {
      case zbincab::Verdict::Good:
        return answer;
      case zbincab::Verdict::Busy:
        link.DelayMsec(kBusyPauseMs);
        if (++busyAnswers == kMostBusyAnswers) return {};
        break;
      case zbincab::Verdict::Other:
        link.DelayMsec(kFailurePauseMs);
        if (link.serial().isOpen()) link.protocol().dropInput();
        break;
    }
  }
  return {};
}

}  // namespace lokari
