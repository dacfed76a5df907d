// Divides a list into pages.
#pragma once

#include <QSizeF>

#include <memory>
#include <vector>

#include "reports/list_page.h"
#include "reports/report_rows.h"
#include "reports/report_source.h"

namespace lokari {

class ListPages {
 public:
  /// `room` is what a page has for the template, in dots of the paper. All must outlive the pages.
  ListPages(const ReportSource& source, const ReportTemplate& layout, const ReportRows& rows,
            QPagedPaintDevice& paper, QSizeF room);

  /// Makes one more page. Throws ReportError for a template that does not show the vehicles in the
  /// rows of a table.
  void makeNext();
  /// Whether every vehicle has its page; a list of none has one.
  bool isDone() const { return !pages_.empty() && taken_ == rows_.count(); }
  /// Vehicles that have their page.
  size_t taken() const { return taken_; }

  const std::vector<std::unique_ptr<ListPage>>& pages() const { return pages_; }

 private:
  std::unique_ptr<ListPage> make(size_t vehicles, bool isLast) const;
  void take(std::unique_ptr<ListPage> page, size_t vehicles);

  const ReportTemplate& layout_;
  const ReportRows& rows_;
  QPagedPaintDevice& paper_;
  QSizeF room_;
  ReportFacts facts_;
  std::vector<std::unique_ptr<ListPage>> pages_;
  size_t taken_ = 0;
  size_t expected_;  // how many vehicles the next page is likely to hold
};

}  // namespace lokari
