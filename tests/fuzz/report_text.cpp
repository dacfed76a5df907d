// What users write for reports: templates, selection formulas, and values on their way into a table
// file.
#include <QTemporaryFile>

#include <cstdlib>

#include "db/jet_sql.h"
#include "reports/csv_text.h"
#include "reports/report_error.h"
#include "reports/report_template.h"
#include "reports/selection_formula.h"

using namespace lokari;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

TableInfo vehicles() {
  TableInfo table;
  table.name = QStringLiteral("LOCO_DAT");
  table.columns = {ColumnInfo::declared(QStringLiteral("DC_ADR"), QStringLiteral("SMALLINT")),
                   ColumnInfo::declared(QStringLiteral("ST_SNAME"), QStringLiteral("VARCHAR(6)")),
                   ColumnInfo::declared(QStringLiteral("MD_PIC"), QStringLiteral("BLOB"))};
  return table;
}

/// What is no condition of the query language is no formula either.
void tryFormula(const QString& text) {
  const TableInfo table = vehicles();
  try {
    translateCondition(table, formulaCondition(table, text));
    formulaInWords(table, text);
  } catch (const ReportError&) {
    // Refused.
  }
}

/// A template is refused, or renders; the values come out of it as they are.
void tryTemplate(const QByteArray& text) {
  QTemporaryFile file;
  require(file.open() && file.write(text) == text.size() && file.flush());
  const std::string value = "{{DC_ADR}}<>";
  try {
    const ReportTemplate report(
        file.fileName(),
        {{QStringLiteral("titel")}, {QStringLiteral("DC_ADR"), QStringLiteral("ST_SNAME")}});
    for (const size_t count : {0, 2}) {
      ReportData data;
      data.report = {"Titel"};
      data.count = count;
      data.value = [&](size_t, size_t field) -> const std::string& {
        require(field < static_cast<size_t>(report.usedFields().size()));
        return value;
      };
      report.render(data);
    }
  } catch (const ReportError&) {
    // Refused.
  }
}

/// The cells of a table file's first line, read by the common rule.
std::vector<std::string> cells(const QByteArray& line) {
  std::vector<std::string> found{{}};
  bool inQuotes = false;
  for (qsizetype i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (inQuotes && c == '"' && i + 1 < line.size() && line[i + 1] == '"') {
      found.back() += line[++i];
    } else if (c == '"') {
      inQuotes = !inQuotes;
    } else if (!inQuotes && c == ';') {
      found.emplace_back();
    } else if (!inQuotes && c == '\r') {
      require(line.mid(i) == "\r\n");
      break;
    } else {
      found.back() += c;
    }
  }
  return found;
}

/// Two values come out of a table file as they went in, control characters aside.
void tryCells(const QString& text) {
  const QString values[] = {text.left(text.size() / 2), text.mid(text.size() / 2)};
  const QByteArray line =
      csvQuoted(csvGuarded(values[0]) + ';' + csvGuarded(values[1]) + '\n', ';');
  const std::vector<std::string> read = cells(line);
  require(read.size() == 2);
  for (size_t i = 0; i < read.size(); ++i) {
    std::string plain = values[i].toStdString();
    for (char& c : plain) {
      const bool isControl = static_cast<unsigned char>(c) < ' ';
      if (isControl && c != '\t' && c != '\r' && c != '\n') c = ' ';
    }
    require(read[i] == plain);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString text = QString::fromUtf8(bytes);
  tryFormula(text);
  tryTemplate(bytes);
  tryCells(text);
  return 0;
}
