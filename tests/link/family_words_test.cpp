// What the families say about messages: the words of those that every station has, and where a
// message ends.
#include "link/family_words.h"

#include <gtest/gtest.h>

#include "base/bytes.h"
#include "link/intellibox_codec.h"
#include "link/lenz_codec.h"
#include "link/lidp_codec.h"
#include "link/mx10_codec.h"
#include "link/mx1_text_codec.h"
#include "link/tams_codec.h"
#include "link/z21_codec.h"
#include "link/zimo_binary_codec.h"

namespace lokari {
namespace {

QString sent(ProtocolFamily family, const QByteArray& message) {
  return familyWords(family).sent(message);
}
QString received(ProtocolFamily family, const QByteArray& message, const QByteArray& asked = {}) {
  return familyWords(family).received(message, asked);
}
qsizetype whole(ProtocolFamily family, const QByteArray& input, const QByteArray& asked = {}) {
  return familyWords(family).wholeReceived(input, asked);
}
QByteArray hex(const char* digits) {
  return QByteArray::fromHex(digits);
}

TEST(FamilyWords, EveryKindHasWords) {
  for (const StationKindRow& kind : kStationKinds) {
    const FamilyWords& words = familyWords(kind.family);
    ASSERT_NE(words.sent, nullptr) << QString::fromUtf16(kind.name).toStdString();
    ASSERT_NE(words.received, nullptr);
  }
}

TEST(FamilyWords, AFamilyWithoutWordsHasNoneAndIsNoError) {
  const FamilyWords& words = familyWords(static_cast<ProtocolFamily>(99));
  EXPECT_EQ(words.sent, nullptr);
  EXPECT_EQ(words.wholeReceived, nullptr);
}

TEST(FamilyWords, NoMessageIsTooShortForThem) {
  for (const StationKindRow& kind : kStationKinds) {
    const FamilyWords& words = familyWords(kind.family);
    for (int first = 0; first < 256; ++first) {
      for (int size = 0; size < 12; ++size) {
        for (const int rest : {0x00, 0x13, 0xFF}) {
          const QByteArray message = (size > 0 ? bytes({first}) : QByteArray()) +
                                     QByteArray(size, static_cast<char>(rest));
          words.sent(message);
          words.received(message, message);
          if (words.wholeSent != nullptr) {
            EXPECT_LE(words.wholeSent(message), message.size());
          }
          if (words.wholeReceived != nullptr) {
            const qsizetype end = words.wholeReceived(message, message);
            EXPECT_GE(end, 0);
            EXPECT_LE(end, message.size());
          }
        }
      }
    }
  }
}

TEST(LenzWords, TellWhatIsSent) {
  using lenz::withCheck;
  const auto words = [](const QByteArray& message) { return sent(ProtocolFamily::Lenz, message); };
  EXPECT_EQ(words(*lenz::readCv(29, 0, false)), "liest CV 29 (direct)");
  EXPECT_EQ(words(*lenz::readCv(29, 1, false)), "liest CV 29 (paged)");
  EXPECT_EQ(words(*lenz::readCv(700, 0, true)), "liest CV 700");
  EXPECT_EQ(words(*lenz::readCv(1024, 0, true)), "liest CV 1024");
  EXPECT_EQ(words(*lenz::writeCv(700, 5, 0, true)), "schreibt CV 700 = 5");
  EXPECT_EQ(words(*lenz::writeCv(29, 6, 0, false)), "schreibt CV 29 = 6 (direct)");
  EXPECT_EQ(words(*lenz::writeCvMain(300, 300, 700, 5)),
            "Hauptgleis, Fahrzeug 300: CV 700, Wert 5");
  EXPECT_EQ(words(lenz::requestResult()), "fragt nach dem Ergebnis des Programmierens");
  EXPECT_EQ(words(lenz::resume()), "normaler Betrieb, Gleis ein");
  EXPECT_EQ(words(hex("FFFE") + lenz::resume()), "normaler Betrieb, Gleis ein");
  EXPECT_EQ(words(hex("E300C12C0E")), "fragt nach Fahrzeug 300");
  EXPECT_EQ(words(hex("8080")), "hält alle Fahrzeuge an");
  EXPECT_EQ(words(hex("EE")), "");
}

TEST(LenzWords, TellWhatIsReceivedInEitherFrame) {
  for (const char* frame : {"", "FFFE", "FFFD"}) {
    const auto words = [&](const char* digits) {
      return received(ProtocolFamily::Lenz, hex(frame) + hex(digits));
    };
    EXPECT_EQ(words("010405"), "an die Zentrale weitergegeben");
    EXPECT_EQ(words("610263"), "Programmiermodus ein, noch kein Ergebnis");
    EXPECT_EQ(words("611372"), "kein Decoder oder keine Antwort");
    EXPECT_EQ(words("63141D0E64"), "Ergebnis: CV 29 hat 14");
    EXPECT_EQ(words("6316BC05C8"), "Ergebnis: CV 700 hat 5");
    EXPECT_EQ(words("E41412300000D6"), "Zustand des Fahrzeugs");
    EXPECT_EQ(words("77"), "");
  }
}

TEST(LenzWords, AMessageEndsBehindItsCheckByte) {
  const auto end = [](const char* digits) { return whole(ProtocolFamily::Lenz, hex(digits)); };
  EXPECT_EQ(end("0104"), 0);
  EXPECT_EQ(end("010405610263"), 3);
  EXPECT_EQ(end("FF"), 0);
  EXPECT_EQ(end("FFFE"), 0);
  EXPECT_EQ(end("FFFE6101"), 0);
  EXPECT_EQ(end("FFFE610160FFFD"), 5);
  EXPECT_EQ(end("FE610160FF"), 4) << "its first byte went with the piece before";
  EXPECT_EQ(end("1408611EFFFE610160"), 4) << "the rest of a message";
  EXPECT_EQ(end("63FFFE0102"), 1);
  EXPECT_EQ(end("6314FFFE76"), 5) << "CV 255 with the value 254";
}

TEST(Z21Words, TellBothSides) {
  const auto out = [](const QString& text) {
    return sent(ProtocolFamily::Z21, *z21::toBytes(text));
  };
  EXPECT_EQ(out(QString::fromUtf16(z21::kPowerOn)), "Gleis ein");
  EXPECT_EQ(out(QString::fromUtf16(z21::kLogOff)), "meldet sich ab");
  EXPECT_EQ(out(*z21::readOnProgTrack(29)), "liest CV 29");
  EXPECT_EQ(out(*z21::writeOnProgTrack(300, 7)), "schreibt CV 300 = 7");
  EXPECT_EQ(out(*z21::writeOnMain(300, 700, 5)), "Hauptgleis, Fahrzeug 300: CV 700, Wert 5");
  const auto in = [](const char* digits) { return received(ProtocolFamily::Z21, hex(digits)); };
  EXPECT_EQ(in("0A0040006414001C0E00"), "Ergebnis: CV 29 hat 14");
  EXPECT_EQ(in("070040006113 72"), "kein Decoder oder keine Antwort");
  EXPECT_EQ(in("0F004000EFC12C0480000000000000"), "Zustand von Fahrzeug 300");
  EXPECT_EQ(in("0400FFFF"), "");
}

TEST(Z21Words, AMessageIsAsLongAsItSays) {
  EXPECT_EQ(whole(ProtocolFamily::Z21, hex("0800100012345678070040006101 60")), 8);
  EXPECT_EQ(whole(ProtocolFamily::Z21, hex("00")), 1);
  EXPECT_EQ(whole(ProtocolFamily::Z21, hex("000010")), 3);
  EXPECT_EQ(whole(ProtocolFamily::Z21, hex("20001000")), 4);
}

TEST(P50xWords, TellCommandsAndTheRepliesToThem) {
  const auto family = ProtocolFamily::Intellibox;
  const QByteArray read = "x" + ibx::readCv(29, 0);
  EXPECT_EQ(sent(family, read), "liest CV 29 (direct)");
  EXPECT_EQ(received(family, hex("00"), read), "angenommen");
  EXPECT_EQ(received(family, hex("06"), read), "das Gleis ist aus");
  EXPECT_EQ(sent(family, "x" + ibx::writeCv(300, 7, 1)), "schreibt CV 300 = 7 (paged)");
  EXPECT_EQ(sent(family, "x" + *ibx::writeCvMain(300, 300, 700, 5)),
            "Hauptgleis, Fahrzeug 300: schreibt CV 700 = 5");
  const QByteArray ask = "x" + ibx::askEvent();
  EXPECT_EQ(received(family, hex("F5"), ask), "noch kein Ergebnis");
  EXPECT_EQ(received(family, hex("02000E"), ask), "gelesen: 14");
  EXPECT_EQ(received(family, hex("01FE"), ask), "kein ACK vom Decoder");
  const QByteArray vehicle = hex("78840300");
  EXPECT_EQ(sent(family, vehicle), "fragt nach Fahrzeug 3");
  EXPECT_EQ(received(family, hex("00203010"), vehicle), "Geschwindigkeit, Richtung, F0 bis F4");
  EXPECT_EQ(received(family, hex("0A"), vehicle), "das Fahrzeug hat keinen Platz");
}

TEST(P50xWords, TheReplyEndsAsItsCommandTells) {
  const auto end = [](const char* reply, const char* command) {
    return whole(ProtocolFamily::Tams, hex(reply), hex(command));
  };
  EXPECT_EQ(end("0000", "78F21D00"), 1);
  EXPECT_EQ(end("002030", "78840300"), 0);
  EXPECT_EQ(end("0020301000", "78840300"), 4);
  EXPECT_EQ(end("0A", "78840300"), 1);
  EXPECT_EQ(end("F5", "78CE"), 1);
  EXPECT_EQ(end("0200", "78CE"), 0);
  EXPECT_EQ(end("04020104610001E24000", "78A0"), 0) << "up to the next command";
  EXPECT_EQ(end("88", "78A2"), 0);
  EXPECT_EQ(end("8801", "78A2"), 2);
}

TEST(P50xWords, CommandsThatCameByteByByteEndWithTheirArgumentsOrTheLine) {
  const auto end = [](const QByteArray& text) {
    return familyWords(ProtocolFamily::Tams).wholeSent(text);
  };
  EXPECT_EQ(end("x"), 0);
  EXPECT_EQ(end(hex("78F21D")), 0);
  EXPECT_EQ(end(hex("78F21D00")), 4);
  EXPECT_EQ(end(hex("78CE")), 2);
  EXPECT_EQ(end("xPTRB 2"), 0);
  EXPECT_EQ(end("xPTRB 29\r"), 9);
  EXPECT_EQ(end("\r"), 1);
}

TEST(P50xWords, TextsStandBesideTheirBytes) {
  EXPECT_EQ(sent(ProtocolFamily::Tams, tams::readCommand(0, 29)), "Text \"xPTRB 29\"");
  EXPECT_EQ(received(ProtocolFamily::Tams, "14]\r", tams::readCommand(0, 29)), "Text \"14]\"");
  EXPECT_EQ(whole(ProtocolFamily::Tams, "14", tams::readCommand(0, 29)), 0);
  EXPECT_EQ(whole(ProtocolFamily::Tams, "14]\r", tams::readCommand(0, 29)), 4);
}

TEST(LidpWords, TellBothSides) {
  const auto family = ProtocolFamily::LiDp;
  EXPECT_EQ(sent(family, lidp::readCommand(29)), "\"0B001C\" liest CV 29");
  EXPECT_EQ(sent(family, lidp::writeCommand(29, 14)), "\"0A001C0E\" schreibt CV 29 = 14");
  EXPECT_EQ(sent(family, lidp::endCommand()), "\"01\" Gleisausgang aus");
  EXPECT_EQ(received(family, "0EOK\r", lidp::readCommand(29)), "\"0EOK\" Ergebnis: 14");
  EXPECT_EQ(received(family, "0EOK\r", lidp::writeCommand(29, 14)), "\"0EOK\" erledigt");
  EXPECT_EQ(received(family, "X2\r"), "\"X2\" kein ACK vom Decoder");
  EXPECT_EQ(whole(family, "0EOK"), 0);
  EXPECT_EQ(whole(family, "0EOK\r\n"), 6);
}

TEST(Mx1TextWords, TellBothSides) {
  const auto family = ProtocolFamily::Mx1Text;
  EXPECT_EQ(sent(family, mx1::wakeUp()), "weckt das Basisgerät");
  EXPECT_EQ(sent(family, mx1::readCommand(29)), "\"QN1D\" liest CV 29");
  EXPECT_EQ(sent(family, mx1::writeCommand(29, 14)), "\"RN1D0E\" schreibt CV 29 = 14");
  EXPECT_EQ(sent(family, mx1::leaveFirst()), "\"REN\" verlässt das Programmieren");
  EXPECT_EQ(received(family, "QN001D0E\r"), "\"QN001D0E\" Ergebnis: 14");
  EXPECT_EQ(received(family, "QN040000\r"),
            "\"QN040000\" nicht gelesen oder geschrieben, Status 4");
  EXPECT_EQ(received(family, "???\r"), "\"???\" Ausgang nicht geschaltet");
}

TEST(ZimoBinaryWords, TellWhatStandsInAFrame) {
  const auto family = ProtocolFamily::ZimoBinary;
  const auto out = [&](const QByteArray& payload) {
    return sent(family, zbin::frame(1, payload, false));
  };
  EXPECT_EQ(out(zbin::hello()), "begrüßt die Zentrale");
  EXPECT_EQ(out(zbin::logOn()), "meldet sich an");
  EXPECT_EQ(out(zbin::readCv(29)), "liest CV 29");
  EXPECT_EQ(out(zbin::writeCv(272, 16)), "schreibt CV 272 = 16");
  EXPECT_EQ(out(*zbin::writeCvMain(300, 29, 14)), "Hauptgleis, Fahrzeug 300: schreibt CV 29 = 14");
  EXPECT_EQ(out(hex("0202")), "Gleis ein");
  EXPECT_EQ(out(hex("080003")), "fragt nach Fahrzeug 3");
  EXPECT_EQ(sent(family, zbin::frame(1, zbin::acknowledge(5), true)), "bestätigt den Empfang");
}

TEST(ZimoBinaryWords, TellWhatTheStationAnswers) {
  const auto in = [](const char* body) {
    return received(ProtocolFamily::ZimoBinary, hex("0101") + hex(body) + hex("17"));
  };
  EXPECT_EQ(in("0250130200AA"), "angenommen");
  EXPECT_EQ(in("02D013020000BBAA"), "angenommen") << "behind the longer header";
  EXPECT_EQ(in("0250130204AA"), "beschäftigt");
  EXPECT_EQ(in("0250130207AA"), "abgelehnt, Grund 7");
  EXPECT_EQ(in("032013028000001D0EAA"), "Ergebnis: CV 29 hat 14");
  EXPECT_EQ(in("039013020080 00001D0EBBAA"), "Ergebnis: CV 29 hat 14");
  EXPECT_EQ(in("03201302800005AA"), "nicht gelesen oder geschrieben, Grund 5");
  EXPECT_EQ(in("0250080300000300040000AA"), "Zustand des Fahrzeugs");
  EXPECT_EQ(in("0500FF00000300AA"), "ein Fahrzeug wurde woanders bedient");
  EXPECT_EQ(received(ProtocolFamily::ZimoBinary, "Unsinn"), "");
}

TEST(ZimoBinaryWords, AFrameEndsWithItsLastByte) {
  EXPECT_EQ(whole(ProtocolFamily::ZimoBinary, hex("0101024013")), 0);
  EXPECT_EQ(whole(ProtocolFamily::ZimoBinary, hex("010102401317AA")), 6);
}

TEST(Mx10Words, TellCommandAndMode) {
  const auto words = [](quint32 id, const QByteArray& data) {
    return sent(ProtocolFamily::Mx10,
                QByteArray::fromHex(QByteArray::number(id, 16).rightJustified(8, '0')) + data);
  };
  EXPECT_EQ(words(0x0A2986C2, {}), "Anmeldung (Befehl)");
  EXPECT_EQ(words(0x0A001234, {}), "die Zentrale stellt sich vor (Frage)");
  EXPECT_EQ(words(0x162186C2, hex("123403001D000000")),
            "CV 29 lesen, Fahrzeug 3 (0: Programmiergleis) (Befehl)");
  EXPECT_EQ(words(0x162586C2, hex("123403001D0000000E")),
            "CV 29 schreiben, Fahrzeug 3 (0: Programmiergleis), Wert 14 (Befehl)");
  EXPECT_EQ(words(0x021186C2, hex("03000500 0100")), "F5 von Fahrzeug 3 (Befehl)");
  EXPECT_EQ(words(0x7F0086C2, {}), "");
}

}  // namespace
}  // namespace lokari
