// One sheet for each vehicle with a decoder: its data, its picture, and the CVs of the set in use.
#pragma once

#include <QDate>
#include <QHash>
#include <QStringList>

#include <functional>
#include <vector>

#include "reports/print_cv_list.h"
#include "reports/print_document.h"

namespace lokari {

class Database;

struct DecoderSheetsParts {
  Database& database;   ///< must outlive the document
  QString query;        ///< whole vehicles in their order, in the storage's query language
  QStringList folders;  ///< where description files are looked for
  QDate date;           ///< the day that the sheets tell
  /// The address of the sheet that is being painted; may be empty.
  std::function<void(const QString& address)> printing;
};

class DecoderSheets final : public PrintDocument {
 public:
  explicit DecoderSheets(DecoderSheetsParts parts) : parts_(std::move(parts)) {}

  QString title() const override { return QStringLiteral("Decoderblätter"); }
  /// Records without a decoder and those that are no vehicles are passed over. Throws ReportError
  /// when no sheet is left.
  bool paint(QPagedPaintDevice& paper, Progress& progress) override;

 private:
  const std::vector<PrintCv>& cvsOf(const QString& manufacturer, const QString& decoder);

  DecoderSheetsParts parts_;
  // Whole collections share a few types of decoders.
  QHash<QStringList, std::vector<PrintCv>> lists_;
};

}  // namespace lokari
