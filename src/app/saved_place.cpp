#include "app/saved_place.h"

#include "base/ini_file.h"
#include "base/numbers.h"
#include "base/settings.h"

namespace lokari {
namespace {

// Longest text of each key, the terminator included.
constexpr int kCollectionSize = 25;
constexpr int kAddressSize = 10;

QString section() {
  return QString::fromUtf16(kSettingsSection);
}

}  // namespace

QString savedPlaceCondition(const IniFile& ini) {
  const IniState state = ini.read();
  const QString collection =
      state.getString(section(), QStringLiteral("DBColl"), QString(), kCollectionSize);
  const QString address =
      state.getString(section(), QStringLiteral("DBAddr"), QString(), kAddressSize);
  QString condition;
  if (!collection.isEmpty()) {
    condition = QStringLiteral("DC_COLL=\"") + collection.trimmed() + u'"';
    if (!address.isEmpty()) condition += QStringLiteral(" AND DC_ADR=") + address.trimmed();
  } else if (!address.isEmpty()) {
    condition = QStringLiteral("DC_ADR=") + address.trimmed() + QStringLiteral("AND DC_COLL=\"\"");
  }
  // A condition that ends like this compares with nothing.
  return condition.endsWith(QStringLiteral("= ")) ? QString() : condition;
}

void savePlace(IniFile& ini, int position, const QString& collection, const QString& address) {
  QList<IniEntry> place{{QStringLiteral("DBPos"), printed(position + 1)},
                        {QStringLiteral("DBColl"), collection}};
  if (!address.isEmpty()) place << IniEntry{QStringLiteral("DBAddr"), address};
  // Collection and address of two different records would name a third one, or none.
  ini.writeAll(section(), place);
}

}  // namespace lokari
