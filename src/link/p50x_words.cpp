// The messages of the Intellibox and the Tams MC in words. A command stands behind the letter "x"
// and goes out byte by byte; from 80 on it is a binary one, else a text up to a carriage return.
// What a reply is follows from the command that it answers.
#include <algorithm>

#include "base/bytes.h"
#include "link/family_words.h"
#include "link/message_words.h"

namespace lokari {
namespace {

constexpr int kFirstBinary = 0x80;
constexpr int kNoEvent = 0xF5;

/// How long the reply to a command is.
enum class ReplyForm {
  Code,    ///< one byte
  Data,    ///< behind 00 as many bytes as the row tells; else a code alone
  Status,  ///< one byte, and another one when bit 7 is set
  Open,    ///< up to the next command: the stations differ
  Event,   ///< F5 alone, or behind its length
};

struct CommandRow {
  int code;
  int arguments;  ///< bytes
  ReplyForm form;
  int data;
  WordsRow sent;
  const char16_t* reply;
};

/// Behind "x" and the command.
constexpr WordsPart kVehicle{.at = 2, .bytes = 2, .lowFirst = true};
constexpr WordsPart kCv{.at = 2, .bytes = 2, .lowFirst = true};
constexpr WordsPart kValue{.at = 4};

// clang-format off
constexpr std::array kCommands{
    CommandRow{0x80, 4, ReplyForm::Code, 0,  {"", u"fährt Fahrzeug %1", {{kVehicle}}}, u""},
    CommandRow{0x84, 2, ReplyForm::Data, 3,  {"", u"fragt nach Fahrzeug %1", {{kVehicle}}}, u"Geschwindigkeit, Richtung, F0 bis F4"},
    CommandRow{0x85, 2, ReplyForm::Data, 4,  {"", u"fragt nach dem Format von Fahrzeug %1", {{kVehicle}}}, u"Format und Fahrstufen"},
    CommandRow{0x88, 3, ReplyForm::Code, 0,  {"", u"F1 bis F8 von Fahrzeug %1", {{kVehicle}}}, u""},
    CommandRow{0x89, 3, ReplyForm::Code, 0,  {"", u"F9 bis F16 von Fahrzeug %1", {{kVehicle}}}, u""},
    CommandRow{0x8A, 4, ReplyForm::Code, 0,  {"", u"F17 bis F32 von Fahrzeug %1", {{kVehicle}}}, u""},
    CommandRow{0x8C, 2, ReplyForm::Data, 1,  {"", u"fragt nach F1 bis F8 von Fahrzeug %1", {{kVehicle}}}, u"F1 bis F8"},
    CommandRow{0x8D, 2, ReplyForm::Data, 1,  {"", u"fragt nach F9 bis F16 von Fahrzeug %1", {{kVehicle}}}, u"F9 bis F16"},
    CommandRow{0x8E, 2, ReplyForm::Data, 2,  {"", u"fragt nach F17 bis F32 von Fahrzeug %1", {{kVehicle}}}, u"F17 bis F32"},
    CommandRow{0x90, 2, ReplyForm::Code, 0,  {"", u"schaltet Ausgang %1", {{{.at = 2, .bytes = 2, .mask = 0x07FF, .lowFirst = true}}}}, u""},
    CommandRow{0x94, 2, ReplyForm::Data, 1,  {"", u"fragt nach Ausgang %1", {{kVehicle}}}, u"Ausgang"},
    CommandRow{0x95, 1, ReplyForm::Data, 1,  {"", u"fragt nach der Gruppe %1 der Ausgänge", {{{.at = 2}}}}, u"acht Ausgänge"},
    CommandRow{0xA0, 0, ReplyForm::Open, 0,   {"", u"fragt nach der Version", {}}, u"Version"},
    CommandRow{0xA2, 0, ReplyForm::Status, 0, {"", u"fragt nach dem Zustand", {}}, u"Zustand"},
    CommandRow{0xA5, 0, ReplyForm::Code, 0,  {"", u"hält alle Fahrzeuge an", {}}, u""},
    CommandRow{0xA6, 0, ReplyForm::Code, 0,  {"", u"Gleis aus", {}}, u""},
    CommandRow{0xA7, 0, ReplyForm::Code, 0,  {"", u"gibt die Anlage frei", {}}, u""},
    CommandRow{0xCE, 0, ReplyForm::Event, 0, {"", u"fragt nach dem Ergebnis des Programmierens", {}}, u"Ergebnis des Programmierens"},
    CommandRow{0xDA, 4, ReplyForm::Code, 0,  {"", u"Hauptgleis, Fahrzeug %1: liest CV %2", {{kVehicle, {.at = 4, .bytes = 2, .lowFirst = true}}}}, u""},
    CommandRow{0xDE, 5, ReplyForm::Code, 0,  {"", u"Hauptgleis, Fahrzeug %1: schreibt CV %2 = %3", {{kVehicle, {.at = 4, .bytes = 2, .lowFirst = true}, {.at = 6}}}}, u""},
    CommandRow{0xE1, 0, ReplyForm::Code, 0,  {"", u"Programmieren ein", {}}, u""},
    CommandRow{0xE2, 0, ReplyForm::Code, 0,  {"", u"Programmieren aus", {}}, u""},
    CommandRow{0xEC, 2, ReplyForm::Code, 0,  {"", u"liest Register %1", {{kCv}}}, u""},
    CommandRow{0xED, 3, ReplyForm::Code, 0,  {"", u"schreibt Register %1 = %2", {{kCv, kValue}}}, u""},
    CommandRow{0xEE, 2, ReplyForm::Code, 0,  {"", u"liest CV %1 (paged)", {{kCv}}}, u""},
    CommandRow{0xEF, 3, ReplyForm::Code, 0,  {"", u"schreibt CV %1 = %2 (paged)", {{kCv, kValue}}}, u""},
    CommandRow{0xF0, 2, ReplyForm::Code, 0,  {"", u"liest CV %1 (direct, Bytes)", {{kCv}}}, u""},
    CommandRow{0xF1, 3, ReplyForm::Code, 0,  {"", u"schreibt CV %1 = %2 (direct)", {{kCv, kValue}}}, u""},
    CommandRow{0xF2, 2, ReplyForm::Code, 0,  {"", u"liest CV %1 (direct)", {{kCv}}}, u""},
};

constexpr std::array kCodes{
    WordsRow{"00", u"angenommen"},
    WordsRow{"01", u"unbekannter Befehl oder Systemfehler"},
    WordsRow{"02", u"falscher Parameter"},
    WordsRow{"06", u"das Gleis ist aus"},
    WordsRow{"07", u"die Warteschlange der Ausgänge ist voll"},
    WordsRow{"08", u"die Warteschlange der Fahrzeuge ist voll"},
    WordsRow{"09", u"die Warteschlange der Ausgänge ist voll"},
    WordsRow{"0A", u"das Fahrzeug hat keinen Platz"},
    WordsRow{"0B", u"kein Platz frei"},
    WordsRow{"0C", u"die Adresse ist nicht erlaubt"},
    WordsRow{"0D", u"ein anderes Gerät hat das Fahrzeug"},
    WordsRow{"3F", u"nicht vorhanden"},
    WordsRow{"40", u"angenommen, die Warteschlange ist fast voll"},
    WordsRow{"41", u"angenommen, die Anlage ist angehalten"},
    WordsRow{"42", u"angenommen, das Gleis ist aus"},
    WordsRow{"80", u"beschäftigt"},
};

constexpr std::array kEvents{
    WordsRow{"F5", u"noch kein Ergebnis"},
    WordsRow{"02 00", u"gelesen: %1", {{{.at = 2}}}},
    WordsRow{"01 00", u"geschrieben"},
    WordsRow{"01 FF", u"keine Antwort"},
    WordsRow{"01 FE", u"kein ACK vom Decoder"},
    WordsRow{"01 FD", u"Kurzschluss"},
    WordsRow{"01 FC", u"kein Decoder"},
    WordsRow{"01 FB", u"Fehler"},
    WordsRow{"01 FA", u"bitweise nicht lesbar"},
    WordsRow{"01 F4", u"abgebrochen"},
};
// clang-format on

/// The row of a command with its "x"; null for a text and for an unknown one.
const CommandRow* rowOf(const QByteArray& command) {
  const int code = byteAt(command, 1);
  for (const CommandRow& row : kCommands) {
    if (byteAt(command, 0) == 'x' && row.code == code) return &row;
  }
  return nullptr;
}

qsizetype wholeSent(const QByteArray& sent) {
  if (byteAt(sent, 0) != 'x') return lineLength(sent);
  const int code = byteAt(sent, 1);
  if (code < 0) return 0;
  if (code < kFirstBinary) return lineLength(sent);
  const CommandRow* row = rowOf(sent);
  // Where an unknown one ends shows when something is received.
  if (row == nullptr || sent.size() < row->arguments + 2) return 0;
  return row->arguments + 2;
}

qsizetype binaryLength(const CommandRow& row, const QByteArray& reply) {
  const int first = byteAt(reply, 0);
  switch (row.form) {
    case ReplyForm::Code:
      return 1;
    case ReplyForm::Data:
      return first == 0 ? row.data + 1 : 1;
    case ReplyForm::Status:
      return (first & 0x80) != 0 ? 2 : 1;
    case ReplyForm::Open:
      return 0;
    case ReplyForm::Event:
      return first == kNoEvent ? 1 : first + 1;
  }
  return 0;
}

qsizetype textLength(const QByteArray& reply) {
  const qsizetype bracket = reply.indexOf(']');
  if (bracket < 0) return 0;
  return bracket + (byteAt(reply, bracket + 1) == '\r' ? 2 : 1);
}

qsizetype wholeReceived(const QByteArray& reply, const QByteArray& asked) {
  const CommandRow* row = rowOf(asked);
  const qsizetype size = row != nullptr ? binaryLength(*row, reply) : textLength(reply);
  return size <= reply.size() ? size : 0;
}

QString sent(const QByteArray& message) {
  if (const CommandRow* row = rowOf(message)) return wordsOf(std::span(&row->sent, 1), message);
  const bool isText = byteAt(message, 1) < kFirstBinary;
  return isText ? QStringLiteral("Text ") + quoted(message) : QString();
}

QString received(const QByteArray& message, const QByteArray& asked) {
  const CommandRow* row = rowOf(asked);
  if (row == nullptr) return QStringLiteral("Text ") + quoted(message);
  if (row->form == ReplyForm::Event) return wordsOf(kEvents, message);
  const bool isCode =
      row->form == ReplyForm::Code || (row->form == ReplyForm::Data && byteAt(message, 0) != 0);
  return isCode ? wordsOf(kCodes, message) : QString::fromUtf16(row->reply);
}

}  // namespace

const FamilyWords& p50xWords() {
  static constexpr FamilyWords kWords{wholeSent, wholeReceived, sent, received};
  return kWords;
}

}  // namespace lokari
