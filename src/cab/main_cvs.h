// Which CVs a decoder description offers for programming on the main track. The cab reads less of a
// description file than the decoder window does, and by rules of its own.
#pragma once

#include <QString>

#include <vector>

namespace lokari {

struct MainCV {
  int number = 0;  ///< 2 to 4863
  QString name;
  QString range;
  QString hint;
};

struct MainCVs {
  std::vector<MainCV> entries;
  int progMode = 0;       ///< keeps its value only when it is the last key of the file
  bool progMain = false;  ///< what the last PROGMAIN said
};

/// Reads a description file's text. CVs above `highestCv` are beyond the station.
MainCVs readMainCVs(const QString& text, int highestCv);

}  // namespace lokari
