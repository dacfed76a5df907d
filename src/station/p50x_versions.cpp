#include "station/p50x_versions.h"

#include <algorithm>

#include "base/bytes.h"
#include "station/intellibox.h"
#include "station/tams.h"

namespace lokari {
namespace {

/// The entries of a list; nothing when it is cut, or more follows.
std::optional<QList<QByteArray>> entriesIn(const QByteArray& reply) {
  QList<QByteArray> entries;
  qsizetype at = 0;
  while (byteAt(reply, at) > 0) {
    const qsizetype length = byteAt(reply, at);
    entries << reply.mid(at + 1, length);
    at += 1 + length;
  }
  const bool isClosed = at == reply.size() - 1;
  return isClosed && !entries.isEmpty() ? std::optional(entries) : std::nullopt;
}

QList<qsizetype> sizesOf(const QList<QByteArray>& entries) {
  QList<qsizetype> sizes;
  for (const QByteArray& entry : entries) sizes << entry.size();
  return sizes;
}

/// High byte first, as they are read.
QString versionText(const QByteArray& entry) {
  QByteArray digits = entry;
  std::reverse(digits.begin(), digits.end());
  return QString::fromLatin1(digits.toHex(' ').toUpper());
}

QStringList linesOf(P50xModel model, const QByteArray& reply) {
  if (model == P50xModel::Intellibox) return intelliboxLines(reply);
  if (model == P50xModel::Tams) return tamsLines(reply);
  QStringList versions;
  const auto entries = entriesIn(reply).value_or(QList<QByteArray>());
  for (const QByteArray& entry : entries) versions << versionText(entry);
  return {QStringLiteral("Zentrale mit P50X-Protokoll, Versionen ") +
          versions.join(QStringLiteral(" / "))};
}

QString nameOf(P50xModel model) {
  return model == P50xModel::Tams ? QStringLiteral("eine Tams MC (TAMSMC)")
                                  : QStringLiteral("eine Intellibox (IBX)");
}

}  // namespace

P50xModel p50xModel(const QByteArray& reply) {
  const auto entries = entriesIn(reply);
  if (!entries) return P50xModel::None;
  const QList<qsizetype> sizes = sizesOf(*entries);
  if (sizes == QList<qsizetype>{2, 2, 1, 1, 1, 5}) return P50xModel::Intellibox;
  return sizes == QList<qsizetype>{3, 4} ? P50xModel::Tams : P50xModel::Other;
}

StationReport p50xReport(const QByteArray& reply, P50xModel expected) {
  const P50xModel model = p50xModel(reply);
  if (model == P50xModel::None) return {};
  StationReport report{.lines = linesOf(model, reply), .wantsMakerForm = true};
  if (model == P50xModel::Other || model == expected) return report;
  report.understood = false;
  report.lines << QStringLiteral("Hier antwortet %1. Bitte die eingestellte Zentrale ändern.")
                      .arg(nameOf(model));
  return report;
}

}  // namespace lokari
