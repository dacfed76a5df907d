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
  /// Codes of an Intellibox, behind the number.
  static const QHash<int, QString> kMeanings{
      {-0xF4, QStringLiteral(": die Zentrale hat abgebrochen")},
      {-0xFA, QStringLiteral(": bitweise nicht lesbar")},
      {-0xFB, QStringLiteral(": die Zentrale meldet einen Fehler")},
  };
  const auto known = kTexts.find(code);
  if (known != kTexts.end()) return *known;
  return QStringLiteral("Lesefehler ") + printed(-code) + kMeanings.value(code);
}

}  // namespace lokari
