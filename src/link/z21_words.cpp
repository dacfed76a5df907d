// The messages of the Z21 in words. A datagram may hold several; a message begins with its length
// and its kind, two bytes each.
#include "base/bytes.h"
#include "link/family_words.h"
#include "link/message_words.h"

namespace lokari {
namespace {

constexpr WordsPart kVehicle{.at = 6, .bytes = 2, .mask = 0x3FFF};
constexpr WordsPart kStateOf{.at = 5, .bytes = 2, .mask = 0x3FFF};
constexpr WordsPart kCv{.at = 6, .bytes = 2, .plus = 1};

// clang-format off
constexpr std::array kSent{
    WordsRow{".. .. 10 00", u"fragt nach der Seriennummer"},
    WordsRow{".. .. 18 00", u"fragt nach Sperren"},
    WordsRow{".. .. 1A 00", u"fragt nach Hardware und Firmware"},
    WordsRow{".. .. 30 00", u"meldet sich ab"},
    WordsRow{".. .. 50 00", u"bestellt Meldungen"},
    WordsRow{".. .. 51 00", u"fragt nach den bestellten Meldungen"},
    WordsRow{".. .. 85 00", u"fragt nach dem Systemzustand"},
    WordsRow{".. .. 40 00 21 21", u"fragt nach der Version"},
    WordsRow{".. .. 40 00 21 24", u"fragt nach dem Zustand"},
    WordsRow{".. .. 40 00 21 80", u"Gleis aus"},
    WordsRow{".. .. 40 00 21 81", u"Gleis ein"},
    WordsRow{".. .. 40 00 80", u"hält alle Fahrzeuge an"},
    WordsRow{".. .. 40 00 F1 0A", u"fragt nach der Firmware"},
    WordsRow{".. .. 40 00 23 11", u"liest CV %1", {{kCv}}},
    WordsRow{".. .. 40 00 24 12", u"schreibt CV %1 = %2", {{kCv, {.at = 8}}}},
    WordsRow{".. .. 40 00 E6 30", u"Hauptgleis, Fahrzeug %1: CV %2, Wert %3",
             {{kVehicle, {.at = 8, .bytes = 2, .mask = 0x03FF, .plus = 1}, {.at = 10}}}},
    WordsRow{".. .. 40 00 E3 F0", u"fragt nach Fahrzeug %1", {{kVehicle}}},
    WordsRow{".. .. 40 00 E4 1.", u"fährt Fahrzeug %1", {{kVehicle}}},
    WordsRow{".. .. 40 00 E4 F8", u"schaltet F%2 von Fahrzeug %1", {{kVehicle, {.at = 8, .mask = 0x3F}}}},
    WordsRow{".. .. 40 00 43", u"fragt nach Ausgang %1", {{{.at = 5, .bytes = 2}}}},
    WordsRow{".. .. 40 00 53 .. .. 80", u"beendet den Impuls an Ausgang %1", {{{.at = 5, .bytes = 2}}}},
    WordsRow{".. .. 40 00 53 .. .. 81", u"beendet den Impuls an Ausgang %1", {{{.at = 5, .bytes = 2}}}},
    WordsRow{".. .. 40 00 53", u"schaltet Ausgang %1", {{{.at = 5, .bytes = 2}}}},
};

constexpr std::array kReceived{
    WordsRow{".. .. 10 00", u"Seriennummer"},
    WordsRow{".. .. 18 00", u"Sperren"},
    WordsRow{".. .. 1A 00", u"Hardware und Firmware"},
    WordsRow{".. .. 51 00", u"bestellte Meldungen"},
    WordsRow{".. .. 84 00", u"Systemzustand"},
    WordsRow{".. .. 40 00 61 00", u"das Gleis ist aus"},
    WordsRow{".. .. 40 00 61 01", u"das Gleis ist ein"},
    WordsRow{".. .. 40 00 61 02", u"Programmiermodus ein"},
    WordsRow{".. .. 40 00 61 08", u"Kurzschluss auf dem Gleis"},
    WordsRow{".. .. 40 00 61 12", u"Kurzschluss beim Programmieren"},
    WordsRow{".. .. 40 00 61 13", u"kein Decoder oder keine Antwort"},
    WordsRow{".. .. 40 00 61 82", u"die Zentrale kennt den Befehl nicht"},
    WordsRow{".. .. 40 00 62 22", u"Zustand"},
    WordsRow{".. .. 40 00 63 21", u"Version"},
    WordsRow{".. .. 40 00 64 14", u"Ergebnis: CV %1 hat %2", {{kCv, {.at = 8}}}},
    WordsRow{".. .. 40 00 81 00", u"alle Fahrzeuge angehalten"},
    WordsRow{".. .. 40 00 EF", u"Zustand von Fahrzeug %1", {{kStateOf}}},
    WordsRow{".. .. 40 00 43", u"Zustand von Ausgang %1", {{{.at = 5, .bytes = 2}}}},
    WordsRow{".. .. 40 00 F3 0A", u"Firmware"},
};
// clang-format on

qsizetype whole(const QByteArray& datagram) {
  const int low = byteAt(datagram, 0);
  const int high = byteAt(datagram, 1);
  const qsizetype size = high < 0 ? 0 : low + 256 * high;
  // What is no message leaves no way to find the next one.
  return size < 4 || size > datagram.size() ? datagram.size() : size;
}

qsizetype wholeReceived(const QByteArray& datagram, const QByteArray&) {
  return whole(datagram);
}

QString sent(const QByteArray& message) {
  return wordsOf(kSent, message);
}

QString received(const QByteArray& message, const QByteArray&) {
  return wordsOf(kReceived, message);
}

}  // namespace

const FamilyWords& z21Words() {
  static constexpr FamilyWords kWords{whole, wholeReceived, sent, received};
  return kWords;
}

}  // namespace lokari
