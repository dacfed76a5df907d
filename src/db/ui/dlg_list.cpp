#include "db/ui/dlg_list.h"

#include <QHeaderView>
#include <QLayout>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

#include "base/ui/window_scale.h"
#include "db/list_grid.h"
#include "db/reference_list_rules.h"
#include "db/reference_lists.h"
#include "db/ui/list_grid_view.h"

namespace lokari {
namespace {

constexpr int kDesignHeight = 420;
/// The title shows whole.
constexpr int kLeastWidth = 240;
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
  resize(naturalWidth(), kDesignHeight);
}

// The columns fill the grid.
int DlgList::naturalWidth() const {
  const QMargins margins = layout()->contentsMargins();
  int width = margins.left() + margins.right() + 2 * grid().frameWidth() +
              grid().verticalHeader()->width() + grid().verticalScrollBar()->sizeHint().width();
  for (int column = 0; column < rows().columnCount(); ++column) width += widthOf(column, 1);
  return std::max(width, kLeastWidth);
}

int DlgList::widthOf(int column, double factor) const {
  const int needed = grid().neededWidth(column);
  if (column != ReferenceListRules::kText) return rounded(needed * factor);
  // A longer entry is not cut off.
  return std::max(rounded(kTextTwips / kTwipsPerPixel * factor), needed);
}

void DlgList::setColumnWidths() {
  for (int column = 0; column < rows().columnCount(); ++column) {
    grid().setColumnWidth(column, widthOf(column, scale().scaleX));
  }
}

}  // namespace lokari
