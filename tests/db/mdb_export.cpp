#include "mdb_export.h"

#include <gtest/gtest.h>

#include <QProcess>

namespace lokari::test {
namespace {

/// Cells between commas; quoted ones double their quotes and may hold line ends.
QList<QStringList> parseCsv(const QString& text) {
  QList<QStringList> rows;
  QStringList row;
  QString cell;
  bool quoted = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (quoted) {
      if (c != u'"') {
        cell += c;
      } else if (i + 1 < text.size() && text[i + 1] == u'"') {
        cell += text[++i];
      } else {
        quoted = false;
      }
    } else if (c == u'"') {
      quoted = true;
    } else if (c == u',' || c == u'\n') {
      row << cell;
      cell.clear();
      if (c == u'\n') {
        rows << row;
        row.clear();
      }
    } else {
      cell += c;
    }
  }
  return rows;
}

}  // namespace

ExportedTable mdbExport(const QString& file, const QString& table) {
  QProcess tool;
  tool.start(QStringLiteral("mdb-export"),
             {QStringLiteral("-b"), QStringLiteral("hex"), file, table}, QIODevice::ReadOnly);
  EXPECT_TRUE(tool.waitForFinished(60'000)) << qPrintable(tool.errorString());
  EXPECT_EQ(tool.exitCode(), 0);
  ExportedTable result;
  result.rows = parseCsv(QString::fromUtf8(tool.readAllStandardOutput()));
  if (!result.rows.isEmpty()) result.columns = result.rows.takeFirst();
  return result;
}

}  // namespace lokari::test
