// The jobs of the decoder window: their turn on the line, the wait for it, their dialog.
#include "base/ui/tool_tip.h"
#include "base/ui/window_scale.h"
#include "decoder/ui/frm_decoder.h"
#include "link/station_link.h"
#include "link/ui/dlg_comm.h"

namespace lokari {

void FrmDecoder::runJob(CommJob job) {
  toolTip_->hideTip();
  if (jobWaits_) return;
  jobWaits_ = true;
  const auto run = [this, job] {
    // It may have been given up.
    if (!jobWaits_) return;
    endWait();
    DlgComm dialog(link_, this);
    scale_.ResizeWindow(&dialog);
    dialog.run(job, [this] { bench_.runJob(); });
  };
  alone ? alone(run) : run();
  if (jobWaits_) waitForLine();
}

void FrmDecoder::waitForLine() {
  focusBefore_ = focusWidget();
  contents_->setEnabled(false);
  if (!showWaiting) return;
  waiting_ = showWaiting(QStringLiteral("Der Auftrag wartet auf die Digitalzentrale ..."),
                         [this] { endWait(); });
}

void FrmDecoder::endWait() {
  jobWaits_ = false;
  waiting_.reset();
  if (contents_->isEnabled()) return;
  contents_->setEnabled(true);
  // Disabling takes the keyboard's place away.
  if (focusBefore_) focusBefore_->setFocus();
}

}  // namespace lokari
