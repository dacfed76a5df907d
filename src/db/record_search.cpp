#include "db/record_search.h"

#include <algorithm>

#include "db/column_captions.h"
#include "db/form_fields.h"
#include "db/jet_sql.h"
#include "db/storage_error.h"

namespace lokari {
namespace {

/// The controls that take part, in the order of their conditions. Reports and saved filters show
/// that order to the user: it is not the order of the tab key.
constexpr const char16_t* kQueryControls[] = {
    u"md_user_3", u"md_user_2",   u"md_user_1", u"dc_coll",  u"md_scale", u"dc_type",  u"md_price",
    u"md_catno",  u"fz_maxspeed", u"fz_opcode", u"fz_code",  u"md_info",  u"fz_lname", u"st_group",
    u"st_sname",  u"dc_adr",      u"md_motor",  u"md_manuf", u"fz_era",   u"fz_line",  u"fz_ftype",
};

bool comparesText(const TableInfo& vehicles, const FormField& field) {
  if (field.binding == Binding::DropDown) return true;
  const ColumnInfo* column = vehicles.column(QString::fromUtf16(field.column));
  return column != nullptr && column->isText();
}

void append(QString& condition, const QString& term) {
  if (!condition.isEmpty()) condition += QStringLiteral(" AND ");
  condition += term;
}

SearchCondition conditionOf(const QList<SearchTerm>& terms) {
  SearchCondition result;
  for (const SearchTerm& term : terms) {
    const bool isPattern = term.isText && term.wanted.contains(u'*');
    const QString compares = isPattern ? QStringLiteral(" LIKE ") : QStringLiteral("=");
    const QString quote = term.isText ? QStringLiteral("\"") : QString();
    const QString reportQuote = term.isText ? QStringLiteral("'") : QString();
    append(result.sql, term.column + compares + quote + term.wanted + quote);
    append(result.report, QStringLiteral("{LOCO_DAT.") + term.column + u'}' + compares +
                              reportQuote + term.wanted + reportQuote);
  }
  result.terms = terms;
  return result;
}

bool isUnderstood(const TableInfo& vehicles, const SearchCondition& condition) {
  try {
    translateCondition(vehicles, condition.sql);
    return true;
  } catch (const StorageError&) {
    return false;
  }
}

/// The first sign that stops a text or a number.
QString faultySign(const SearchTerm& term) {
  const QStringView known = term.isText ? QStringView(u"\"[") : QStringView(u"0123456789.,-");
  const auto* const sign = std::find_if(term.wanted.begin(), term.wanted.end(), [&](QChar each) {
    return known.contains(each) == term.isText;
  });
  if (sign != term.wanted.end()) return *sign;
  // All of them belong to numbers, but not so many.
  const qsizetype last = std::max(term.wanted.lastIndexOf(u','), term.wanted.lastIndexOf(u'.'));
  return last < 0 ? term.wanted.right(1) : term.wanted.mid(last, 1);
}

QString faultIn(const SearchTerm& term) {
  const QString sign = faultySign(term);
  QString why = QStringLiteral("Hier steht eine Zahl, ohne Stern.");
  if (term.isText && sign == u'[') {
    why = QStringLiteral("Eine eckige Klammer zählt Zeichen auf und endet mit ].");
  } else if (term.isText) {
    why = QStringLiteral("Anführungszeichen kann ein gesuchter Text nicht enthalten.");
  }
  return QStringLiteral("Im Feld \"%1\" passt das Zeichen %2 nicht. %3")
      .arg(captionOf(term.column), sign, why);
}

}  // namespace

SearchCondition searchCondition(const TableInfo& vehicles,
                                const std::function<QString(const QString& control)>& text) {
  QList<SearchTerm> terms;
  for (const char16_t* control : kQueryControls) {
    const QString wanted = text(QString::fromUtf16(control));
    const FormField* field = formField(control);
    if (wanted.isEmpty() || field == nullptr) continue;
    terms.append({QString::fromUtf16(field->column), wanted, comparesText(vehicles, *field)});
  }
  return conditionOf(terms);
}

SearchCondition withStars(const TableInfo& vehicles, const SearchCondition& condition) {
  QList<SearchTerm> terms = condition.terms;
  bool widened = false;
  for (SearchTerm& term : terms) {
    if (!term.isText || term.wanted.contains(u'*')) continue;
    term.wanted = u'*' + term.wanted + u'*';
    widened = true;
  }
  const SearchCondition result = conditionOf(terms);
  return widened && isUnderstood(vehicles, result) ? result : SearchCondition();
}

QString searchFault(const TableInfo& vehicles, const SearchCondition& condition) {
  const auto faulty = std::find_if(
      condition.terms.begin(), condition.terms.end(),
      [&](const SearchTerm& term) { return !isUnderstood(vehicles, conditionOf({term})); });
  return faulty == condition.terms.end() ? QString() : faultIn(*faulty);
}

}  // namespace lokari
