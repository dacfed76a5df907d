#include "cli_fixture.h"

namespace lokari {
namespace {

class FirmwareCommandTest : public CliFixture {
 protected:
  explicit FirmwareCommandTest(const char16_t* kind = u"MX1") : CliFixture(kind) {
    station->onFirmware = [this](const QByteArray& image) { received = image; };
  }

  /// The command line for a file of that content.
  QByteArray call(const QByteArray& text, const char* more = " --yes") {
    const QString path = folder.filePath(QStringLiteral("f.hex"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return "firmware " + path.toUtf8() + more;
  }

  QByteArray received;
};

TEST_F(FirmwareCommandTest, LoadsTheFileAndTellsTheEnd) {
  EXPECT_EQ(run(call(":020000001234B8\n:018000005629\n:00000001FF\n").constData()), 0);
  QByteArray expected(65536, '\xFF');
  expected.replace(0, 2, "\x12\x34");
  expected.replace(0x8000, 1, "\x56");
  EXPECT_EQ(received, expected);
  EXPECT_EQ(console.results, QStringList{"Übertragung der Firmware abgeschlossen!"});
  EXPECT_EQ(console.messages,
            (QStringList{"Firmware-Datei f.hex einspielen? [OK]", "Beginne Kommunikation ...",
                         "Warten auf Basisgerät ...",
                         "Übertragung läuft...\nMX1 und PC jetzt nicht abschalten!", "100%"}));
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(FirmwareCommandTest, TellsTheBlocksWithEachTenthOfTheWay) {
  // 32 blocks of one value each: 16 * 1 + 16 (count) + the address bytes
  QByteArray text;
  for (int i = 0; i < 32; ++i) {
    const int sum = 16 + i / 16 + i % 16 * 16 + 16;
    text += ":10" + QByteArray::number(i * 16, 16).rightJustified(4, '0') + "00" +
            QByteArray("01").repeated(16) +
            QByteArray::number((256 - sum % 256) % 256, 16).rightJustified(2, '0') + "\n";
  }
  EXPECT_EQ(run(call(text + ":00000001FF\n").constData()), 0);
  EXPECT_TRUE(
      console.messages.contains(QStringLiteral("50% (Block 16 von 32, noch etwa 5 Sekunden)")));
}

TEST_F(FirmwareCommandTest, WithoutYesNothingIsSent) {
  EXPECT_EQ(run(call(":00000001FF\n", "").constData()), 1);
  EXPECT_EQ(console.messages, QStringList{"Firmware-Datei f.hex einspielen? [Abbruch]"});
  EXPECT_TRUE(untouched());
}

TEST_F(FirmwareCommandTest, ABadFileSendsNothing) {
  EXPECT_EQ(run(call(":00000001FE\n").constData()), 1);
  EXPECT_EQ(console.messages, QStringList{"Ungültiger Zeiltentyp in Firmware-Datei (Zeile 1)\n"
                                          "Übertragung abgebrochen."});
  EXPECT_TRUE(untouched());
}

TEST_F(FirmwareCommandTest, AMissingFileSendsNothing) {
  EXPECT_EQ(run("firmware nirgends.hex --yes"), 1);
  EXPECT_EQ(console.messages, QStringList{"Firmware-Datei nirgends.hex nicht gefunden\n"
                                          "oder Zugriff nicht möglich!"});
  EXPECT_TRUE(untouched());
}

TEST_F(FirmwareCommandTest, TheNameOfOneFileIsNeeded) {
  EXPECT_EQ(run("firmware --yes"), 2);
  EXPECT_EQ(console.messages.first(), "Es fehlt der Name der Firmware-Datei!");
  EXPECT_EQ(run("firmware a.hex b.hex --yes"), 2);
  EXPECT_TRUE(untouched());
}

TEST_F(FirmwareCommandTest, CtrlCEndsTheTransferWithTheDots) {
  faults.add({.kind = sim::FaultKind::BlockError, .count = sim::Fault::kAlways});
  clock.schedule(5000, [this] { interrupt.raise(); });
  EXPECT_EQ(run(call(":020000001234B8\n:00000001FF\n").constData()), 1);
  EXPECT_EQ(console.results, QStringList{"Übertragung der Firmware abgebrochen!"});
  EXPECT_TRUE(line_.sent().endsWith("..."));
  EXPECT_EQ(received, QByteArray(65536, '\xFF'));
}

TEST_F(FirmwareCommandTest, ASilentStationIsAFailure) {
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  EXPECT_EQ(run(call(":00000001FF\n").constData()), 1);
  EXPECT_EQ(console.results, QStringList{"Keine Antwort vom Basisgerät!"});
}

TEST_F(FirmwareCommandTest, WithoutASessionTheReasonIsTold) {
  line_.failsToOpen = true;
  EXPECT_EQ(run(call(":00000001FF\n").constData()), 2);
  EXPECT_EQ(console.messages.mid(2),
            QStringList{"Kann Kommunikationsschnittstelle nicht öffnen (0)!\nKein Gerät!\n"
                        "Bitte Kabel an COM3, Stromversorgung und Baudrate (9600) prüfen."});
  EXPECT_TRUE(console.results.isEmpty());
}

class FirmwareOnTamsTest : public CliFixture {};

TEST_F(FirmwareOnTamsTest, AStationWithoutABootLoaderIsAWrongCall) {
  EXPECT_EQ(run("firmware f.hex --yes"), 2);
  EXPECT_EQ(console.messages.first(),
            "Diese Funktion ist nur mit dem Zimo MX1-2000-Basisgerät möglich.\n"
            "Stellen Sie den Gerätetyp unter Parameter | Optionen entsprechend ein.");
  EXPECT_TRUE(untouched());
}

}  // namespace
}  // namespace lokari
