#include "db/record_search.h"

#include "db/form_fields.h"

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

}  // namespace

SearchCondition searchCondition(const TableInfo& vehicles,
                                const std::function<QString(const QString& control)>& text) {
  SearchCondition result;
  for (const char16_t* control : kQueryControls) {
    const QString wanted = text(QString::fromUtf16(control));
    const FormField* field = formField(control);
    if (wanted.isEmpty() || field == nullptr) continue;
    const bool isText = comparesText(vehicles, *field);
    const bool isPattern = isText && wanted.contains(u'*');
    const QString column = QString::fromUtf16(field->column);
    const QString compares = isPattern ? QStringLiteral(" LIKE ") : QStringLiteral("=");
    const QString quote = isText ? QStringLiteral("\"") : QString();
    const QString reportQuote = isText ? QStringLiteral("'") : QString();
    append(result.sql, column + compares + quote + wanted + quote);
    append(result.report, QStringLiteral("{LOCO_DAT.") + column + u'}' + compares + reportQuote +
                              wanted + reportQuote);
  }
  return result;
}

}  // namespace lokari
