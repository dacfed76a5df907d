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

QString onlyThere(const QString& caption, const QString& what) {
  return QStringLiteral("%1: nur dort geändert (%2)").arg(caption, what);
}

/// The CVs in which two arrays differ, by their internal index.
QString changedCvs(const QByteArray& there, const QByteArray& here, bool isChanged) {
  QStringList parts;
  qsizetype count = 0;
  for (qsizetype i = 0; i < std::max(there.size(), here.size()); ++i) {
    const int other = i < there.size() ? static_cast<quint8>(there[i]) : 0;
    const int own = i < here.size() ? static_cast<quint8>(here[i]) : 0;
    if (other == own || ++count > kMostCvs) continue;
    parts << (isChanged ? QStringLiteral("CV %1 dort %2, hier %3").arg(i + 1).arg(other).arg(own)
                        : QStringLiteral("CV %1 jetzt %2").arg(i + 1).arg(other));
  }
  if (count > kMostCvs) parts << QStringLiteral("%1 weitere").arg(count - kMostCvs);
  return parts.isEmpty() ? QStringLiteral("dort anders abgelegt")
                         : parts.join(QStringLiteral("; "));
}

QString lineOf(const RecordSet& records, const ColumnInfo& info, const QVariant& there) {
  const QString caption = captionOf(info.name);
  const QVariant here = records.value(info.name);
  const bool isChanged = records.isChanged(info.name);
  if (info.type != ColumnType::Binary) {
    return foreignLine(caption, shownValue(info, there),
                       isChanged ? std::optional(shownValue(info, here)) : std::nullopt);
  }
  QString what = QStringLiteral("ein anderes");
  if (info.name != QStringLiteral("MD_PIC")) {
    what = changedCvs(there.toByteArray(), here.toByteArray(), isChanged);
  } else if (isChanged) {
    what = QStringLiteral("dort ein anderes");
  }
  return isChanged ? QStringLiteral("%1: %2").arg(caption, what) : onlyThere(caption, what);
}

}  // namespace

QString foreignLine(const QString& caption, const QString& there,
                    const std::optional<QString>& here) {
  if (!here) return onlyThere(caption, QStringLiteral("jetzt ") + shown(there));
  return QStringLiteral("%1: dort %2, hier %3").arg(caption, shown(there), shown(*here));
}

QString foreignChanges(const RecordSet& records, const RowValues& stored) {
  QStringList lines;
  for (const ColumnInfo& info : records.table().columns) {
    const auto there = stored.constFind(info.name);
    if (there != stored.constEnd()) lines << lineOf(records, info, *there);
  }
  if (lines.size() > kMostLines) {
    const qsizetype more = lines.size() - kMostLines;
    lines = lines.mid(0, kMostLines);
    lines << QStringLiteral("und %1 weitere").arg(more);
  }
  return lines.join(u'\n');
}

}  // namespace lokari
