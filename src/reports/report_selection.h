// Which vehicles a report is about.
#pragma once

#include <QString>

namespace lokari {

/// Both say the same of the table LOCO_DAT, once for each reader.
struct ReportSelection {
  QString query;    ///< in the storage's language, with its order: for the sheets
  QString formula;  ///< the report writer's selection formula: for list and CSV; empty for all
};

}  // namespace lokari
