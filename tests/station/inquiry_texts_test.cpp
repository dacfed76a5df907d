// Replies as literal bytes, and the literal lines that they give.
#include <gtest/gtest.h>

#include "base/bytes.h"
#include "link/mx10_codec.h"
#include "station/ibx_state.h"
#include "station/intellibox.h"
#include "station/lenz.h"
#include "station/lidp.h"
#include "station/mx10.h"
#include "station/mx1_text.h"
#include "station/tams.h"
#include "station/z21.h"
#include "station/zimo_binary.h"

namespace lokari {
namespace {

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

// ---- MX1, text --------------------------------------------------------------------------------

TEST(Mx1TextReport, EveryBitHasItsLineInItsOrder) {
  EXPECT_EQ(mx1TextReport("ZF7\r").lines,
            (QStringList{"MX1 neue Generation", "Zimo Datenformat aktiv", "DCC Datenformat aktiv",
                         "Motorola Datenformat aktiv", "Sammelstop ein",
                         "Fahrspannung eingeschaltet", "Überstrom (UES) aktiv"}));
}

TEST(Mx1TextReport, EachBitAlone) {
  const QList<std::pair<const char*, const char*>> rows{
      {"Z40\r", "Zimo Datenformat aktiv"},     {"Z20\r", "DCC Datenformat aktiv"},
      {"Z10\r", "Motorola Datenformat aktiv"}, {"Z01\r", "Sammelstop ein"},
      {"Z02\r", "Fahrspannung eingeschaltet"}, {"Z04\r", "Überstrom (UES) aktiv"},
  };
  for (const auto& [reply, line] : rows) {
    EXPECT_EQ(mx1TextReport(reply).lines,
              (QStringList{"MX1 alte Generation", QString::fromUtf8(line)}));
  }
}

TEST(Mx1TextReport, TheGenerationTurnsAt80) {
  EXPECT_EQ(mx1TextReport("Z7F\r").lines.first(), "MX1 alte Generation");
  EXPECT_EQ(mx1TextReport("Z80\r").lines, QStringList{"MX1 neue Generation"});
  EXPECT_EQ(mx1TextReport("Z00\r").lines, QStringList{"MX1 alte Generation"});
  EXPECT_EQ(mx1TextReport("Z08\r").lines, QStringList{"MX1 alte Generation"});
}

TEST(Mx1TextReport, WhatHasNoDigitsIsNotUnderstood) {
  for (const char* reply : {"", "Z", "Z8", "??\r\r", "ZXY\r"}) {
    const StationReport report = mx1TextReport(reply);
    EXPECT_FALSE(report.understood) << reply;
    EXPECT_EQ(report.lines, QStringList{"Unbekannte Antwort!"}) << reply;
  }
  EXPECT_TRUE(mx1TextReport("Z8A\r").understood);
}

// ---- Zimo binary ------------------------------------------------------------------------------

TEST(ZimoBinaryLines, EveryModelHasItsName) {
  const QList<std::pair<const char*, const char*>> rows{
      {"0D 00 00 01", "MX1 2000 / HS"},
      {"0D 00 00 02", "MX1 2000 EC"},
      {"0D 00 00 03", "MX31ZL"},
      {"0D 00 00 04", "MXULF"},
      {"0D 00 00 0A", "MX10"},
      {"0D 00 00 00", "MX1 (unbekannter Typ)"},
      {"0D 00 00 05", "MX1 (unbekannter Typ)"},
  };
  for (const auto& [reply, line] : rows) {
    EXPECT_EQ(zimoBinaryModelLines(fromHex(reply)), QStringList{QString::fromUtf8(line)});
  }
}

TEST(ZimoBinaryLines, AWholeReplyTellsSoftwareBootRomAndSerialNumber) {
  const char* const reply =
      "0D 00 00 04 00 00 00 00 01 05 03 0B 0E 02 00 00 01 09 00 00 81 02 03 04";
  EXPECT_EQ(zimoBinaryModelLines(fromHex(reply)),
            (QStringList{"MXULF", "Software 1.05.02 vom 3.11.14", "Boot ROM 1.09",
                         "Ser. Nr. 2164392708"}));
}

TEST(ZimoBinaryLines, OnlyAnMxulfHasASerialNumber) {
  const char* const reply =
      "0D 00 00 01 00 00 00 00 0C 22 1F 0C 63 63 00 00 0B 0A 00 00 01 02 03 04";
  EXPECT_EQ(zimoBinaryModelLines(fromHex(reply)),
            (QStringList{"MX1 2000 / HS", "Software 12.34.99 vom 31.12.99", "Boot ROM 11.10"}));
}

TEST(ZimoBinaryLines, AShortReplyGivesTheLinesItCan) {
  const QByteArray whole =
      fromHex("0D 00 00 04 00 00 00 00 01 05 03 0B 0E 02 00 00 01 09 00 00 00 00 00 2A");
  const QList<std::pair<int, int>> sizeAndLines{{0, 0},  {3, 0},  {4, 1},  {13, 1}, {14, 2},
                                                {17, 2}, {18, 3}, {23, 3}, {24, 4}};
  for (const auto& [size, lines] : sizeAndLines) {
    EXPECT_EQ(zimoBinaryModelLines(whole.left(size)).size(), lines) << size;
  }
}

TEST(ZimoBinaryLines, TheTrackIsTheLastByte) {
  EXPECT_EQ(zimoBinaryTrackLines(fromHex("02 00 C7")),
            (QStringList{"DCC Datenformat aktiv", "Motorola Datenformat aktiv", "Sammelstop ein",
                         "Fahrspannung eingeschaltet", "Überstrom (UES) aktiv"}));
  EXPECT_EQ(zimoBinaryTrackLines(fromHex("02 FF 80")), QStringList{"DCC Datenformat aktiv"});
  EXPECT_EQ(zimoBinaryTrackLines(fromHex("02 40")), QStringList{"Motorola Datenformat aktiv"});
  EXPECT_EQ(zimoBinaryTrackLines(fromHex("02 FF 38")), QStringList{});
  EXPECT_EQ(zimoBinaryTrackLines(fromHex("02")), QStringList{});
  EXPECT_EQ(zimoBinaryTrackLines({}), QStringList{});
}

// ---- Lenz -------------------------------------------------------------------------------------

TEST(LenzVersionReport, TheFirstInterfaceTellsTheVersion) {
  const StationReport report = lenzVersionReport(fromHex("62 21 23 60"), false);
  EXPECT_TRUE(report.understood);
  EXPECT_EQ(report.lines, QStringList{"Lenz Zentrale Version 2.3"});
  EXPECT_EQ(report.connected, (StationChoice{StationKind::Li100, false}));
}

TEST(LenzVersionReport, TheThirdGenerationNamesItsCentral) {
  const QList<std::pair<const char*, const char*>> rows{{"63 21 36 00 74", "LZ100"},
                                                        {"63 21 36 01 75", "LH200"},
                                                        {"63 21 36 02 76", "res."},
                                                        {"63 21 36 03 77", "compact"}};
  for (const auto& [reply, central] : rows) {
    const StationReport report = lenzVersionReport(fromHex(reply), false);
    EXPECT_EQ(report.lines, (QStringList{"Lenz Zentrale Version 3.6", central}));
    EXPECT_EQ(report.connected, (StationChoice{StationKind::Li100V3, false}));
  }
  EXPECT_EQ(lenzVersionReport(fromHex("63 21 36 04 70"), false).lines,
            QStringList{"Lenz Zentrale Version 3.6"});
}

TEST(LenzVersionReport, AUsbInterfaceIsToldByItsHeadAndItsVersion) {
  const QList<std::pair<const char*, bool>> rows{
      {"FF FE 63 21 30 00 72", false}, {"FF FE 63 21 35 00 77", false},
      {"FF FE 63 21 36 00 74", true},  {"FF FE 63 21 37 00 75", true},
      {"FF FE 63 21 40 00 02", true},  {"FF FE 62 21 36 75", true},
  };
  for (const auto& [reply, v36] : rows) {
    for (const bool usb : {true, false}) {
      EXPECT_EQ(lenzVersionReport(fromHex(reply), usb).connected,
                (StationChoice{StationKind::LiUsb, v36}))
          << reply << usb;
    }
  }
  EXPECT_EQ(lenzVersionReport(fromHex("FF FE 63 21 36 00 74"), true).lines,
            QStringList{"Lenz Zentrale Version 3.6"});
}

TEST(LenzVersionReport, VersionsAreComparedAsText) {
  EXPECT_EQ(lenzVersionReport(fromHex("FF FE 63 21 3A 00 78"), true).connected,
            (StationChoice{StationKind::LiUsb, false}));  // "3.10" stands before "3.6"
}

TEST(LenzVersionReport, AWrongHeadIsNotUnderstood) {
  for (const char* reply : {"", "62", "62 22 08 48", "61 82 E3", "01 04 05", "62 20 36 74"}) {
    const StationReport report = lenzVersionReport(fromHex(reply), false);
    EXPECT_FALSE(report.understood) << reply;
    EXPECT_EQ(report.lines, QStringList{"Ungültige Antwort vom LI100"}) << reply;
    EXPECT_FALSE(report.connected) << reply;
  }
  // On USB two bytes go, whatever they are.
  EXPECT_FALSE(lenzVersionReport(fromHex("62 21 23 60"), true).understood);
}

TEST(LenzVersionReport, AHeadAloneTellsTheInterfaceWithoutAVersion) {
  const StationReport usb = lenzVersionReport(fromHex("FF FE 63 21"), true);
  EXPECT_EQ(usb.lines, QStringList{});
  EXPECT_EQ(usb.connected, (StationChoice{StationKind::LiUsb, false}));
  EXPECT_EQ(lenzVersionReport(fromHex("63 21 36"), false).lines,
            QStringList{"Lenz Zentrale Version 3.6"});
}

TEST(LenzStateLines, EveryBitHasItsText) {
  EXPECT_EQ(lenzStateLines(fromHex("62 22 00 40")),
            (QStringList{"Programmiermodus aus", "Startmodus manuell"}));
  EXPECT_EQ(lenzStateLines(fromHex("62 22 08 48")),
            (QStringList{"Programmiermodus ein", "Startmodus manuell"}));
  EXPECT_EQ(lenzStateLines(fromHex("62 22 04 44")),
            (QStringList{"Programmiermodus aus", "Startmodus automatisch"}));
  EXPECT_EQ(lenzStateLines(fromHex("62 22 0F 4F")),
            (QStringList{"Programmiermodus ein", "Startmodus automatisch", "Notaus aktiv",
                         "Nothalt aktiv"}));
}

TEST(LenzStateLines, OtherMessagesGiveNone) {
  for (const char* message : {"", "62", "62 22", "63 22 08 49", "62 21 08 4B", "61 82 E3"}) {
    EXPECT_EQ(lenzStateLines(fromHex(message)), QStringList{}) << message;
  }
}

// ---- LIDP -------------------------------------------------------------------------------------

TEST(LidpReport, TheFirstTwoCharactersCount) {
  EXPECT_EQ(lidpReport("OK\r\n").lines,
            (QStringList{"Lenz Decoderprogrammer", "Status OK, Gleisausgang aus"}));
  EXPECT_EQ(lidpReport("X3\r\n").lines, (QStringList{"Lenz Decoderprogrammer", "Überstrom!"}));
  for (const char* reply : {"X1\r\n", "ok\r\n", "O", ""}) {
    const StationReport report = lidpReport(reply);
    EXPECT_EQ(report.lines, (QStringList{"Lenz Decoderprogrammer", "Unbekannte Antwort!"}));
    EXPECT_FALSE(report.understood);
  }
  EXPECT_TRUE(lidpReport("X3\r\n").understood);
}

// ---- Intellibox and Tams MC -------------------------------------------------------------------

TEST(IntelliboxLines, AWholeReply) {
  const char* const reply = "02 50 15 02 10 13 01 14 01 09 01 2A 05 00 01 23 4F 56 00";
  EXPECT_EQ(intelliboxLines(fromHex(reply)),
            (QStringList{"IBX SPU Version 1.550 / KPU Version 1.310",
                         "PPU Version 1.4 / LIPU Version 0.9", "DNG Version 2.A",
                         "IBX Serien-#: 0001234F56"}));
}

TEST(IntelliboxLines, DigitsAreJoinedAsTheyStand) {
  EXPECT_EQ(intelliboxLines(fromHex("02 05 15")), QStringList{"IBX SPU Version 1.155"});
  EXPECT_EQ(intelliboxLines(fromHex("02 50 03")), QStringList{"IBX SPU Version 3.350"});
}

TEST(IntelliboxLines, AShortReplyGivesTheLinesItCan) {
  const QByteArray whole = fromHex("02 50 15 02 10 13 01 14 01 09 01 2A 05 00 01 23 4F 56 00");
  EXPECT_EQ(intelliboxLines(whole.left(2)), QStringList{});
  EXPECT_EQ(intelliboxLines(whole.left(5)), QStringList{"IBX SPU Version 1.550"});
  EXPECT_EQ(intelliboxLines(whole.left(9)),
            (QStringList{"IBX SPU Version 1.550 / KPU Version 1.310", "PPU Version 1.4"}));
  EXPECT_EQ(intelliboxLines(whole.left(17)).size(), 3);
  EXPECT_EQ(intelliboxLines(whole.left(18)).size(), 4);
}

TEST(TamsLines, VersionAndSerialNumber) {
  EXPECT_EQ(tamsLines(fromHex("04 02 01 04 61 00 A1 B2 0C 00")),
            (QStringList{"Tams MC SPU Version 2.14a", "MC Serien-#: 00A1B20C"}));
}

TEST(TamsLines, TheSerialNumberStandsBeforeTheLastByteOfALongerReply) {
  EXPECT_EQ(tamsLines(fromHex("04 02 01 04 61 05 00 01 02 03 04 FF")).at(1),
            "MC Serien-#: 01020304");
}

TEST(TamsLines, ALetterIsOneFrom41On) {
  EXPECT_EQ(tamsLines(fromHex("04 01 05 09 28")), QStringList{"Tams MC SPU Version 1.59"});
  EXPECT_EQ(tamsLines(fromHex("04 01 05 09 29")), QStringList{"Tams MC SPU Version 1.59)"});
}

TEST(TamsLines, AShortReplyGivesTheLinesItCan) {
  EXPECT_EQ(tamsLines(fromHex("04 01 05")), QStringList{});
  EXPECT_EQ(tamsLines(fromHex("04 01 05 09")), QStringList{"Tams MC SPU Version 1.59"});
  EXPECT_EQ(tamsLines(fromHex("04 01 05 09 61 00 01 02 03")),
            QStringList{"Tams MC SPU Version 1.59a"});
}

TEST(IbxStateLine, EveryBitHasItsText) {
  EXPECT_EQ(ibxStateLine(0x00), "Power Off ");
  EXPECT_EQ(ibxStateLine(0x08), "Power On ");
  EXPECT_EQ(ibxStateLine(0x04), "Power Off Überhitzung! ");
  EXPECT_EQ(ibxStateLine(0x18), "Power On Halt aktiv ");
  EXPECT_EQ(ibxStateLine(0x40), "Power Off N-Spur-Gleisspannung");
  EXPECT_EQ(ibxStateLine(0xFF), "Power On Überhitzung! Halt aktiv N-Spur-Gleisspannung");
  EXPECT_EQ(ibxStateLine(0xA3), "Power Off ");
}

// ---- Z21 --------------------------------------------------------------------------------------

TEST(Z21Lines, SerialNumberAndFirmware) {
  EXPECT_EQ(z21SerialNumberLine(fromHex("08 00 10 00 40 E2 01 00")), "Roco Z21 Ser. Nr. 123456");
  EXPECT_EQ(z21SerialNumberLine(fromHex("08 00 10 00 FF FF FF FF")),
            "Roco Z21 Ser. Nr. 4294967295");
  EXPECT_EQ(z21FirmwareLine(fromHex("09 00 40 00 F3 0A 01 43 BB")), "Firmware Vers. 1.43");
  EXPECT_EQ(z21FirmwareLine(fromHex("09 00 40 00 F3 0A 0A 05 F6")), "Firmware Vers. A.5");
}

TEST(Z21Lines, HardwareLockAndStatus) {
  EXPECT_EQ(z21HardwareLine(fromHex("0C 00 1A 00 01 02 00 00 43 01 00 00")),
            "Gerät: Z21, Version 1.43");
  EXPECT_EQ(z21HardwareLine(fromHex("0C 00 1A 00 00 02 00 00 05 01 00 00")),
            "Gerät: Z21 (2012), Version 1.05");
  EXPECT_EQ(z21HardwareLine(fromHex("0C 00 1A 00 04 02 00 00 42 01 00 00")),
            "Gerät: z21start, Version 1.42");
  EXPECT_EQ(z21HardwareLine(fromHex("0C 00 1A 00 99 02 00 00 42 01 00 00")),
            "Gerät: Bauart 299, Version 1.42");
  EXPECT_EQ(z21HardwareLine(fromHex("0C 00 1A 00 01 02 00 00 43 01 00")), "");
  EXPECT_EQ(z21LockLine(fromHex("05 00 18 00 00")), "");
  EXPECT_NE(z21LockLine(fromHex("05 00 18 00 01")), "");
  EXPECT_EQ(z21LockLine(fromHex("05 00 18 00 02")), "");
  EXPECT_EQ(z21StatusLine(fromHex("08 00 40 00 62 22 00 40")), "Gleisspannung ein");
  EXPECT_EQ(z21StatusLine(fromHex("08 00 40 00 62 22 27 67")),
            "Kurzschluss, Gleisspannung aus, Alle Fahrzeuge angehalten, Programmiermodus");
  EXPECT_EQ(z21StatusLine(fromHex("07 00 40 00 61 01 60")), "");
}

TEST(Z21Lines, AShortMessageGivesNone) {
  EXPECT_EQ(z21SerialNumberLine(fromHex("08 00 10 00 40 E2 01")), "");
  EXPECT_EQ(z21FirmwareLine(fromHex("09 00 40 00 F3 0A 01 43")), "");
}

// ---- MX10 -------------------------------------------------------------------------------------

TEST(Mx10Lines, UsbAndNetwork) {
  const CanMessage answer = mx10::message(0x0823C0A1, {0xA1, 0xC0, 2, 0, 0x38, 0x01, 0x19, 0x02});
  EXPECT_EQ(mx10Lines(0x80012345, answer, false),
            (QStringList{"MX10 Ser. Nr. 2147558213", "USB 0312", "SW Vers. 2.25.1"}));
  EXPECT_EQ(mx10Lines(7, answer, true),
            (QStringList{"MX10 Ser. Nr. 7", "Ethernet 0312", "SW Vers. 2.25.1"}));
}

TEST(Mx10Lines, TheNumberHasFourDigitsAtLeast) {
  const auto line = [](int low, int high) {
    return mx10Lines(1, mx10::message(1, {0, 0, 0, 0, low, high}), false).at(1);
  };
  EXPECT_EQ(line(0, 0), "USB 0000");
  EXPECT_EQ(line(9, 0), "USB 0009");
  EXPECT_EQ(line(0xFF, 0xFF), "USB 65535");
}

TEST(Mx10Lines, AShortAnswerGivesTheLinesItCan) {
  EXPECT_EQ(mx10Lines(1, {}, false), QStringList{"MX10 Ser. Nr. 1"});
  EXPECT_EQ(mx10Lines(1, mx10::message(1, {0, 0, 0, 0, 1}), false).size(), 1);
  EXPECT_EQ(mx10Lines(1, mx10::message(1, {0, 0, 0, 0, 1, 0, 3}), false).size(), 2);
}

TEST(Mx10Question, NamesTheNodeLowByteFirst) {
  const CanMessage question = mx10Question(static_cast<qint16>(0xC0A1));
  EXPECT_EQ(question.ID, 0x082086C2U);
  EXPECT_EQ(question.MSGTYPE, 2);
  EXPECT_EQ(question.LEN, 4);
  EXPECT_EQ(question.DATA[0], 0xA1);
  EXPECT_EQ(question.DATA[1], 0xC0);
  EXPECT_EQ(question.DATA[2], 2);
  EXPECT_EQ(question.DATA[3], 0);
}

}  // namespace
}  // namespace lokari
