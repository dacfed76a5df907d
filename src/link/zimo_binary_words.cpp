// The frames of the Zimo binary protocol in words. A message is shown with its wrapping: 01 01, the
// body with its escapes, 17. Without the escapes the body of a sent one is a sequence byte, a type
// byte, the command and its data.
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

// As zbin::takeApart() gives it: the command, and the data behind the header.
constexpr std::array kNews{
    WordsRow{"FF", u"ein Fahrzeug wurde woanders bedient"},
    WordsRow{"FE", u"ein Ausgang wurde woanders geschaltet"},
};
constexpr std::array kAnswers{
    WordsRow{"02 00", u"Zustand des Gleises"},
    WordsRow{"08 00", u"Zustand des Fahrzeugs"},
    WordsRow{"09 00", u"Zustand der Ausgänge"},
    WordsRow{"0D 00", u"Gerät und Version"},
    WordsRow{".. 00", u"angenommen"},
    WordsRow{".. 34", u"angenommen"},
    WordsRow{".. 04", u"beschäftigt"},
    WordsRow{"..", u"abgelehnt, Grund %1", {{{.at = 1}}}},
};
constexpr WordsRow kResult{"13", u"Ergebnis: CV %1 hat %2", {{{.at = 3, .bytes = 2}, {.at = 5}}}};
constexpr WordsRow kFailure{"13", u"nicht gelesen oder geschrieben, Grund %1", {{{.at = 3}}}};
constexpr qsizetype kAnswerSize = 2;
constexpr qsizetype kResultSize = 6;
// clang-format on

/// What stands between 01 01 and the end of the frame, which is part of it.
QByteArray bodyOf(const QByteArray& frame) {
  return frame.mid(frame.indexOf(QByteArray(2, '\x01')) + kWrapping);
}

bool isFrame(const QByteArray& message) {
  return message.contains(QByteArray(2, '\x01')) && message.endsWith(zbin::kEnd);
}

QString wordsFor(const WordsRow& row, const QByteArray& message) {
  return wordsOf(std::span(&row, 1), message);
}

QString sent(const QByteArray& frame) {
  if (!isFrame(frame)) return {};
  const QByteArray message = zbin::unescape(bodyOf(frame).chopped(1)).mid(kSequence);
  const QString cvWords =
      message.size() <= kReadSize ? wordsFor(kReads, message) : wordsFor(kWrites, message);
  if (!cvWords.isEmpty()) return cvWords;
  const QString main = wordsFor(kWritesMain, message);
  return main.isEmpty() ? wordsOf(kSent, message) : main;
}

QString received(const QByteArray& frame, const QByteArray&) {
  if (!isFrame(frame)) return {};
  const zbin::Reply reply = zbin::takeApart(bodyOf(frame));
  if (reply.kind == zbin::kUnasked) return wordsOf(kNews, reply.text);
  const WordsRow& outcome = reply.text.size() < kResultSize ? kFailure : kResult;
  const QString words = reply.text.size() > kAnswerSize ? wordsFor(outcome, reply.text) : QString();
  return words.isEmpty() ? wordsOf(kAnswers, reply.text) : words;
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
