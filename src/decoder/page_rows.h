// The row pages of the decoder window: which tabs there are, and which CV stands in which row of
// which tab.
#pragma once

#include <QString>

#include <optional>
#include <vector>

#include "decoder/bench_controls.h"
#include "decoder/description.h"

namespace lokari {

inline constexpr int kTabCount = 34;
inline constexpr int kFixedTabs = 6;
inline constexpr int kRowsPerTab = 20;
/// Rows stand in two columns.
inline constexpr int kRowsPerColumn = 10;

/// Numbers of the first tabs; the further tabs of the row pages follow from 6 on.
enum class TabNumber : int {
  General = 0,
  Drive = 1,
  Functions = 2,
  Maker = 3,
  Others = 4,
  Sound = 5
};

struct BenchTab {
  int page = 0;     ///< 3 to 6 for a tab of rows, 0 otherwise
  int ordinal = 1;  ///< 1 for the page's first tab, 2 for its second, ...
  QString caption;
  bool visible = false;
  bool funcMapEnabled = false;  ///< `cmdFuncMap`; on function tabs only

  bool operator==(const BenchTab&) const = default;
};

/// "Func", "Manuf", "Other" or "Sound": the part of the control names that tells the page.
QString pageName(int page);

/// One row of a page. Its controls are members of control arrays, counted from 1 on each page:
/// `labFunc_1`, `txtFunc_1`, `chkFuncRd_1`, `chkFuncWrt_1`, `bitFunc_1`.
struct PageRow {
  CvIndex cv;
  int page = 0;
  int number = 0;    ///< 1 is the page's first row
  int tab = 0;       ///< tab number, 0 to 33
  int rowOnTab = 0;  ///< 0 to 19; from 10 on in the right column
  QString label;
  QString labelTip;  ///< tool tip of the label
  QString text;
  TextColour colour = TextColour::Normal;
  std::optional<QString> holds = {};  ///< the value that holds beside a text that was not taken
  bool locked = false;                ///< the value field
  bool read = false;
  bool readEnabled = true;
  bool write = false;
  bool writeEnabled = true;
  bool bitEnabled = false;
  QString idle = {};  ///< why no job acts upon its ticks; empty when one does

  QString fieldName() const { return QStringLiteral("txt%1_%2").arg(pageName(page)).arg(number); }
};

/// The 34 tabs for a description.
std::vector<BenchTab> makeTabs(const DecoderDescription& description);

/// The rows for a description, in the order of their CVs, and `cvRow` of each. Rows that find no
/// tab are left out; their CVs are in the grid only.
std::vector<PageRow> makeRows(DecoderDescription& description, const std::vector<BenchTab>& tabs);

}  // namespace lokari
