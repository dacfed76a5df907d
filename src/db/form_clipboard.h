// What the form keeps of a copied record until the program ends.
#pragma once

#include <QHash>
#include <QString>

#include "db/cv_record.h"

namespace lokari {

struct FormClipboard {
  CvRecord cv;
  QHash<QString, QString> texts;  ///< by control
  int type = 0;                   ///< 0: it was no number
  bool picture = false;           ///< the picture is on the system's clipboard
};

}  // namespace lokari
