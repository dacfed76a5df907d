#include "db/foreign_changes.h"

#include <QStringList>

#include <algorithm>

#include "db/column_captions.h"
#include "db/column_values.h"

namespace lokari {
namespace {

constexpr qsizetype kMostLines = 8;
constexpr qsizetype kMostCvs = 4;

QString shown(const QString& text) {
  return text.isEmpty() ? QStringLiteral("nichts") : u'"' + text + u'"';
}

/// The CVs in which two arrays differ, by their internal index.
QString changedCvs(const QByteArray& there, const QByteArray& here) {
  QStringList parts;
  qsizetype count = 0;
  for (qsizetype i = 0; i < std::max(there.size(), here.size()); ++i) {
    const int other = i < there.size() ? static_cast<quint8>(there[i]) : 0;
    const int own = i < here.size() ? static_cast<quint8>(here[i]) : 0;
    if (other == own) continue;
    if (++count <= kMostCvs) {
      parts << QStringLiteral("CV %1 dort %2, hier %3").arg(i + 1).arg(other).arg(own);
    }
  }
  if (count > kMostCvs) parts << QStringLiteral("%1 weitere").arg(count - kMostCvs);
  return parts.isEmpty() ? QStringLiteral("dort anders abgelegt")
                         : parts.join(QStringLiteral("; "));
}

}  // namespace

QString foreignChanges(const RecordSet& records, const RowValues& stored) {
  QStringList lines;
  for (const ColumnInfo& info : records.table().columns) {
    const auto there = stored.constFind(info.name);
    if (there == stored.constEnd()) continue;
    const QVariant here = records.value(info.name);
    QString what;
    if (info.type != ColumnType::Binary) {
      what = QStringLiteral("dort %1, hier %2")
                 .arg(shown(shownValue(info, *there)), shown(shownValue(info, here)));
    } else if (info.name == QStringLiteral("MD_PIC")) {
      what = QStringLiteral("dort ein anderes");
    } else {
      what = changedCvs(there->toByteArray(), here.toByteArray());
    }
    lines << QStringLiteral("%1: %2").arg(captionOf(info.name), what);
  }
  if (lines.size() > kMostLines) {
    const qsizetype more = lines.size() - kMostLines;
    lines = lines.mid(0, kMostLines);
    lines << QStringLiteral("und %1 weitere").arg(more);
  }
  return lines.join(u'\n');
}

}  // namespace lokari
