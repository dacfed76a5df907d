// The CVs of a decoder as its sheet lists them.
//
// The list comes from the decoder's description file, by rules of its own: no keyword replaces the
// description of the CV ahead of it, CVs are named once a line, and three CVs that the program
// knows by itself have their places among them.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

#include "decoder/cv_numbers.h"

namespace lokari {

/// Entries that a list holds at most.
inline constexpr int kPrintCvLimit = kCvArraySize;

struct PrintCv {
  int number = 0;  ///< as the decoder counts it, or as the description names it
  int bank = 0;    ///< 1 to 16; 0 for none
  CvIndex index;   ///< where the sets hold its value
  QString name;
  QString range;  ///< "0-255", "1,3,5-7"
  int standard = 0;

  /// "30", or "257 (2)" for a CV in a bank.
  QString numberText() const;
};

/// The list of a description's text, in the order of its lines:
///
/// - A line whose last character is "-" goes on in the next one, once. Then a line without "=" is
///   passed over.
/// - `SPEEDTABLE`, `CONSADDRESS`, `FAMILY`, `INTERNALSTEPS` and `SPEEDTABVALUES` mean what they do
///   to the decoder window, have the same defaults and hold wherever they stand; `CV_<number>` and
///   `CV_<number>_<1 to 16>` describe a CV by its name, range and default. Other keywords have no
///   effect.
/// - The numbers 0, 1, 7, 8, 17, 18, 19, 29 and 67 to 94 and those outside 0 to 4863 are not taken.
/// - 7, 19 (with `CONSADDRESS`) and 29 come ahead of the first CV above them or at the end, and so
///   do the points of the speed table, 67 to 81 or 94 (with `SPEEDTABLE`).
std::vector<PrintCv> printCvList(const QString& description);

/// The list of a decoder: of the file <folder>/<manufacturer>/<decoder>.dec in the first of
/// `folders` that has it. The manufacturer's folder may carry the first eight characters of the
/// name only, as the decoder window takes it. Empty when there is no such file.
std::vector<PrintCv> loadPrintCvList(const QStringList& folders, const QString& manufacturer,
                                     const QString& decoder);

}  // namespace lokari
