#include "station/firmware_file.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "base/settings.h"
#include "support/scripted_prompt.h"

namespace lokari {
namespace {

constexpr char kOneByte[] = ":0100000001FE\r\n:00000001FF\r\n";

class FirmwareFileTest : public ::testing::Test {
 protected:
  QString path(const QString& name) const { return folder.filePath(name); }

  QString write(const QString& name, const QByteArray& text) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return path(name);
  }

  std::optional<Firmware> confirmed(const QString& name) {
    return confirmedFirmware(name, prompt, [this](bool on) { busy << on; });
  }
  std::optional<Firmware> chosen() {
    return chosenFirmware(settings, prompt, folder.path(), [this](bool on) { busy << on; });
  }

  QTemporaryDir folder;
  Settings settings;
  test::ScriptedPrompt prompt;
  QList<bool> busy;
};

TEST_F(FirmwareFileTest, IsOfferedToBothStationsWithABootLoader) {
  for (const StationKindRow& row : kStationKinds) {
    settings.baseUnit = row.kind;
    const bool expected = row.kind == StationKind::Mx1 || row.kind == StationKind::Mx1V25;
    EXPECT_EQ(firmwareRefusal(settings).isEmpty(), expected) << static_cast<int>(row.kind);
  }
}

TEST_F(FirmwareFileTest, AnotherStationGetsAMessageAndNoDialog) {
  settings.baseUnit = StationKind::Mx1Bin;
  EXPECT_FALSE(chosen());
  EXPECT_EQ(prompt.shown,
            QStringList{"Diese Funktion ist nur mit dem Zimo MX1-2000-Basisgerät möglich.\n"
                        "Stellen Sie den Gerätetyp unter Parameter | Optionen entsprechend ein."});
  EXPECT_TRUE(prompt.fileQuestions.isEmpty());
}

TEST_F(FirmwareFileTest, TheDialogAsksForAFirmwareFileAndACancelIsQuiet) {
  EXPECT_FALSE(chosen());
  ASSERT_EQ(prompt.fileQuestions.size(), 1);
  EXPECT_EQ(prompt.fileQuestions[0].title, "Firmwaredatei wählen");
  EXPECT_EQ(prompt.fileQuestions[0].filter,
            "Firmware-Dateien (*.hex)|*.hex|Alle Dateien (*.*)|*.*");
  EXPECT_EQ(prompt.fileQuestions[0].presetName, "Mx1_2k.hex");
  EXPECT_EQ(prompt.fileQuestions[0].folder, folder.path());
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(FirmwareFileTest, AGoodFileIsConfirmedByItsName) {
  prompt.fileNames = {write(QStringLiteral("Mx1_2k.hex"), kOneByte)};
  prompt.answers = {Answer::Ok};
  const auto firmware = chosen();
  ASSERT_TRUE(firmware);
  EXPECT_EQ(firmware->firmImage.at(0), '\x01');
  EXPECT_EQ(firmware->firmBlocks, 1);
  EXPECT_EQ(prompt.shown, QStringList{"Firmware-Datei Mx1_2k.hex einspielen?"});
  EXPECT_EQ(busy, (QList<bool>{true, false}));
}

TEST_F(FirmwareFileTest, OpenCabsAreNamedBelowTheQuestion) {
  const QString file = write(QStringLiteral("f.hex"), kOneByte);
  const QStringList open{QStringLiteral("V 200 (3)"), QStringLiteral("Weiche (9)")};
  EXPECT_FALSE(confirmedFirmware(
      file, prompt, [](bool) {}, open));
  EXPECT_EQ(prompt.shown, QStringList{"Firmware-Datei f.hex einspielen?"});
  EXPECT_EQ(
      prompt.below,
      QStringList{"Geöffnet: V 200 (3), Weiche (9). Während der Übertragung hört die Zentrale "
                  "nicht auf sie, auch nicht auf Halt."});
  EXPECT_FALSE(confirmed(file));
  EXPECT_EQ(prompt.below.last(), "");
}

TEST_F(FirmwareFileTest, WithoutTheUsersLeaveThereIsNoFirmware) {
  prompt.answers = {Answer::Cancel};
  EXPECT_FALSE(confirmed(write(QStringLiteral("f.hex"), kOneByte)));
}

TEST_F(FirmwareFileTest, ANameWithoutAnExtensionGetsOne) {
  write(QStringLiteral("Mx1_2k.hex"), kOneByte);
  prompt.answers = {Answer::Ok};
  EXPECT_TRUE(confirmed(path(QStringLiteral("mx1_2k"))));
  EXPECT_EQ(prompt.shown, QStringList{"Firmware-Datei mx1_2k.HEX einspielen?"});
}

TEST_F(FirmwareFileTest, AMissingFileIsToldByItsName) {
  EXPECT_FALSE(confirmed(path(QStringLiteral("nichts"))));
  EXPECT_EQ(prompt.shown, QStringList{"Firmware-Datei " + path(QStringLiteral("nichts.HEX")) +
                                      " nicht gefunden\noder Zugriff nicht möglich!"});
  EXPECT_TRUE(busy.isEmpty());
}

TEST_F(FirmwareFileTest, WhatIsNoFileCountsAsMissing) {
  EXPECT_FALSE(confirmed(folder.path() + QStringLiteral("/.")));
  ASSERT_TRUE(QFile::link(QStringLiteral("/dev/zero"), path(QStringLiteral("null.hex"))));
  EXPECT_FALSE(confirmed(path(QStringLiteral("null.hex"))));
  EXPECT_EQ(prompt.shown.size(), 2);
}

TEST_F(FirmwareFileTest, AFaultIsToldWithItsLineAndNobodyIsAsked) {
  EXPECT_FALSE(confirmed(write(QStringLiteral("f.hex"), ":0100000001FE\n:0100000001FF\n")));
  EXPECT_EQ(prompt.shown, QStringList{"Prüfsummen-Fehler in Firmware-Datei (Zeile 2)\n"
                                      "Übertragung abgebrochen."});
  EXPECT_EQ(busy, (QList<bool>{true, false}));
}

TEST_F(FirmwareFileTest, AnEmptyFileEndsUnexpectedlyInLineOne) {
  EXPECT_FALSE(confirmed(write(QStringLiteral("f.hex"), "")));
  EXPECT_EQ(prompt.shown, QStringList{"Unerwartetes Ende in Firmware-Datei (Zeile 1)\n"
                                      "Übertragung abgebrochen."});
}

}  // namespace
}  // namespace lokari
