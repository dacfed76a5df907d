// vehicle read and vehicle write, on a database and description files of their own.
#pragma once

#include "cli_fixture.h"
#include "db/cv_record.h"
#include "db/database.h"
#include "db/record_set.h"
#include "support/places.h"

namespace lokari {

class VehicleFixture : public CliFixture {
 protected:
  explicit VehicleFixture(const char16_t* kind = u"TAMSMC") : CliFixture(kind) {
    QDir().mkpath(folder.filePath(QStringLiteral("DB")));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), dbPath()));
    QFile::setPermissions(dbPath(), QFile::ReadOwner | QFile::WriteOwner);
    describe("Default.dec", "[Default]\nCV_3=Zeit\n");
    describe("Adlerton/AT-ECO.dec",
             "[AT-ECO]\nMAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=0\n"
             "CV_3=Zeit\nCV_5=Hoch\nCV_49=Regler,0-3,0,4\nCV_52=nur Liste\n"
             "CV_257_2=Motor,0-255,0,6\n");
    addVehicle("Anlage", 3, 1);
    decoder().store(3, 33);
    decoder().store(5, 55);
    decoder().store(49, 2);
    decoder().banks = {{{16, 0}, {{257, 77}}}};
  }

  QString dbPath() const { return folder.filePath(QStringLiteral("DB/LOKARIV3.MDB")); }
  sim::Decoder& decoder() { return *layout.onProgrammingTrack(); }

  void describe(const char* file, const char* text) {
    const QString path = folder.filePath(QString::fromUtf8(file));
    QDir().mkpath(QFileInfo(path).path());
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(text);
  }

  void addVehicle(const char* collection, int address, int type) {
    Database database(dbPath());
    RecordSet records;
    records.open(database, QStringLiteral("SELECT * FROM LOCO_DAT"));
    records.AddNew();
    records.setValue(QStringLiteral("DC_COLL"), QString::fromUtf8(collection));
    records.setValue(QStringLiteral("DC_ADR"), address);
    records.setValue(QStringLiteral("DC_TYPE"), type);
    records.setValue(QStringLiteral("ST_SNAME"), QStringLiteral("Lok"));
    records.setValue(QStringLiteral("DC_MANUF"), 97);
    records.setValue(QStringLiteral("DC_DECODER"), QStringLiteral("AT-ECO"));
    records.Update();
  }

  CvRecord stored(int address = 3) {
    Database database(dbPath());
    RecordSet records;
    records.open(database, QStringLiteral("SELECT * FROM LOCO_DAT WHERE DC_ADR = %1").arg(address));
    EXPECT_EQ(records.count(), 1);
    CvRecord record;
    loadCvRecord(records, record);
    return record;
  }

  void store(int cv, int value) {
    Database database(dbPath());
    RecordSet records;
    records.open(database, QStringLiteral("SELECT * FROM LOCO_DAT"));
    CvRecord record;
    loadCvRecord(records, record);
    record.recCvValues[0][cv - 1] = static_cast<char>(value);
    records.Edit();
    assignCvRecord(records, record);
    records.Update();
  }
};

}  // namespace lokari
