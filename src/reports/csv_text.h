// The text of a table file: cells between separators, one line a record.
//
// A template says which cells there are, and cannot break them: values come in guarded, are
// recognised as such in the finished text, and stand in quotes by the common rule wherever they
// need them.
#pragma once

#include <QByteArray>
#include <QString>

#include <string>

namespace lokari {

/// A value with a stand-in for each character that means something in a table file. Other control
/// characters become blanks.
std::string csvGuarded(const QString& value);

/// The same for a value that is text whatever it looks like: a spreadsheet must neither calculate
/// it nor take it for a number.
std::string csvGuardedText(const QString& value);

/// The separator that the text between a template's fields uses: the first semicolon, comma or tab
/// in it; a semicolon when it has none.
char csvSeparator(const QString& text);

/// The finished file's text, in UTF-8 as `text` is: a cell with the separator, a quote or a line
/// break stands in quotes, a quote inside is doubled, and lines end in CR LF. Cells that the
/// template has quoted itself are not quoted twice. A cell that begins with a text of
/// csvGuardedText() and would be calculated or taken for a number gets an apostrophe ahead.
QByteArray csvQuoted(const std::string& text, char separator);

}  // namespace lokari
