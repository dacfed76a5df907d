// What a decoder description file says, in memory. It lives as long as the decoder window and is
// replaced by each load.
#pragma once

#include <QString>

#include <array>
#include <vector>

#include "decoder/cv_numbers.h"

namespace lokari {

/// One CV. An empty `cvName` is a CV that the decoder does not have.
struct CvDescriptor {
  QString cvName;
  QString cvRange;       ///< "0-255", "1,3,5-7"
  int cvDefault = 0;     ///< 256: no default, and read-only
  int cvPage = 0;        ///< 0 to 6; 0 and 1 are in the grid only
  QString cvTip;         ///< tool tip of the CV's field
  int cvMin = 0;         ///< CV 2, 5, 6 only
  int cvMax = 0;         ///< CV 2, 5, 6 only
  int cvRow = 0;         ///< row on the CV's page from 1, 0 for none
  QString cvBits;        ///< bit description, empty for none
  int cvBank = 0;        ///< 1 to 16; every other number is none
  bool cvRead = false;   ///< read mark
  bool cvWrite = false;  ///< write mark
  bool ofTable = false;  ///< made by the program for a point of the speed table

  bool exists() const { return !cvName.isEmpty(); }
  bool inBank() const { return cvBank >= 1 && cvBank <= 16; }
  static constexpr int kReadOnlyDefault = 256;
  bool hasDefault() const { return cvDefault < kReadOnlyDefault; }
};

/// What the user wants a job to do.
struct Ticks {
  bool read = false;
  bool write = false;

  bool& of(bool writing) { return writing ? write : read; }
  bool of(bool writing) const { return writing ? write : read; }
};

/// One bank of CVs, reached by writing `selectA` and `selectB` to the index registers.
struct CvBank {
  int selectA = 0;
  int selectB = 0;
  int bankBase = 0;   ///< first internal index
  int bankFirst = 0;  ///< lowest CV number seen in the bank
};

/// The pages of the decoder window that a CV line can name.
namespace page {
inline constexpr int kDrive = 2;
inline constexpr int kFirstRows = 3;
inline constexpr int kLast = 6;
}  // namespace page

/// A point of the decoder's factory speed table, to be taken over when a decoder is chosen.
struct SpeedTablePoint {
  CvIndex cv;
  int value = 0;
};

struct DecoderDescription {
  DecoderDescription() : cvInfo(kCvArraySize) {}

  // Under the names of their keys, with the values a file leaves that lacks them.
  int MAXADDRESS = 10239;
  int TYPE = 1;      ///< 3: no drive section
  int PROGMODE = 0;  ///< 0 direct, 1 paged, 2 register
  int SPEEDSTEPS = 28;
  bool DIRECTION = true;
  bool ANALOGMODE = true;
  bool SPEEDTABLE = true;
  bool EXTADDRESS = true;
  bool CONSADDRESS = true;
  bool DETECTPULSE = false;
  bool MANBIT = false;
  bool RAILCOM = false;
  int FAMILY = 0;  ///< 1: a speed table of 15 points
  int INTERNALSTEPS = 255;
  bool PROGMAIN = false;
  bool FUNCMAP = false;
  int FUNCTIONS = 8;
  int FUNCSHIFT = 3;
  int FUNCCOUNT = 4;
  int MAXTABS = 34;
  int MAPCVA = 0;
  int MAPCVB = 0;

  std::vector<CvDescriptor> cvInfo;  ///< index 0 to 4864, by internal index
  std::array<CvBank, 17> bankMap{};  ///< index 0 unused
  std::array<int, 7> pageCount{};    ///< CVs per page
  int lineCount = 0;                 ///< CV lines, those without effect included

  // Ticks of what is no CV of the description. They live here, like those of its CVs, so that all
  // of them end with it.
  Ticks address;
  Ticks table;  ///< CV 67 to 94 together

  bool hasSpeedTabValues = false;
  std::vector<SpeedTablePoint> speedTabValues;

  static constexpr int kTypeWithoutDrive = 3;

  CvDescriptor& info(CvIndex index) { return cvInfo[static_cast<size_t>(index.value())]; }
  const CvDescriptor& info(CvIndex index) const {
    return cvInfo[static_cast<size_t>(index.value())];
  }
  const CvBank& bankOf(const CvDescriptor& info) const {
    return bankMap[static_cast<size_t>(info.cvBank)];
  }
  /// Whether CV 67 to 94 are the user speed table, with a curve and a box of their own.
  bool hasTable() const { return SPEEDTABLE && TYPE != kTypeWithoutDrive; }
  /// Whether a job gets to a CV that is ticked. The address, CV 1, is none of these.
  bool reachable(CvIndex index) const;
  /// Points of the user speed table: 15 or 28.
  int tablePoints() const { return FAMILY == 1 ? 15 : 28; }
  /// The number that the decoder knows the CV by.
  CvNumber realNumber(CvIndex index) const;
  /// "30", or "257 (2)" for a CV in a bank.
  QString numberText(CvIndex index) const;
  /// "CV 30", or "CV 257 (2)" for a CV in a bank.
  QString cvText(CvIndex index) const;
  /// The CV that numberText() names; none for any other text.
  CvIndex getCvIndex(const QString& numberText) const;
};

}  // namespace lokari
