#include "station/intel_hex.h"

#include <gtest/gtest.h>

#include <QBuffer>

namespace lokari {
namespace {

constexpr char kEnd[] = ":00000001FF\n";

std::variant<Firmware, HexFault> readText(QByteArray text) {
  QBuffer file(&text);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly));
  return readIntelHex(file);
}

/// The firmware of a good file.
Firmware good(const QByteArray& text) {
  const auto result = readText(text);
  if (const auto* fault = std::get_if<HexFault>(&result)) {
    ADD_FAILURE() << "line " << fault->line << ": " << qPrintable(hexErrorText(fault->error));
    return {};
  }
  return std::get<Firmware>(result);
}

/// "number@line" of a bad file's fault.
QString fault(const QByteArray& text) {
  const auto result = readText(text);
  const auto* found = std::get_if<HexFault>(&result);
  if (found == nullptr) return QStringLiteral("none");
  return QStringLiteral("%1@%2").arg(static_cast<int>(found->error)).arg(found->line);
}

QByteArray erased() {
  return QByteArray(65536, '\xFF');
}

/// `count` records of one byte, 1 at address 0 each.
QByteArray oneByteRecords(int count) {
  return QByteArray(":0100000001FE\n").repeated(count) + kEnd;
}

TEST(IntelHex, DataGoesToItsAddressesAndTheRestIsErased) {
  const Firmware firmware = good(QByteArray(":03001000AABBCCBC\n:01800000126D") + "\n" + kEnd);
  QByteArray expected = erased();
  expected.replace(0x10, 3, "\xAA\xBB\xCC");
  expected.replace(0x8000, 1, "\x12");
  EXPECT_EQ(firmware.firmImage, expected);
}

TEST(IntelHex, ALaterRecordReplacesAnEarlierOne) {
  const Firmware firmware = good(QByteArray(":0100000001FE\n:0100000002FD\n") + kEnd);
  EXPECT_EQ(firmware.firmImage.at(0), '\x02');
}

TEST(IntelHex, LinesMayEndWithCrLfOrWithLfOrWithCr) {
  QByteArray expected = erased();
  expected.replace(0, 2, "\x01\x02");
  EXPECT_EQ(good(":0100000001FE\r\n:0100010002FC\r\n:00000001FF\r\n").firmImage, expected);
  EXPECT_EQ(good(":0100000001FE\n:0100010002FC\n:00000001FF\n").firmImage, expected);
  EXPECT_EQ(good(":0100000001FE\r:0100010002FC\r:00000001FF\r").firmImage, expected);
}

TEST(IntelHex, TheEndLineNeedsNoLineEnd) {
  EXPECT_EQ(good(":0100000001FE\r\n:00000001FF").firmImage.at(0), '\x01');
}

TEST(IntelHex, NothingIsReadBehindTheEndLine) {
  EXPECT_EQ(good(QByteArray(kEnd) + "garbage\n").firmImage, erased());
}

TEST(IntelHex, DigitsMayBeSmall) {
  EXPECT_EQ(good(QByteArray(":01abcd00ef98\n") + kEnd).firmImage.at(0xABCD), '\xEF');
}

TEST(IntelHex, CharactersBehindARecordAreNotLookedAt) {
  EXPECT_EQ(good(QByteArray(":0100000001FE ;first\n") + kEnd).firmImage.at(0), '\x01');
}

TEST(IntelHex, ARecordOf255BytesIsTaken) {
  // 255 + 255 * 1 = 510 = 0x1FE
  const Firmware firmware =
      good(":FF000000" + QByteArray("01").repeated(255) + "02\n" + QByteArray(kEnd));
  EXPECT_EQ(firmware.firmImage, QByteArray(255, '\x01') + QByteArray(65536 - 255, '\xFF'));
}

TEST(IntelHex, ARecordThatWritesNothingDoesNoHarm) {
  const Firmware firmware = good(QByteArray(":0000000000\n:00FFFF0002\n") + kEnd);
  EXPECT_EQ(firmware.firmImage, erased());
  EXPECT_EQ(firmware.firmBlocks, 1);
}

TEST(IntelHex, AFileWithoutItsEndLineEndsUnexpectedlyBehindTheLastLine) {
  EXPECT_EQ(fault(":0100000001FE\n:0100010002FC\n"), "1@3");
  EXPECT_EQ(fault(":0100000001FE\r\n:0100010002FC\r\n"), "1@3");
  EXPECT_EQ(fault(":0100000001FE\n:0100010002FC"), "1@3");
}

TEST(IntelHex, AnEmptyFileEndsUnexpectedlyAtLineOne) {
  EXPECT_EQ(fault(""), "1@1");
}

