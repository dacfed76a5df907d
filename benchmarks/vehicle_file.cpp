#include "benchmarks/vehicle_file.h"

#include <QFile>
#include <QTemporaryDir>

#include <sqlite3.h>
#include <stdexcept>

#include "support/places.h"

namespace lokari::benchmarks {
namespace {

// In the file the addresses stand in another order than in the form, as they do in life. The
// arrays hold no zeros only, lest a medium compress them. The file is on disk when it is done: a
// store that is measured must not wait for a gigabyte of others.
constexpr char kFill[] = R"(
  PRAGMA journal_mode = OFF;
  BEGIN;
  WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < %1 - 1)
  INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_TYPE, DC_MANUF, DC_DECODER, DC_DEC_VER, ST_SNAME,
      ST_GROUP, FZ_LNAME, FZ_FTYPE, FZ_CODE, FZ_MAXSPEED, FZ_LINE, FZ_ERA, MD_MANUF, MD_SCALE,
      MD_PRICE, MD_INFO, DC_CV_NAME, DC_CV_NAME_1, DC_CV_NAME_2, DC_CV_NAME_3, DC_CV_NAME_4,
      DC_CV, DC_CV_ST, DC_CV_1, DC_CV_1_ST, DC_CV_2, DC_CV_2_ST, DC_CV_3, DC_CV_3_ST, DC_CV_4,
      DC_CV_4_ST)
    SELECT i / 10 * 7919 % (%1 / 10) + 1, 'Sammlung ' || (i % 10), 1, 145, 'ZX100', 'Set 1',
      'L' || (i % 10000), i % 100, 'Schnellzuglokomotive ' || i, 'Dampflok', 'BR ' || (i % 99),
      100, 'Bundesbahn', 'III', 'Spurwerk', '1:87', 199.9, 'Vitrine ' || (i % 50),
      'Set 1', 'Set 2', 'Set 3', 'Set 4', 'Set 5',
      randomblob(4865), zeroblob(4865), randomblob(4865), zeroblob(4865), randomblob(4865),
      zeroblob(4865), randomblob(4865), zeroblob(4865), randomblob(4865), zeroblob(4865)
    FROM n;
  COMMIT;
  PRAGMA journal_mode = DELETE;
)";

void fill(const QString& path, int vehicles) {
  sqlite3* file = nullptr;
  const QByteArray statements = QString::fromUtf8(kFill).arg(vehicles).toUtf8();
  const bool done =
      sqlite3_open(path.toUtf8().constData(), &file) == SQLITE_OK &&
      sqlite3_exec(file, statements.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
  const std::string fault = sqlite3_errmsg(file);
  sqlite3_close(file);
  if (!done) throw std::runtime_error("no database to measure with: " + fault);
}

}  // namespace

QString vehicleFile(int vehicles) {
  static const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("%1.MDB").arg(vehicles));
  if (QFile::exists(path)) return path;
  if (!QFile::copy(places::emptyDatabase(), path)) {
    throw std::runtime_error("no template to make a database of");
  }
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
  fill(path, vehicles);
  return path;
}

}  // namespace lokari::benchmarks
