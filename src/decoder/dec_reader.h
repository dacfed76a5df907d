// The statements of a description file: its lines, joined and split at the first "=". The loader
// and the checker both read through it.
#pragma once

#include <QString>

#include <vector>

namespace lokari {

/// What is wrong with a file, for the person who wrote it.
struct DecFault {
  int line = 0;  ///< from 1; 0 for the file as a whole
  QString text;  ///< German, one sentence
};
using DecFaults = std::vector<DecFault>;

struct DecStatement {
  int line = 0;   ///< of its first line, from 1
  QString key;    ///< upper case, without blanks around it
  QString value;  ///< without blanks in front; those behind stay
};

/// A line without "=" is no statement. A line that ends in "-" goes on in the next one, once: a "-"
/// at the end of that one stays in the value. `faults`, when given, receives what looks like a
/// mistake.
std::vector<DecStatement> readStatements(const QString& text, DecFaults* faults = nullptr);

}  // namespace lokari
