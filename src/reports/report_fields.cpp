#include "reports/report_fields.h"

#include <array>

namespace lokari {
namespace {

QString flag(bool on) {
  return on ? QStringLiteral("1") : QString();
}

struct ReportField {
  const char16_t* name;
  QString (*value)(const ReportFacts& facts);
};

constexpr std::array kReportFields{
    ReportField{u"titel", [](const ReportFacts& facts) { return facts.title; }},
    ReportField{u"datum",
                [](const ReportFacts& facts) { return facts.made.toString(u"dd.MM.yyyy"); }},
    ReportField{u"uhrzeit", [](const ReportFacts& facts) { return facts.made.toString(u"HH:mm"); }},
    ReportField{u"auswahl", [](const ReportFacts& facts) { return facts.selection; }},
    ReportField{u"datenbank", [](const ReportFacts& facts) { return facts.database; }},
    ReportField{u"anzahl",
                [](const ReportFacts& facts) { return QString::number(facts.vehicles); }},
    ReportField{u"seite", [](const ReportFacts& facts) { return QString::number(facts.page); }},
    ReportField{u"erste_seite", [](const ReportFacts& facts) { return flag(facts.isFirstPage); }},
    ReportField{u"letzte_seite", [](const ReportFacts& facts) { return flag(facts.isLastPage); }},
};

}  // namespace

ReportFields reportFields(const TableInfo& vehicles) {
  ReportFields fields;
  for (const ReportField& field : kReportFields) fields.report << QString::fromUtf16(field.name);
  for (const ColumnInfo& column : vehicles.columns) {
    if (column.isText() || column.isNumeric()) fields.vehicle << column.name;
  }
  for (const char16_t* name : {kMakerField, kTypeField, kNumberField, kEvenField}) {
    fields.vehicle << QString::fromUtf16(name);
  }
  return fields;
}

std::vector<std::string> reportValues(const ReportFacts& facts, ReportEncoding encode) {
  std::vector<std::string> values;
  values.reserve(kReportFields.size());
  for (const ReportField& field : kReportFields) values.push_back(encode(field.value(facts)));
  return values;
}

std::string htmlEncoded(const QString& value) {
  QString text = value.toHtmlEscaped();
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  return text.replace(u'\n', QStringLiteral("<br>")).toStdString();
}

}  // namespace lokari
