// What a message is, in words: the heads of a family's messages and the numbers inside of them as
// rows of a table.
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <span>

namespace lokari {

/// A number inside a message.
struct WordsPart {
  int at = -1;    ///< its first byte; -1 for none
  int bytes = 1;  ///< 1 or 2
  int mask = 0xFFFF;
  int plus = 0;           ///< added behind the mask
  bool lowFirst = false;  ///< of two bytes
};

struct WordsRow {
  const char* head;       ///< how the message begins: hexadecimal, "." for any digit
  const char16_t* words;  ///< German; %1, %2 and %3 stand for the parts
  std::array<WordsPart, 3> parts{};
};

/// The words of the first row whose head the message has; empty when none has it, which leaves the
/// bytes to speak for themselves. A part that the message is too short for is "?".
QString wordsOf(std::span<const WordsRow> rows, const QByteArray& message);

/// "x": the printable characters of a text message between quotes, others left out.
QString quoted(const QByteArray& text);

/// Where a line of text ends, the line ends around it included; 0 when its end is not there yet.
qsizetype lineLength(const QByteArray& text);

}  // namespace lokari
