#include "link/cv_result.h"

#include <QHash>

#include "base/numbers.h"

namespace lokari {

QString cvResultText(int code) {
  static const QHash<int, QString> kTexts{
      {cv_result::kNoReply, QStringLiteral("Keine Antwort vom Basisgerät")},
      {cv_result::kCancelled, QString()},
      {cv_result::kWrongReply, QStringLiteral("Falsche Antwort vom Basisgerät")},
      {cv_result::kShortCircuit, QStringLiteral("Kurzschluß am Programmiergleis")},
      {cv_result::kNoDecoder, QStringLiteral("Kein Decoder am Programmiergleis")},
      {cv_result::kNotReady, QStringLiteral("Zentrale nicht bereit")},
      {cv_result::kNoAck, QStringLiteral("Kein ACK vom Decoder")},
  };
  const auto known = kTexts.find(code);
  return known != kTexts.end() ? *known : QStringLiteral("Lesefehler ") + printed(-code);
}

}  // namespace lokari
