#include "db/access_database.h"

#include "access_files.h"

namespace lokari {
namespace {

class AccessDatabaseTest : public ::testing::Test {
 protected:
  static QString str(const char* text) { return QString::fromUtf8(text); }

  static AccessDatabase open(const char* name) {
    return AccessDatabase(test::AccessFiles::reader(), test::AccessFiles::original(str(name)));
  }

  /// A column of all vehicles of a file of the folder.
  QVariantList valuesOf(const char* file, const char* column) {
    AccessDatabase database(test::AccessFiles::reader(), files_.path(str(file)));
    const std::unique_ptr<ForeignTable> table = database.table(str("LOCO_DAT"));
    const qsizetype at = table->columns().indexOf(str(column));
    QVariantList values;
    for (QVariantList row; table->next(row);) values << row[at];
    return values;
  }

  /// A program in place of the reader, which prints this and then does `end`.
  AccessReader pretend(const QByteArray& output, const char* end = "exit 0") {
    files_.write(str("stream"), output);
    const QString program = files_.path(str("reader.sh"));
    files_.write(str("reader.sh"),
                 "#!/bin/sh\ncat " + files_.path(str("stream")).toUtf8() + "\n" + end + "\n");
    EXPECT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner |
                                                   QFile::ReadUser | QFile::ExeUser |
                                                   QFile::WriteOwner));
    return {program, 20'000};
  }

  static int codeOf(const std::function<void()>& work) {
    try {
      work();
    } catch (const StorageError& error) {
      return error.code();
    }
    return 0;
  }

  /// What reading all of LOCO_DAT from that reader fails with.
  int tableFault(const AccessReader& reader) {
    const QString file = files_.copy(str("jet4_v2.mdb"));
    AccessDatabase database(test::AccessFiles::reader(), file);
    return codeOf([&] {
      // The listing came from the real reader, the rows come from the other one.
      AccessReading reading(reader, file, str("table"), {str("LOCO_DAT")});
      while (reading.record() == AccessRecord::Column) reading.text();
      reading.count();
      while (reading.record() == AccessRecord::Row) reading.value();
    });
  }

