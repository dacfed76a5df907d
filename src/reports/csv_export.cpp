#include "reports/csv_export.h"

#include <QDir>
#include <QFileInfo>

#include "base/file_place.h"
#include "base/paths.h"
#include "base/progress.h"
#include "base/text_file.h"
#include "db/database.h"
#include "reports/csv_text.h"
#include "reports/report_error.h"
#include "reports/report_rows.h"

namespace lokari {
namespace {

constexpr size_t kVehiclesPerLook = 500;
constexpr double kWhole = 100;

struct Cancelled {};

void write(const QString& file, const QByteArray& text) {
  const QString fault = replaceFile(file, encodeMarkedUtf8({}) + text);
  if (fault.isEmpty()) return;
  throw ReportError(
      QStringLiteral("Fehler beim Schreiben von\r%1\rEine ältere Datei dieses Namens ist "
                     "unverändert.\r(%2)")
          .arg(QDir::toNativeSeparators(file), fault));
}

/// What a template says in a remark that wants its texts as they are.
constexpr char16_t kPlainTexts[] = u"Texte unverändert";

ReportEncodings encodings(const ReportTemplate& layout) {
  const bool isPlain =
      layout.remarks().contains(QString::fromUtf16(kPlainTexts), Qt::CaseInsensitive);
  return {.text = isPlain ? csvGuarded : csvGuardedText, .other = csvGuarded};
}

bool cancelled(Progress& progress) {
  progress.setStatus(QStringLiteral("Abgebrochen, es wurde keine Datei geschrieben."));
  return false;
}

}  // namespace

QString csvPlace(const QString& appPath) {
  return placeFor(appPath + QStringLiteral("/DB/LOKARIV3.CSV"));
}

FilePlace csvFilePlace(const QString& appPath, const QStringList& own) {
  const QString file = csvPlace(appPath);
  // A first export may come before the folder.
  QDir().mkpath(QFileInfo(file).path());
  try {
    return FilePlace::ofProgram(file, kCsvFile, own);
  } catch (const PlaceRefused& refused) {
    throw ReportError(refused.text());
  }
}

bool exportCsv(const ReportSource& source, const FilePlace& place, Progress& progress) {
  const QString& file = place.path();
  const ReportTemplate layout(source.templateFile, reportFields(vehicleColumns(source.database)));
  progress.setStatus(QStringLiteral("Die Fahrzeuge werden gelesen …"));
  const std::optional<ReportRows> rows =
      ReportRows::read(source, layout.usedFields(), encodings(layout), progress);
  if (!rows) return cancelled(progress);

  ReportData data;
  data.report = reportValues(reportFacts(source, rows->count()), csvGuarded);
  data.count = rows->count();
  data.value = [&](size_t row, size_t field) -> const std::string& {
    return rows->value(row, field);
  };
  data.next = [&](size_t row) {
    if (row % kVehiclesPerLook != 0) return;
    progress.setPercent(kWhole * static_cast<double>(row) / static_cast<double>(rows->count()));
    if (progress.cancelled()) throw Cancelled();
  };
  progress.setStatus(QStringLiteral("Die CSV-Datei wird geschrieben …"));
  try {
    write(file, csvQuoted(layout.render(data), csvSeparator(layout.vehicleText())));
  } catch (const Cancelled&) {
    return cancelled(progress);
  }
  progress.setPercent(kWhole);
  progress.setStatus(QStringLiteral("Export beendet,\r%1 Fahrzeuge in\r%2")
                         .arg(rows->count())
                         .arg(QDir::toNativeSeparators(file)));
  return true;
}

}  // namespace lokari
