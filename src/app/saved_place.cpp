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
  const QString collection =
      ini.getString(section(), QStringLiteral("DBColl"), QString(), kCollectionSize);
  const QString address =
      ini.getString(section(), QStringLiteral("DBAddr"), QString(), kAddressSize);
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
  ini.writeString(section(), QStringLiteral("DBPos"), printed(position + 1));
  ini.writeString(section(), QStringLiteral("DBColl"), collection);
  if (!address.isEmpty()) ini.writeString(section(), QStringLiteral("DBAddr"), address);
}

}  // namespace lokari
