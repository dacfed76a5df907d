// The manual says what each station is called in the dialog and in the settings file.
#include <gtest/gtest.h>

#include <QFile>

#include "station/station_choice.h"
#include "support/places.h"

namespace lokari {
namespace {

TEST(StationNames, TheManualHasThoseOfTheDialogAndOfTheFile) {
  QFile file(places::source() + QStringLiteral("/docs/handbuch/einstellungen.html"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString page = QString::fromUtf8(file.readAll());
  for (const StationKindRow& kind : kStationKinds) {
    QStringList captions;
    for (const StationChoiceRow& row : kStationChoices) {
      if (row.choice.kind == kind.kind) captions << QString::fromUtf16(row.caption);
    }
    const QString line =
        QStringLiteral("<tr><td>%1</td><td><code>%2</code></td></tr>")
            .arg(captions.join(QStringLiteral(", ")), QString::fromUtf16(kind.name));
    EXPECT_EQ(page.count(line), 1) << qPrintable(line);
  }
}

}  // namespace
}  // namespace lokari
