#include "db/ui/dlg_list.h"

#include <algorithm>
#include <cmath>

#include "base/ui/window_scale.h"
#include "db/list_grid.h"
#include "db/reference_list_rules.h"
#include "db/reference_lists.h"
#include "db/ui/list_grid_view.h"

namespace lokari {
namespace {

constexpr QSize kDesignSize(300, 420);
constexpr double kTextTwips = 1540;
constexpr double kTwipsPerPixel = 15;

int rounded(double width) {
  return static_cast<int>(std::lround(width));
}

}  // namespace

DlgList::DlgList(const ReferenceList& list, Database& database, Prompt& prompt,
                 const WindowScale& scale, QWidget* parent)
    : GridDialog(QString::fromUtf16(list.dialog), QString::fromUtf16(list.title), scale, parent) {
  auto rows = std::make_unique<ListGrid>(database, prompt,
                                         std::make_unique<ReferenceListRules>(list, prompt));
  rows->open(QString::fromUtf16(list.query));
  build(std::move(rows), QString::fromUtf16(list.source));
  resize(kDesignSize);
}

void DlgList::setColumnWidths() {
  const double factor = scale().scaleX;
  grid().setColumnWidth(ReferenceListRules::kSequence,
                        rounded(grid().neededWidth(ReferenceListRules::kSequence) * factor));
  // A longer entry is not cut off.
  grid().setColumnWidth(ReferenceListRules::kText,
                        std::max(rounded(kTextTwips / kTwipsPerPixel * factor),
                                 grid().neededWidth(ReferenceListRules::kText)));
}

}  // namespace lokari
