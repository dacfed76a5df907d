#include <QFile>

#include "simulator_process.h"
#include "support/places.h"

namespace lokari {
namespace {

TEST(ImportAccess, TheCommandLineFindsItsReaderAndTakesAFileOver) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("CLUB.MDB"));
  ASSERT_TRUE(QFile::copy(places::emptyDatabase(), folder.filePath(QStringLiteral("EMPTY.MDB"))));
  ASSERT_TRUE(QFile::copy(places::accessFile(QStringLiteral("jet4_current.mdb")), file));
  const test::ProgramRun run =
      test::runProgram(QStringLiteral("lokari-cli"), {"import", "access", file}, folder.path());
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.output,
            "Übernahme erfolgreich abgeschlossen,\n45 Fahrzeuge und 26 Listeneinträge übernommen!\n"
            "Neue Datenbank: CLUB_Lokari.MDB\n");
  EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("CLUB_Lokari.MDB"))));
}

}  // namespace
}  // namespace lokari
