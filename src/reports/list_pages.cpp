#include "reports/list_pages.h"

#include <algorithm>

#include "base/paths.h"

namespace lokari {
namespace {

constexpr size_t kFirstGuess = 40;
// A page is filled with so many more than the last one held: what has no room costs little, a page
// that is made twice costs twice.
constexpr size_t kReserve = 2;

}  // namespace

ListPages::ListPages(const ReportSource& source, const ReportTemplate& layout,
                     const ReportRows& rows, QPagedPaintDevice& paper, QSizeF room)
    : layout_(layout),
      rows_(rows),
      paper_(paper),
      room_(room),
      facts_(reportFacts(source, rows.count())),
      expected_(kFirstGuess) {}

void ListPages::makeNext() {
  const size_t rest = rows_.count() - taken_;
  size_t most = rest;  // no page can hold more
  size_t count = std::min(expected_, rest);
  for (;;) {
    const bool isLast = count == rest;
    std::unique_ptr<ListPage> page = make(count, isLast);
    if (page->isCrowdedOut()) {
      layout_.fail(
          layout_.vehicleLine(),
          QStringLiteral("Was über dem Abschnitt \"fahrzeuge\" steht, füllt die Seite: Für "
                         "ein Fahrzeug bleibt kein Platz."));
    }
    // A vehicle that is taller than the page has it for itself and is cut.
    const size_t fitting = std::min(count, std::max<size_t>(1, page->vehiclesWithRoom()));
    if (fitting < count && !isLast) {
      page->cutBehind(fitting);
      return take(std::move(page), fitting);
    }
    if (fitting < count) {
      // Made as the last page, which it is not.
      most = count = fitting;
    } else if (isLast && !page->fits() && count > 1) {
      // What stands behind the vehicles has no room: it takes one of them along.
      most = count = count - 1;
    } else if (count == most) {
      return take(std::move(page), count);
    } else {
      count = std::min(most, count + count / 4 + kReserve);
    }
  }
}

std::unique_ptr<ListPage> ListPages::make(size_t vehicles, bool isLast) const {
  ReportFacts facts = facts_;
  facts.page = static_cast<int>(pages_.size()) + 1;
  facts.isFirstPage = pages_.empty();
  facts.isLastPage = isLast;
  ReportData data;
  data.report = reportValues(facts, htmlEncoded);
  data.first = taken_;
  data.count = vehicles;
  data.value = [this](size_t row, size_t field) -> const std::string& {
    return rows_.value(row, field);
  };
  return std::make_unique<ListPage>(layout_.render(data), folderOf(layout_.path()), vehicles,
                                    paper_, room_);
}

void ListPages::take(std::unique_ptr<ListPage> page, size_t vehicles) {
  pages_.push_back(std::move(page));
  taken_ += vehicles;
  expected_ = vehicles + kReserve;
}

}  // namespace lokari
