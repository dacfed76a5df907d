// The record form as a query form: each filled control becomes one condition.
//
// A condition is made twice, in the system's query language (see jet_sql.h) and as a selection
// formula for reports:
//
//   ST_SNAME LIKE "V*" AND DC_ADR=5
//   {LOCO_DAT.ST_SNAME} LIKE 'V*' AND {LOCO_DAT.DC_ADR}=5
//
// A text is compared by LIKE when it holds a "*". Texts go in as they were typed, a quote
// included: a condition that this breaks is refused where it is translated, and one that still is
// a condition can ask about vehicles only, since the language has no more to offer.
#pragma once

#include <QList>
#include <QString>

#include <functional>

#include "db/columns.h"

namespace lokari {

/// What one control asks for.
struct SearchTerm {
  QString column;
  QString wanted;  ///< as it was typed
  bool isText = false;
};

struct SearchCondition {
  QString sql;     ///< empty when no control is filled
  QString report;  ///< the same for reports
  QList<SearchTerm> terms;
};

/// The condition of a filled form. `vehicles` is the table LOCO_DAT, whose column types say what is
/// text; `text` gives a control's text. Terms stand in the order in which the controls are walked,
/// free fields first and the drop-downs of the vehicle last.
SearchCondition searchCondition(const TableInfo& vehicles,
                                const std::function<QString(const QString& control)>& text);

/// The same with every text inside of stars, so that it is found within a longer one too. Without a
/// text that has no star yet, and where the result is not understood, its `sql` is empty.
SearchCondition withStars(const TableInfo& vehicles, const SearchCondition& condition);

/// What a person has to mend in a condition that is not understood: the field's label, the sign in
/// it, and why. Empty when every field by itself is understood.
QString searchFault(const TableInfo& vehicles, const SearchCondition& condition);

}  // namespace lokari
