// The messages of the MX10 in words: by group and command of the identifier. The command's low two
// bits are the mode, the words of which stand behind.
#include "base/bytes.h"
#include "link/family_words.h"
#include "link/message_words.h"

namespace lokari {
namespace {

/// Behind the identifier's four bytes.
constexpr WordsPart kVehicle{.at = 4, .bytes = 2, .lowFirst = true};
constexpr WordsPart kCvVehicle{.at = 6, .bytes = 2, .lowFirst = true};
constexpr WordsPart kCv{.at = 8, .bytes = 2, .lowFirst = true};

// clang-format off
constexpr std::array kMessages{
    WordsRow{"00 00", u"Zustand der Anlage"},
    WordsRow{"01 08", u"Ausgänge von Funktionsteil %1", {{kVehicle}}},
    WordsRow{"01 10", u"Ausgang von Funktionsteil %1", {{kVehicle}}},
    WordsRow{"02 08", u"Geschwindigkeit und Richtung von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"02 0C", u"Funktionen von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"02 10", u"F%2 von Fahrzeug %1", {{kVehicle, {.at = 6}}}},
    WordsRow{"02 14", u"Handbetrieb von Fahrzeug %1", {{kVehicle}}},
    WordsRow{"02 40", u"Fahrzeug %1 bleibt in Gebrauch", {{kVehicle}}},
    WordsRow{"06 00", u"Art des Gleises"},
    WordsRow{"0A 00", u"die Zentrale stellt sich vor"},
    WordsRow{"0A 18", u"Verbindung auf"},
    WordsRow{"0A 1C", u"Verbindung zu"},
    WordsRow{"0A 28", u"Anmeldung"},
    WordsRow{"16 00", u"Zustand des Programmiergleises"},
    WordsRow{"16 20", u"CV %2 lesen, Fahrzeug %1 (0: Programmiergleis)", {{kCvVehicle, kCv}}},
    WordsRow{"16 24", u"CV %2 schreiben, Fahrzeug %1 (0: Programmiergleis), Wert %3", {{kCvVehicle, kCv, {.at = 12}}}},
};
// clang-format on

constexpr std::array kModes{u" (Frage)", u" (Befehl)", u" (Meldung)", u" (Bestätigung)"};

QString wordsAbout(const QByteArray& told) {
  constexpr int kModeBits = 3;
  QByteArray message = told;
  const int second = byteAt(message, 1);
  if (second < 0) return {};
  message[1] = static_cast<char>(second & ~kModeBits);
  const QString words = wordsOf(kMessages, message);
  if (words.isEmpty()) return {};
  return words + QString::fromUtf16(kModes[static_cast<size_t>(second & kModeBits)]);
}

QString received(const QByteArray& message, const QByteArray&) {
  return wordsAbout(message);
}

}  // namespace

const FamilyWords& mx10Words() {
  static constexpr FamilyWords kWords{nullptr, nullptr, wordsAbout, received};
  return kWords;
}

}  // namespace lokari
