#include "app/dec_types.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace lokari {
namespace {

class DecTypesTest : public ::testing::Test {
 protected:
  QStringList typesFrom(const QByteArray& text,
                        const QString& name = QStringLiteral("DecTypes.txt")) {
    EXPECT_TRUE(QDir(folder_.path()).mkpath(QStringLiteral("Zimo")));
    QFile file(folder_.filePath(QStringLiteral("Zimo/") + name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    return loadDecTypes(folder_.path());
  }

  static int filled(const QStringList& types) {
    return static_cast<int>(
        std::count_if(types.begin(), types.end(), [](const QString& n) { return !n.isEmpty(); }));
  }

  QTemporaryDir folder_;
};

TEST_F(DecTypesTest, TheNumberIsInTheFirstThreeCharactersAndTheNameBehindTheEqualsSign) {
  const QStringList types = typesFrom("200=MX82\r\n5 =Name\r\n  7 MX64 =MX64=H\r\n255=Last\r\n");
  EXPECT_EQ(types[200], QStringLiteral("MX82"));
  EXPECT_EQ(types[5], QStringLiteral("Name"));
  EXPECT_EQ(types[7], QStringLiteral("MX64=H"));
  EXPECT_EQ(types[255], QStringLiteral("Last"));
  EXPECT_EQ(filled(types), 4);
}

TEST_F(DecTypesTest, NumbersOutsideOneTo255FillNothing) {
  EXPECT_EQ(filled(typesFrom("000=x\n256=x\n-1=x\n999=x\nabc=x\n=x\n\n")), 0);
}

TEST_F(DecTypesTest, ALineWithoutAnEqualsSignFillsNothing) {
  EXPECT_EQ(filled(typesFrom("012 MX64\n")), 0);
}

TEST_F(DecTypesTest, OnlyThreeCharactersMakeTheNumber) {
  const QStringList types = typesFrom("1234=x\n");
  EXPECT_EQ(types[123], QStringLiteral("x"));
  EXPECT_EQ(filled(types), 1);
}

TEST_F(DecTypesTest, TheFileIsFoundInAnyCase) {
  EXPECT_EQ(typesFrom("001=MX1\n", QStringLiteral("DECTYPES.TXT"))[1], QStringLiteral("MX1"));
}

TEST_F(DecTypesTest, AMissingFileLeavesEveryNameEmpty) {
  EXPECT_EQ(filled(loadDecTypes(folder_.path())), 0);
}

TEST_F(DecTypesTest, AnUnreadableFileLeavesEveryNameEmpty) {
  ASSERT_TRUE(QDir(folder_.path()).mkpath(QStringLiteral("Zimo/DecTypes.txt")));
  EXPECT_EQ(filled(loadDecTypes(folder_.path())), 0);
}

}  // namespace
}  // namespace lokari
