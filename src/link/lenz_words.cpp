// The messages of the Lenz interfaces in words. On USB a message stands behind FF FE, an unasked
// one behind FF FD.
#include "base/bytes.h"
#include "link/family_words.h"
#include "link/lenz_codec.h"
#include "link/message_words.h"

namespace lokari {
namespace {

/// Vehicle address behind the command: the two high bits mark a long one.
constexpr WordsPart kVehicle{.at = 2, .bytes = 2, .mask = 0x3FFF};
/// Command and CV byte: from protocol 3.6 on the command's two low bits belong to the number.
constexpr WordsPart kWideCv{.at = 1, .bytes = 2, .mask = 0x03FF};

// clang-format off
constexpr std::array kSent{
    WordsRow{"21 10", u"fragt nach dem Ergebnis des Programmierens"},
    WordsRow{"21 21", u"fragt nach der Version der Zentrale"},
    WordsRow{"21 24", u"fragt nach dem Zustand der Zentrale"},
    WordsRow{"21 80", u"Gleis aus"},
    WordsRow{"21 81", u"normaler Betrieb, Gleis ein"},
    WordsRow{"80", u"hält alle Fahrzeuge an"},
    WordsRow{"92", u"hält Fahrzeug %1 an", {{{.at = 1, .bytes = 2, .mask = 0x3FFF}}}},
    WordsRow{"22 11", u"liest Register %1", {{{.at = 2}}}},
    WordsRow{"22 14", u"liest CV %1 (paged)", {{{.at = 2}}}},
    WordsRow{"22 15 00", u"liest CV 256 (direct)"},
    WordsRow{"22 15", u"liest CV %1 (direct)", {{{.at = 2}}}},
    WordsRow{"22 18 00", u"liest CV 1024"},
    WordsRow{"22 18", u"liest CV %1", {{kWideCv}}},
    WordsRow{"22 19", u"liest CV %1", {{kWideCv}}},
    WordsRow{"22 1A", u"liest CV %1", {{kWideCv}}},
    WordsRow{"22 1B", u"liest CV %1", {{kWideCv}}},
    WordsRow{"23 12", u"schreibt Register %1 = %2", {{{.at = 2}, {.at = 3}}}},
    WordsRow{"23 16", u"schreibt CV %1 = %2 (direct)", {{{.at = 2}, {.at = 3}}}},
    WordsRow{"23 17", u"schreibt CV %1 = %2 (paged)", {{{.at = 2}, {.at = 3}}}},
    WordsRow{"23 1C 00", u"schreibt CV 1024 = %1", {{{.at = 3}}}},
    WordsRow{"23 1C", u"schreibt CV %1 = %2", {{kWideCv, {.at = 3}}}},
    WordsRow{"23 1D", u"schreibt CV %1 = %2", {{kWideCv, {.at = 3}}}},
    WordsRow{"23 1E", u"schreibt CV %1 = %2", {{kWideCv, {.at = 3}}}},
    WordsRow{"23 1F", u"schreibt CV %1 = %2", {{kWideCv, {.at = 3}}}},
    WordsRow{"E6 30", u"Hauptgleis, Fahrzeug %1: CV %2, Wert %3",
             {{kVehicle, {.at = 4, .bytes = 2, .mask = 0x03FF, .plus = 1}, {.at = 6}}}},
    WordsRow{"A2", u"fragt nach Fahrzeug %1", {{{.at = 1}}}},
    WordsRow{"B3", u"fährt Fahrzeug %1", {{{.at = 1}}}},
    WordsRow{"E3 00", u"fragt nach Fahrzeug %1", {{kVehicle}}},
    WordsRow{"E3 09", u"fragt nach F13 bis F28 von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"E4 1.", u"fährt Fahrzeug %1", {{kVehicle}}},
    WordsRow{"E4 20", u"F0 bis F4 von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"E4 21", u"F5 bis F8 von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"E4 22", u"F9 bis F12 von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"E4 23", u"F13 bis F20 von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"E4 28", u"F21 bis F28 von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"42", u"fragt nach den Ausgängen der Gruppe %1", {{{.at = 1}}}},
    WordsRow{"52", u"schaltet einen Ausgang der Gruppe %1", {{{.at = 1}}}},
    WordsRow{"F0", u"fragt nach der Version des Interface"},
};

constexpr std::array kReceived{
    WordsRow{"01 01", u"das Interface hat eine andere Länge erwartet"},
    WordsRow{"01 02", u"das Interface hat keinen Kontakt zur Zentrale"},
    WordsRow{"01 03", u"unbekannter Fehler des Interface"},
    WordsRow{"01 04", u"an die Zentrale weitergegeben"},
    WordsRow{"01 05", u"die Zentrale spricht das Interface nicht mehr an"},
    WordsRow{"01 06", u"Puffer des Interface übergelaufen"},
    WordsRow{"01 07", u"die Zentrale spricht das Interface wieder an"},
    WordsRow{"01 08", u"zur Zeit sind keine Befehle möglich"},
    WordsRow{"01 09", u"falscher Parameter"},
    WordsRow{"01 0A", u"unerwartete Antwort der Zentrale"},
    WordsRow{"02", u"Version des Interface"},
    WordsRow{"61 00", u"das Gleis ist aus"},
    WordsRow{"61 01", u"normaler Betrieb, das Gleis ist ein"},
    WordsRow{"61 02", u"Programmiermodus ein, noch kein Ergebnis"},
    WordsRow{"61 08", u"Kurzschluss auf dem Gleis"},
    WordsRow{"61 11", u"bereit"},
    WordsRow{"61 12", u"Kurzschluss beim Programmieren"},
    WordsRow{"61 13", u"kein Decoder oder keine Antwort"},
    WordsRow{"61 1F", u"die Zentrale programmiert noch"},
    WordsRow{"61 80", u"Prüfsumme falsch angekommen"},
    WordsRow{"61 81", u"die Zentrale ist beschäftigt"},
    WordsRow{"61 82", u"der Befehl ist unbekannt oder zur Zeit nicht möglich"},
    WordsRow{"62 22", u"Zustand der Zentrale"},
    WordsRow{"63 10", u"Ergebnis: Register oder CV %1 hat %2", {{{.at = 2}, {.at = 3}}}},
    WordsRow{"63 14", u"Ergebnis: CV %1 hat %2", {{{.at = 2}, {.at = 3}}}},
    WordsRow{"63 15", u"Ergebnis: CV %1 hat %2", {{{.at = 2, .plus = 256}, {.at = 3}}}},
    WordsRow{"63 16", u"Ergebnis: CV %1 hat %2", {{{.at = 2, .plus = 512}, {.at = 3}}}},
    WordsRow{"63 17", u"Ergebnis: CV %1 hat %2", {{{.at = 2, .plus = 768}, {.at = 3}}}},
    WordsRow{"63 21", u"Version der Zentrale"},
    WordsRow{"81 00", u"alle Fahrzeuge angehalten"},
    WordsRow{"84", u"Zustand des Fahrzeugs"},
    WordsRow{"A4", u"Zustand des Fahrzeugs"},
    WordsRow{"E2", u"Zustand des Fahrzeugs (Mehrfachtraktion)"},
    WordsRow{"E3 40", u"ein anderes Gerät hat Fahrzeug %1 übernommen", {{kVehicle}}},
    WordsRow{"E3 52", u"F13 bis F28 des Fahrzeugs"},
    WordsRow{"E4", u"Zustand des Fahrzeugs"},
    WordsRow{"E5", u"Zustand des Fahrzeugs (Mehrfachtraktion)"},
    WordsRow{"E6", u"Zustand des Fahrzeugs (Doppeltraktion)"},
    WordsRow{"4.", u"Zustand der Ausgänge, Gruppe %1", {{{.at = 1}}}},
};
// clang-format on

bool isFrameEnd(int byte) {
  return byte == 0xFE || byte == 0xFD;
}

/// Bytes of the frame ahead of the header; one when its first byte went with the piece before.
qsizetype frameSize(const QByteArray& message) {
  if (isFrameEnd(byteAt(message, 0))) return 1;
  return byteAt(message, 0) == 0xFF && isFrameEnd(byteAt(message, 1)) ? 2 : 0;
}

qsizetype whole(const QByteArray& received, const QByteArray&) {
  const qsizetype frame = frameSize(received);
  const int header = byteAt(received, frame);
  // The next frame ends the rest of a message whose beginning went with the piece before.
  for (qsizetype at = frame + 1; at + 1 < received.size(); ++at) {
    const QByteArray rest = received.mid(at, 2);
    const bool isCut = frameSize(rest) == 2 && at < frame + (header & 0x0F) + 2;
    if (isCut && !lenz::isSound(received.mid(frame))) return at;
  }
  const qsizetype size = frame + (header & 0x0F) + 2;
  const bool isCutFrame = header == 0xFF && received.size() == 1;
  return header < 0 || isCutFrame || received.size() < size ? 0 : size;
}

QString sent(const QByteArray& message) {
  return wordsOf(kSent, message.mid(frameSize(message)));
}

QString received(const QByteArray& message, const QByteArray&) {
  return wordsOf(kReceived, message.mid(frameSize(message)));
}

}  // namespace

const FamilyWords& lenzWords() {
  static constexpr FamilyWords kWords{nullptr, whole, sent, received};
  return kWords;
}

}  // namespace lokari
