// Broken Access files: a message, no half database, and nothing that brings this process down.
#include <random>

#include "access_files.h"
#include "db/database.h"

namespace lokari {
namespace {

QString str(const char* text) {
  return QString::fromUtf8(text);
}

class AccessDamage : public ::testing::Test {
 protected:
  AccessDamage() : whole_(test::AccessFiles::contents(test::AccessFiles::original(kFile))) {}

  /// Takes the data over: either all of it stands in a sound database, or a message says why not,
  /// and there is nothing. Gives whether it was taken.
  bool takeOver(const QByteArray& data) {
    QFile::remove(files_.path(str("NEU.MDB")));
    QDir(files_.path(str("NEU-Dateien"))).removeRecursively();
    files_.write(kFile, data);
    const bool taken = files_.takeOver(kFile);
    EXPECT_EQ(test::AccessFiles::contents(files_.path(kFile)), data);
    if (taken) {
      EXPECT_EQ(Database(files_.path(str("NEU.MDB"))).integrityFaults(), QStringList());
    } else {
      EXPECT_TRUE(files_.report().startsWith(str("Fehler bei Übernahme (")));
      EXPECT_TRUE(files_.report().endsWith(str("\nEs wurde nichts angelegt!")));
      EXPECT_EQ(files_.names(), QStringList{kFile});
    }
    return taken;
  }

  const QString kFile = str("jet4_current.mdb");
  const QByteArray whole_;
  test::AccessFiles files_;
};

TEST_F(AccessDamage, ATruncatedFileIsRefused) {
  for (const qsizetype size : {0, 19, 128, 4096, 5000, 40'960, 200'000, 400'000, 700'000}) {
    ASSERT_LT(size, whole_.size());
    EXPECT_FALSE(takeOver(whole_.left(size))) << size;
  }
}

TEST_F(AccessDamage, FlippedBitsAreToldOrHarmless) {
  std::mt19937 random(20040229);
  std::uniform_int_distribution<qsizetype> place(0, whole_.size() - 1);
  std::uniform_int_distribution<int> bit(0, 7);
  for (int run = 0; run < 24; ++run) {
    QByteArray data = whole_;
    for (int flip = 0; flip < 1 << (run % 12); ++flip) {
      const qsizetype at = place(random);
      data[at] = static_cast<char>(data[at] ^ (1 << bit(random)));
    }
    takeOver(data);
  }
}

TEST_F(AccessDamage, FlippedBitsInTheHeadAndTheTablesAreToldOrHarmless) {
  std::mt19937 random(17);
  // The first pages hold the list of tables, and those with this head describe one.
  QList<qsizetype> places;
  for (qsizetype page = 0; page < whole_.size(); page += 4096) {
    if (page >= 4 * 4096 && !whole_.mid(page).startsWith(QByteArray("\2\1", 2))) continue;
    for (qsizetype at = page; at < page + 1024; ++at) places << at;
  }
  std::uniform_int_distribution<qsizetype> place(0, places.size() - 1);
  std::uniform_int_distribution<int> bit(0, 7);
  int refused = 0;
  for (int run = 0; run < 40; ++run) {
    QByteArray data = whole_;
    for (int flip = 0; flip < 1 + run; ++flip) {
      const qsizetype at = places[place(random)];
      data[at] = static_cast<char>(data[at] ^ (1 << bit(random)));
    }
    if (!takeOver(data)) ++refused;
  }
  EXPECT_GT(refused, 3) << "the damage reached what matters";
}

TEST_F(AccessDamage, APageOfZerosIsToldOrHarmless) {
  for (qsizetype page = 0; page < whole_.size(); page += 11 * 4096) {
    QByteArray data = whole_;
    takeOver(data.replace(page, 4096, QByteArray(4096, '\0')).left(whole_.size()));
  }
}

}  // namespace
}  // namespace lokari
