#include "db/take_over_report.h"

#include <algorithm>

#include "base/paths.h"

namespace lokari {
namespace {

QString counted(int number, const QString& one, const QString& many) {
  return QStringLiteral("%1 %2").arg(number).arg(number == 1 ? one : many);
}

QString bullet(const QString& remark) {
  return QStringLiteral("• ") + remark;
}

}  // namespace

QString reportFileName() {
  return QStringLiteral("Bericht.txt");
}

QStringList TakeOverReport::numbers() const {
  const QString taken =
      QStringLiteral("%1 und %2 übernommen")
          .arg(counted(vehicles, QStringLiteral("Fahrzeug"), QStringLiteral("Fahrzeuge")),
               counted(entries, QStringLiteral("Listeneintrag"), QStringLiteral("Listeneinträge")));
  const QString name = QStringLiteral("Neue Datenbank: ") + fileNameOf(target);
  if (skipped.isEmpty()) {
    return {QStringLiteral("Übernahme erfolgreich abgeschlossen,"), taken + u'!', name};
  }
  return {QStringLiteral("Übernahme abgeschlossen,"), taken + u',',
          counted(static_cast<int>(skipped.size()), QStringLiteral("Datensatz"),
                  QStringLiteral("Datensätze")) +
              QStringLiteral(" nicht übernommen!"),
          name};
}

QString TakeOverReport::closingText() const {
  QStringList lines = numbers();
  const QStringList all = remarks();
  if (!all.isEmpty()) lines << QString();
  for (const QString& remark : all.mid(0, kShownRemarks)) lines << bullet(remark);
  if (all.size() > kShownRemarks) {
    lines << QStringLiteral("… und ") + counted(static_cast<int>(all.size()) - kShownRemarks,
                                                QStringLiteral("weiterer Hinweis"),
                                                QStringLiteral("weitere Hinweise"));
  }
  if (!kept.isEmpty()) {
    lines << QStringLiteral("Alle Hinweise: %1/%2").arg(fileNameOf(kept), reportFileName());
  }
  return lines.join(u'\n');
}

QString TakeOverReport::fullText() const {
  QStringList lines = numbers();
  lines << QString();
  const QStringList all = remarks();
  std::transform(all.begin(), all.end(), std::back_inserter(lines), bullet);
  return lines.join(u'\n') + u'\n';
}

}  // namespace lokari
