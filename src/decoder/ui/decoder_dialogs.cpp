#include "decoder/ui/decoder_dialogs.h"

#include "base/ui/window_scale.h"
#include "decoder/decoder_bench.h"
#include "decoder/ui/dlg_bit.h"
#include "decoder/ui/dlg_calc.h"
#include "decoder/ui/dlg_copy.h"
#include "decoder/ui/dlg_func_map.h"
#include "link/ui/dlg_comm.h"

namespace lokari {
namespace {

constexpr int kCancelled = -1;

bool run(QDialog& dialog, const WindowScale& scale, DecoderBench& bench) {
  emit bench.toolTipHidden();
  scale.ResizeWindow(&dialog);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace

void plugInDialogs(DecoderBench& bench, StationLink& link, const WindowScale& scale,
                   QWidget* window) {
  bench.bitDialogBox = [&bench, &scale, window](int value, const QString& bits,
                                                const QString& caption) {
    DlgBit dlgBit(value, bits, caption, window);
    return run(dlgBit, scale, bench) ? dlgBit.value() : kCancelled;
  };
  bench.calculatorBox = [&bench, &scale, window](const QString& text) {
    DlgCalc dlgCalc(text, bench.prompt(), window);
    return run(dlgCalc, scale, bench) ? dlgCalc.decimalText() : QString();
  };
  bench.funcMapBox = [&bench, &scale, window](
                         const std::vector<FuncMapRow>& rows) -> std::optional<std::vector<int>> {
    DlgFuncMap dlgFuncMap(rows, window);
    if (!run(dlgFuncMap, scale, bench)) return std::nullopt;
    return dlgFuncMap.values();
  };
  bench.copyBox = [&bench, &scale, window](const QString& text) {
    DlgCopy dlgCopy(text, window);
    run(dlgCopy, scale, bench);
    return dlgCopy.answer();
  };
  bench.progressBox = [&link, &scale, window](const std::function<void()>& work) {
    DlgComm dialog(link, window);
    scale.ResizeWindow(&dialog);
    dialog.run(CommJob::ProgressOnly, work);
  };
}

}  // namespace lokari