  test::AccessFiles files_;
};

TEST_F(AccessDatabaseTest, NamesTheTablesWithoutThoseOfAccessItself) {
  EXPECT_EQ(open("jet4_current.mdb").tables(),
            QStringList({"DCMANUFS", "DECODERS", "MANUFS", "MOTORS", "ERAS", "LINES", "FTYPES",
                         "LOCO_DAT"}));
}

TEST_F(AccessDatabaseTest, ATableIsFoundInAnyCaseAndAMissingOneIsNone) {
  AccessDatabase database = open("jet4_current.mdb");
  EXPECT_NE(database.table(str("dcManufs")), nullptr);
  EXPECT_EQ(database.table(str("NOSUCH")), nullptr);
}

TEST_F(AccessDatabaseTest, ReadsRowsInTheirOrderWithNullTextAndNumbers) {
  AccessDatabase database = open("jet4_current.mdb");
  const std::unique_ptr<ForeignTable> table = database.table(str("DCMANUFS"));
  EXPECT_EQ(table->columns(), QStringList({"DC_MANUF_SEQ", "DC_MANUF", "DC_MANUF_TEXT"}));
  EXPECT_EQ(table->rowCount(), 5);
  QList<QVariantList> rows;
  for (QVariantList row; table->next(row);) rows << row;
  EXPECT_EQ(rows, QList<QVariantList>({{QVariant(), 0, "unbek."},
                                       {1, 145, "Zimo"},
                                       {2, 99, "Lenz"},
                                       {QVariant(), 97, str("Döhler")},
                                       {QVariant(), 151, "ESU"}}));
  QVariantList row;
  EXPECT_FALSE(table->next(row)) << "the end stays the end";
}

TEST_F(AccessDatabaseTest, ReadsBytesAmountsAndLineEndsAsTheyStand) {
  AccessDatabase database = open("jet4_current.mdb");
  const std::unique_ptr<ForeignTable> table = database.table(str("LOCO_DAT"));
  QVariantList row;
  ASSERT_TRUE(table->next(row));
  const auto value = [&](const char* column) { return row[table->columns().indexOf(column)]; };
  const QByteArray cvs = value("DC_CV").toByteArray();
  ASSERT_EQ(cvs.size(), 4865);
  for (int i = 0; i < cvs.size(); ++i) ASSERT_EQ(quint8(cvs[i]), (7 * i + 1) % 256) << i;
  EXPECT_EQ(value("DC_CV_NAME_1"), QVariant("Winter"));
  EXPECT_EQ(value("MD_PRICE"), QVariant(149.9));
  EXPECT_EQ(value("MD_PIC").toByteArray().size(), 70);
  EXPECT_TRUE(value("MD_INFO").toString().contains(str("Öl geprüft")));
  EXPECT_TRUE(value("MD_INFO").toString().contains(str("\r\n")));
}

TEST_F(AccessDatabaseTest, TellsAnEmptyTextFromNull) {
  AccessDatabase database = open("jet4_current.mdb");
  const std::unique_ptr<ForeignTable> table = database.table(str("LOCO_DAT"));
  const qsizetype address = table->columns().indexOf("DC_ADR");
  const qsizetype collection = table->columns().indexOf("DC_COLL");
  int checked = 0;
  for (QVariantList row; table->next(row);) {
    if (row[address] == 17) {
      EXPECT_TRUE(row[collection].isValid());
      EXPECT_EQ(row[collection].toString(), QString());
      ++checked;
    }
    if (row[address] == 18) {
      EXPECT_FALSE(row[collection].isValid());
      ++checked;
    }
  }
  EXPECT_EQ(checked, 2);
}

TEST_F(AccessDatabaseTest, ReadsEveryWayInWhichTextIsStored) {
  // The short name of the vehicle 18, eight bytes.
  const QByteArray stored("P\0r\0\xFC\0f\0", 8);
  const struct {
    QByteArray bytes;
    QString text;
  } ways[]{
      {stored, str("Prüf")},
      {QByteArray("\xFF\xFEPr\xFC"
                  "fAB",
                  8),
       str("PrüfAB")},  // one byte each
      {QByteArray("\x3D\xD8\x82\xDE"
                  "A\0\xAC\x20",
                  8),
       str("🚂A€")},  // one that takes four
      {QByteArray("\xFF\xFE"
                  "A\0\x3D\xD8\x82\xDE",
                  8),
       str("A🚂")},  // both in one text
  };
  for (const auto& way : ways) {
    QByteArray data =
        test::AccessFiles::contents(test::AccessFiles::original(str("jet4_current.mdb")));
    ASSERT_EQ(data.count(stored), 1);
    files_.write(str("x.mdb"), data.replace(stored, way.bytes));
    EXPECT_TRUE(valuesOf("x.mdb", "ST_SNAME").contains(way.text)) << way.bytes.toHex().data();
  }
}

TEST_F(AccessDatabaseTest, ReadsAmountsToTheirLastPlace) {
  const QByteArray price("\x78\xDF\x16\0\0\0\0\0", 8);  // 149.9000
  const struct {
    QByteArray bytes;
    double amount;
  } amounts[]{{price, 149.9},
              {QByteArray(8, '\xFF'), -0.0001},
              {QByteArray("\x15\xCD\x5B\x07\0\0\0\0", 8), 12345.6789}};
  for (const auto& each : amounts) {
    QByteArray data =
        test::AccessFiles::contents(test::AccessFiles::original(str("jet4_current.mdb")));
    files_.write(str("x.mdb"), data.replace(price, each.bytes));
    EXPECT_EQ(valuesOf("x.mdb", "MD_PRICE").first(), QVariant(each.amount));
  }
}

TEST_F(AccessDatabaseTest, AFileIsRecognisedByItsHeadAndNotByItsName) {
  files_.copy(str("jet4_v2.mdb"));
  ASSERT_TRUE(QFile::rename(files_.path(str("jet4_v2.mdb")), files_.path(str("brief.txt"))));
  EXPECT_TRUE(isAccessFile(files_.path(str("brief.txt"))));
  EXPECT_FALSE(isAccessFile(files_.path(str("EMPTY.MDB"))));
  EXPECT_FALSE(isAccessFile(files_.path(str("nosuch.mdb"))));
}

TEST_F(AccessDatabaseTest, AFileThatOnlyBeginsLikeOneIsDamaged) {
  files_.write(str("x.mdb"), QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(9000, 'x'));
  EXPECT_EQ(
      codeOf([this] { AccessDatabase(test::AccessFiles::reader(), files_.path(str("x.mdb"))); }),
      storage_error::kDamaged);
}

TEST_F(AccessDatabaseTest, WithoutItsReaderItSaysSo) {
  const QString file = files_.copy(str("jet4_v2.mdb"));
  EXPECT_EQ(codeOf([&] { AccessDatabase({files_.path(str("nosuch"))}, file); }),
            storage_error::kMediumFailed);
}

TEST_F(AccessDatabaseTest, AReaderThatDoesNotComeUpIsNotTheFilesFault) {
  EXPECT_EQ(tableFault(pretend("", "exit 127")), storage_error::kMediumFailed);  // lacks a library
  EXPECT_EQ(tableFault(pretend("LKAR2")), storage_error::kMediumFailed);  // of another version
}

TEST_F(AccessDatabaseTest, AReaderThatDiesIsDamage) {
  EXPECT_EQ(tableFault(pretend(QByteArray("LKAR1C\2\0\0\0AB", 12), "kill -SEGV $$")),
            storage_error::kDamaged);
  EXPECT_EQ(tableFault(pretend("LKAR1")), storage_error::kDamaged);
}

TEST_F(AccessDatabaseTest, AReaderThatHangsIsEndedAndIsDamage) {
  AccessReader reader = pretend(QByteArray("LKAR1C\2\0\0\0AB", 12), "exec sleep 100");
  reader.silenceMs = 50;
  EXPECT_EQ(tableFault(reader), storage_error::kDamaged);
}

TEST_F(AccessDatabaseTest, AStreamThatCannotBeIsDamage) {
  const QByteArray head("LKAR1");
  const QByteArray oneRow("N\1\0\0\0R", 6);
  const QList<QByteArray> streams{
      head + QByteArray("C\xFF\xFF\xFF\xFF", 5) + "A",     // a name of 4 GB
      head + QByteArray("N\xFF\xFF\xFF\x7F", 5),           // more rows than bytes
      head + oneRow + "?",                                 // a value of no kind
      head + oneRow + QByteArray("b\0\0\0\x40", 5) + "A",  // bytes that no file could hold
      head + oneRow + QByteArray("i\1\0", 3),              // half a number
      head + oneRow + QByteArray("s\5\0\0\0AB", 7),        // half a text
      head + "F\3",                                        // the reader's own word
  };
  for (const QByteArray& stream : streams) {
    EXPECT_EQ(tableFault(pretend(stream)), storage_error::kDamaged) << stream.toHex().data();
  }
}

}  // namespace
}  // namespace lokari
