// What a description file says about whose decoder it describes. The loader passes over it.
#pragma once

#include <QString>

namespace lokari {

struct DecHeader {
  QString type;   ///< without blanks around it; empty when the file names none
  QString maker;  ///< the maker's number, of any length; empty when the file gives none
};

/// The type is what stands in the brackets of the first line that begins with them: "[MX640]". The
/// maker's number is the digits at the end of a line that begins with "MANUFACTURER" in any case,
/// blanks around the line not counting; of several such lines the last one with digits holds.
DecHeader readDecHeader(const QString& text);

/// The digits with which a text ends; empty when it ends in another character.
QString digitsAtEnd(const QString& text);

}  // namespace lokari
