// The lines of the MX1's text protocol in words. Numbers are hexadecimal.
#include <array>

#include "base/numbers.h"
#include "link/family_words.h"
#include "link/message_words.h"

namespace lokari {
namespace {

struct LineRow {
  const char* head;
  const char16_t* words;
  int number = -1;  ///< where the two digits of %1 stand; -1 for none
  int second = -1;  ///< and those of %2
};

// clang-format off
constexpr std::array kSent{
    LineRow{"QN",  u"liest CV %1", 2},
    LineRow{"RN",  u"schreibt CV %1 = %2", 2, 4},
    LineRow{"REN", u"verlässt das Programmieren"},
    LineRow{"RE",  u"verlässt das Programmieren"},
    LineRow{"L",   u"schreibt eine CV auf dem Hauptgleis"},
    LineRow{"E",   u"fragt nach dem Index einer langen Adresse"},
    LineRow{"AFN", u"fragt nach Fahrzeug %1", 3},
    LineRow{"FN",  u"fährt Fahrzeug %1", 2},
    LineRow{"SS",  u"Gleis aus"},
    LineRow{"SE",  u"Gleis ein"},
    LineRow{"AWN", u"fragt nach den Ausgängen von Funktionsteil %1", 3},
    LineRow{"MN",  u"schaltet einen Ausgang von Funktionsteil %1", 2},
    LineRow{"Z",   u"fragt nach dem Zustand"},
};

constexpr std::array kReceived{
    LineRow{"QN00", u"Ergebnis: %1", 6},
    LineRow{"QN",   u"nicht gelesen oder geschrieben, Status %1", 2},
    LineRow{"???",  u"Ausgang nicht geschaltet"},
    LineRow{"??",   u"Adresse gesperrt"},
    LineRow{"AFN",  u"Zustand von Fahrzeug %1", 3},
    LineRow{"AWN",  u"Ausgänge von Funktionsteil %1", 3},
    LineRow{"E",    u"Index einer langen Adresse"},
    LineRow{"Z",    u"Zustand"},
};
// clang-format on

QString numberAt(const QByteArray& line, int at) {
  const auto number = parseHex(QString::fromLatin1(line.mid(at, 2)));
  return number ? QString::number(*number) : QStringLiteral("?");
}

template <class Rows>
QString wordsIn(const Rows& rows, const QByteArray& message) {
  const QByteArray line = message.trimmed();
  if (line.isEmpty()) return {};
  for (const LineRow& row : rows) {
    if (!line.startsWith(row.head)) continue;
    QString words = QString::fromUtf16(row.words);
    if (row.number >= 0) words = words.arg(numberAt(line, row.number));
    if (row.second >= 0) words = words.arg(numberAt(line, row.second));
    return quoted(line) + u' ' + words;
  }
  return quoted(line);
}

QString sent(const QByteArray& message) {
  const bool wakes = message == "\r";
  return wakes ? QStringLiteral("weckt das Basisgerät") : wordsIn(kSent, message);
}

QString received(const QByteArray& message, const QByteArray&) {
  return wordsIn(kReceived, message);
}

qsizetype whole(const QByteArray& received, const QByteArray&) {
  return lineLength(received);
}

}  // namespace

const FamilyWords& mx1TextWords() {
  static constexpr FamilyWords kWords{nullptr, whole, sent, received};
  return kWords;
}

}  // namespace lokari
