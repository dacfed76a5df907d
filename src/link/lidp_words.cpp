// The lines of the Lenz decoder programmer in words. A CV counts from 0 on the wire.
#include "base/numbers.h"
#include "link/family_words.h"
#include "link/message_words.h"

namespace lokari {
namespace {

/// The number of the hexadecimal digits, or "?".
QString numberOf(const QByteArray& digits, int plus = 0) {
  const auto number = parseHex(QString::fromLatin1(digits));
  return number ? QString::number(*number + static_cast<quint32>(plus)) : QStringLiteral("?");
}

QString sent(const QByteArray& message) {
  const QByteArray line = message.trimmed();
  const QString cv = numberOf(line.mid(2, 4), 1);
  QString words = quoted(line);
  if (line.startsWith("0B")) words += QStringLiteral(" liest CV ") + cv;
  if (line.startsWith("0A")) {
    words += QStringLiteral(" schreibt CV %1 = %2").arg(cv, numberOf(line.mid(6)));
  }
  if (line == "01") words += QStringLiteral(" Gleisausgang aus");
  return words;
}

QString received(const QByteArray& message, const QByteArray& asked) {
  const QByteArray line = message.trimmed();
  QString words = quoted(line);
  if (line.startsWith("OK")) return words + QStringLiteral(" erledigt");
  if (line.mid(2, 2) == "OK") {
    return words + (asked.startsWith("0B") ? QStringLiteral(" Ergebnis: ") + numberOf(line.left(2))
                                           : QStringLiteral(" erledigt"));
  }
  if (line.startsWith("X1")) return words + QStringLiteral(" falscher Befehl");
  if (line.startsWith("X2")) return words + QStringLiteral(" kein ACK vom Decoder");
  if (line.startsWith("X3")) return words + QStringLiteral(" Überstrom");
  return words;
}

qsizetype whole(const QByteArray& received, const QByteArray&) {
  return lineLength(received);
}

}  // namespace

const FamilyWords& lidpWords() {
  static constexpr FamilyWords kWords{nullptr, whole, sent, received};
  return kWords;
}

}  // namespace lokari
