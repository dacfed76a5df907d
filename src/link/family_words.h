// What the families say about their messages: where one ends, and what it is. The trace asks; no
// protocol does, and nothing that is sent or read depends on it.
#pragma once

#include <QByteArray>
#include <QString>

#include "base/station_kind.h"

namespace lokari {

/// A function that is null leaves every piece as it came, without words. On the CAN bus a message
/// is its identifier's four bytes, high byte first, and its data.
struct FamilyWords {
  /// Bytes of the first whole message of what was sent; 0 while more of it must come. Null where
  /// each write is one.
  qsizetype (*wholeSent)(const QByteArray& sent) = nullptr;
  /// The same of what came behind the message `asked`, the last one that was sent.
  qsizetype (*wholeReceived)(const QByteArray& received, const QByteArray& asked) = nullptr;
  /// German; empty for a message that the family does not know.
  QString (*sent)(const QByteArray& message) = nullptr;
  QString (*received)(const QByteArray& message, const QByteArray& asked) = nullptr;
};

/// Those of a family; of one without words of its own, none.
const FamilyWords& familyWords(ProtocolFamily family);

// Each stands in a file of its own.
const FamilyWords& lenzWords();
const FamilyWords& z21Words();
const FamilyWords& p50xWords();  ///< Intellibox and Tams MC
const FamilyWords& lidpWords();
const FamilyWords& mx1TextWords();
const FamilyWords& zimoBinaryWords();
const FamilyWords& mx10Words();

}  // namespace lokari
