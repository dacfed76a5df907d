#include "app/manual_messages.h"

#include <QRegularExpression>

#include "app/manual_text.h"

namespace lokari {

QStringList quotedMessages(const QString& html) {
  static const QRegularExpression cell(QStringLiteral("<tr[^>]*><td>(.*?)</td>"),
                                       QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression lineEnd(QStringLiteral("<br>"));
  QStringList result;
  auto each = cell.globalMatch(html);
  while (each.hasNext()) {
    for (const QString& line : each.next().captured(1).split(lineEnd)) {
      result << plainText(line);
    }
  }
  return result;
}

bool isQuoted(const QString& quoted, const QString& shown) {
  QString pattern = QStringLiteral("^");
  QString between;
  for (const QString& part : quoted.split(QStringLiteral("..."))) {
    // Where one part ends and the next begins a blank may be part of what differs.
    pattern += between + QRegularExpression::escape(part.trimmed());
    between = QStringLiteral(".*");
  }
  return QRegularExpression(pattern).match(shown.simplified()).hasMatch();
}

QString quotedAs(const QStringList& quoted, const QString& shown) {
  QString best;
  for (const QString& each : quoted) {
    if (each.size() > best.size() && isQuoted(each, shown)) best = each;
  }
  return best;
}

}  // namespace lokari
