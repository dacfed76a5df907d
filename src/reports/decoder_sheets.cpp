#include "reports/decoder_sheets.h"

#include <optional>

#include "base/progress.h"
#include "db/record_set.h"
#include "reports/report_error.h"
#include "reports/sheet_painter.h"
#include "reports/sheet_vehicle.h"

namespace lokari {

bool DecoderSheets::paint(QPagedPaintDevice& paper, Progress& progress) {
  RecordSet records;
  records.open(parts_.database, parts_.query);
  std::optional<SheetPainter> painter;
  for (; !records.EOF_(); records.MoveNext()) {
    if (progress.cancelled()) return false;
    progress.setPercent(100.0 * records.position() / records.count());
    if (!hasSheet(records)) continue;
    const SheetVehicle vehicle = readSheetVehicle(parts_.database, records);
    progress.setStatus(QStringLiteral("Adresse %1: %2").arg(vehicle.address, vehicle.shortName));
    if (!painter) painter.emplace(paper, parts_.date);
    if (parts_.printing) parts_.printing(vehicle.address);
    painter->paint(vehicle, cvsOf(vehicle.manufacturer, vehicle.decoder));
  }
  if (!painter) {
    throw ReportError(
        QStringLiteral("In der Auswahl ist kein Fahrzeug mit Decoder: Es gibt nichts zu drucken!"));
  }
  progress.setPercent(100);
  return true;
}

const std::vector<PrintCv>& DecoderSheets::cvsOf(const QString& manufacturer,
                                                 const QString& decoder) {
  const QStringList key{manufacturer, decoder};
  auto found = lists_.find(key);
  if (found == lists_.end()) {
    found = lists_.insert(key, loadPrintCvList(parts_.folders, manufacturer, decoder));
  }
  return *found;
}

}  // namespace lokari
