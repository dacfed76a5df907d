// The frames of the Zimo binary protocol in words. A message is shown with its wrapping: 01 01, the
// body with its escapes, 17. Without the escapes the body is a sequence byte, a type byte, the
// command, and in what the station sends the sequence byte that it answers.
#include "base/bytes.h"
#include "link/family_words.h"
#include "link/message_words.h"
#include "link/zimo_binary_codec.h"

namespace lokari {
namespace {

constexpr int kWrapping = 2;  ///< 01 01
constexpr int kSequence = 1;

constexpr WordsPart kCv{.at = 4, .bytes = 2};
constexpr WordsPart kAddress{.at = 2, .bytes = 2, .mask = 0x3FFF};

// Behind the sequence byte: type, command.
// clang-format off
constexpr std::array kSent{
    WordsRow{"10 00", u"begrüßt die Zentrale"},
    WordsRow{"10 11 04 01", u"meldet sich an"},
    WordsRow{"10 11 04 00", u"meldet sich ab"},
    WordsRow{"10 02 00", u"hält die Anlage an"},
    WordsRow{"10 02 01", u"Gleis aus"},
    WordsRow{"10 02 02", u"Gleis ein"},
    WordsRow{"10 02 03", u"fragt nach dem Zustand des Gleises"},
    WordsRow{"10 03", u"fährt Fahrzeug %1", {{kAddress}}},
    WordsRow{"10 07", u"schaltet einen Ausgang von Funktionsteil %1", {{kAddress}}},
    WordsRow{"10 08", u"fragt nach Fahrzeug %1", {{kAddress}}},
    WordsRow{"10 09", u"fragt nach den Ausgängen von Funktionsteil %1", {{kAddress}}},
    WordsRow{"10 0D", u"fragt nach Gerät und Version"},
    WordsRow{"50", u"bestätigt den Empfang"},
};
/// The last byte is the checksum: a CV message with a value has seven behind the sequence byte.
constexpr WordsRow kReads{"10 13", u"liest CV %1", {{kCv}}};
constexpr WordsRow kWrites{"10 13 80 00", u"schreibt CV %1 = %2", {{kCv, {.at = 6}}}};
constexpr WordsRow kWritesMain{"10 13", u"Hauptgleis, Fahrzeug %1: schreibt CV %2 = %3", {{kAddress, kCv, {.at = 6}}}};
constexpr qsizetype kReadSize = 7;

constexpr std::array kReceived{
    WordsRow{"00 FF", u"ein Fahrzeug wurde woanders bedient"},
    WordsRow{"00 FE", u"ein Ausgang wurde woanders geschaltet"},
    WordsRow{"4. 02 .. 00", u"Zustand des Gleises"},
    WordsRow{"4. 08 .. 00", u"Zustand des Fahrzeugs"},
    WordsRow{"4. 09 .. 00", u"Zustand der Ausgänge"},
    WordsRow{"4. 0D .. 00", u"Gerät und Version"},
    WordsRow{"4. .. .. 00", u"angenommen"},
    WordsRow{"4. .. .. 34", u"angenommen"},
    WordsRow{"4. .. .. 04", u"beschäftigt"},
    WordsRow{"4. .. ..", u"abgelehnt, Grund %1", {{{.at = 3}}}},
};
constexpr WordsRow kResult{"2. 13", u"Ergebnis: CV %1 hat %2", {{{.at = 5, .bytes = 2}, {.at = 7}}}};
constexpr WordsRow kFailure{"2. 13", u"nicht gelesen oder geschrieben, Grund %1", {{{.at = 5}}}};
/// Type, command, sequence byte, address, CV, value, checksum.
constexpr qsizetype kResultSize = 9;
// clang-format on

/// Type, command and what follows, without escapes and without the closing 17.
QByteArray inside(const QByteArray& frame) {
  const QByteArray body = frame.mid(frame.indexOf(QByteArray(2, '\x01')) + kWrapping);
  return zbin::unescape(body.chopped(1)).mid(kSequence);
}

bool isFrame(const QByteArray& message) {
  return message.contains(QByteArray(2, '\x01')) && message.endsWith(zbin::kEnd);
}

QString wordsFor(const WordsRow& row, const QByteArray& message) {
  return wordsOf(std::span(&row, 1), message);
}

QString sent(const QByteArray& frame) {
  if (!isFrame(frame)) return {};
  const QByteArray message = inside(frame);
  const QString cvWords =
      message.size() <= kReadSize ? wordsFor(kReads, message) : wordsFor(kWrites, message);
  if (!cvWords.isEmpty()) return cvWords;
  const QString main = wordsFor(kWritesMain, message);
  return main.isEmpty() ? wordsOf(kSent, message) : main;
}

QString received(const QByteArray& frame, const QByteArray&) {
  if (!isFrame(frame)) return {};
  const QByteArray message = inside(frame);
  const QString result = wordsFor(message.size() < kResultSize ? kFailure : kResult, message);
  return result.isEmpty() ? wordsOf(kReceived, message) : result;
}

qsizetype whole(const QByteArray& received, const QByteArray&) {
  return received.indexOf(zbin::kEnd) + 1;
}

}  // namespace

const FamilyWords& zimoBinaryWords() {
  static constexpr FamilyWords kWords{nullptr, whole, sent, received};
  return kWords;
}

}  // namespace lokari