TEST(IntelHex, ALineMustStartWithAColon) {
  EXPECT_EQ(fault(QByteArray(":0100000001FE\n0100010002FC\n") + kEnd), "2@2");
  EXPECT_EQ(fault(QByteArray("\n") + kEnd), "2@1");
  EXPECT_EQ(fault(QByteArray(" :0100000001FE\n") + kEnd), "2@1");
  EXPECT_EQ(fault("x"), "2@1");
}

TEST(IntelHex, ALineBelowTenCharactersIsTooShort) {
  EXPECT_EQ(fault(":"), "3@1");
  EXPECT_EQ(fault(":00000004"), "3@1");
}

TEST(IntelHex, AnotherTypeThanDataIsRefused) {
  EXPECT_EQ(fault(":020000040000FA\n"), "4@1");
  EXPECT_EQ(fault(":000000AA00\n"), "4@1");
}

TEST(IntelHex, AnEndRecordOfAnotherSpellingIsRefused) {
  EXPECT_EQ(fault(":00000001FE\n"), "4@1");
  EXPECT_EQ(fault(":00000001ff\n"), "4@1");
  EXPECT_EQ(fault(":00000001FF \n"), "4@1");
}

TEST(IntelHex, TheTypeIsLookedAtBeforeTheSecondLength) {
  EXPECT_EQ(fault(":10000001\n"), "3@1");
  EXPECT_EQ(fault(":1000000100\n"), "4@1");
}

TEST(IntelHex, ALineMustHoldAsManyBytesAsItSays) {
  EXPECT_EQ(fault(":0100000001F\n"), "3@1");
  EXPECT_EQ(fault(":0000000000\n:000000000\n"), "3@2");
}

TEST(IntelHex, TheLengthIsLookedAtBeforeTheAddress) {
  EXPECT_EQ(fault(":02FFFF000101\n"), "3@1");
}

TEST(IntelHex, ARecordMayReachTheEndOfTheMemory) {
  const Firmware firmware = good(QByteArray(":01FFFF0042BF\n:02FFFE0041427E\n") + kEnd);
  EXPECT_EQ(firmware.firmImage.right(3), QByteArray("\xFF\x41\x42"));
}

TEST(IntelHex, ARecordBeyondTheMemoryIsRefusedBeforeItsChecksum) {
  EXPECT_EQ(fault(":02FFFF00414280\n"), "5@1");
  EXPECT_EQ(fault(":02FFFF00000000\n"), "5@1");
}

TEST(IntelHex, AWrongChecksumIsTold) {
  EXPECT_EQ(fault(":0100000001FE\n:0100000001FF\n"), "6@2");
  EXPECT_EQ(fault(":0000000001\n"), "6@1");
}

TEST(IntelHex, ACharacterThatIsNoDigitNeverPassesAsZero) {
  EXPECT_EQ(fault(":01000000G0FF\n"), "6@1");
  EXPECT_EQ(fault(":00000000 0\n"), "6@1");
  EXPECT_EQ(fault(":0G00000000\n"), "6@1");
  EXPECT_EQ(fault(":0000x00000\n"), "6@1");
}

TEST(IntelHex, BytesOfOtherAlphabetsAreNoDigits) {
  EXPECT_EQ(fault("\xFF\xFE:\0"), "2@1");
  EXPECT_EQ(fault(QByteArray(":01000000\xC3\x9C") + QByteArray("FF\n")), "6@1");
}

TEST(IntelHex, BlocksAreSixteenthsOfTheDataRoundedToTheEvenOne) {
  EXPECT_EQ(good(oneByteRecords(16)).firmBlocks, 1);
  EXPECT_EQ(good(oneByteRecords(24)).firmBlocks, 2);  // 1.5
  EXPECT_EQ(good(oneByteRecords(40)).firmBlocks, 2);  // 2.5
  EXPECT_EQ(good(oneByteRecords(41)).firmBlocks, 3);  // 2.56
}

TEST(IntelHex, BlocksAreAtLeastOne) {
  EXPECT_EQ(good(kEnd).firmBlocks, 1);
  EXPECT_EQ(good(oneByteRecords(7)).firmBlocks, 1);
}

TEST(IntelHex, ErrorsHaveTheirTexts) {
  EXPECT_EQ(hexErrorText(HexError::UnexpectedEnd), "Unerwartetes Ende");
  EXPECT_EQ(hexErrorText(HexError::LineStart), "Unerwarteter Zeilenanfang");
  EXPECT_EQ(hexErrorText(HexError::LineTooShort), "Zu kurze Zeile");
  EXPECT_EQ(hexErrorText(HexError::LineType), "Ungültiger Zeiltentyp");
  EXPECT_EQ(hexErrorText(HexError::Address), "Ungültige Adresse (>64K)");
  EXPECT_EQ(hexErrorText(HexError::Checksum), "Prüfsummen-Fehler");
}

}  // namespace
}  // namespace lokari
