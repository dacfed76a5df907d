// Another reader of Access files, to compare with: the tool mdb-export.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace lokari::test {

struct ExportedTable {
  QStringList columns;
  QList<QStringList> rows;  ///< bytes as hexadecimal digits; an empty value and Null are both empty
};

ExportedTable mdbExport(const QString& file, const QString& table);

}  // namespace lokari::test
