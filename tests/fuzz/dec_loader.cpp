// Any text as a description file: the loader, the checker, the layout of its rows and the list for
// the sheet must come to an end with every index in its table.
#include "decoder/dec_loader.h"

#include "base/text_file.h"
#include "decoder/dec_checker.h"
#include "decoder/page_rows.h"
#include "reports/print_cv_list.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace lokari;
  const QString text =
      decodeText(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  DecoderDescription description;
  loadDescription(text, description);
  const std::vector<BenchTab> tabs = makeTabs(description);
  for (const PageRow& row : makeRows(description, tabs)) {
    if (!row.cv.inRange() || description.getCvIndex(description.numberText(row.cv)) == CvIndex()) {
      __builtin_trap();
    }
  }
  checkDescription(text);
  const std::vector<PrintCv> list = printCvList(text);
  if (list.size() > static_cast<size_t>(kPrintCvLimit)) __builtin_trap();
  for (const PrintCv& cv : list) {
    if (!cv.index.inRange() || cv.name.isEmpty() || cv.range.isEmpty()) __builtin_trap();
  }
  return 0;
}
