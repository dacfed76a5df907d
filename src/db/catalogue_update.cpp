#include "db/catalogue_update.h"

#include <QSqlQuery>

#include "db/database.h"
#include "db/record_set.h"

namespace lokari {
namespace {

void takeMaker(RecordSet& makers, int number, const QVariant& name) {
  makers.FindFirst(QStringLiteral("DC_MANUF=%1").arg(number));
  if (!makers.NoMatch()) {
    // Number 0 stands for no maker in particular; its name is the program's, not the user's.
    if (number != 0) return;
    makers.Delete();
  }
  makers.AddNew();
  makers.setValue(QStringLiteral("DC_MANUF"), number);
  makers.setValue(QStringLiteral("DC_MANUF_TEXT"), name);
  makers.Update();
}

}  // namespace

void addType(RecordSet& types, int maker, const QString& name) {
  const QString quoted = QString(name).replace(u'\'', QStringLiteral("''"));
  types.FindFirst(QStringLiteral("DC_MANUF=%1 AND DC_DECODER='%2'").arg(maker).arg(quoted));
  if (!types.NoMatch()) return;
  types.AddNew();
  types.setValue(QStringLiteral("DC_MANUF"), maker);
  types.setValue(QStringLiteral("DC_DECODER"), name);
  types.Update();
}

void updateCatalogue(const Database& source, Database& target) {
  target.transaction([&] {
    RecordSet makers;
    makers.open(target, QStringLiteral("SELECT * FROM DCMANUFS"));
    makers.joinTransaction();
    source.read(
        QStringLiteral("SELECT DC_MANUF, DC_MANUF_TEXT FROM DCMANUFS"), {},
        [&makers](const QSqlQuery& row) { takeMaker(makers, row.value(0).toInt(), row.value(1)); });
    RecordSet types;
    types.open(target, QStringLiteral("SELECT * FROM DECODERS"));
    types.joinTransaction();
    source.read(QStringLiteral("SELECT DC_MANUF, DC_DECODER FROM DECODERS"), {},
                [&types](const QSqlQuery& row) {
                  addType(types, row.value(0).toInt(), row.value(1).toString());
                });
  });
}

}  // namespace lokari
