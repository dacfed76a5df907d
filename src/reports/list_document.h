// The list of vehicles on paper, by a template of HTML: every page is the template, filled with as
// many vehicles as have room on it.
#pragma once

#include <memory>
#include <vector>

#include "reports/print_document.h"
#include "reports/report_source.h"

namespace lokari {

class ListDocument final : public PrintDocument {
 public:
  explicit ListDocument(ReportSource source) : source_(std::move(source)) {}

  QString title() const override { return QString::fromUtf16(kListTitle); }
  /// A vehicle is never split between two pages. Without a vehicle there is one page that the
  /// template makes of none.
  bool paint(QPagedPaintDevice& paper, Progress& progress) override;

 private:
  ReportSource source_;
};

}  // namespace lokari
