#include "link/ui/progress_dialog.h"

#include "base/ui/window_scale.h"
#include "link/comm_progress.h"
#include "link/station_link.h"
#include "link/ui/dlg_comm.h"

namespace lokari {
namespace {

/// Gives the cancel flag back as it belongs to everybody else who waits on the link.
class CancelFlag {
 public:
  explicit CancelFlag(StationLink& link) : link_(link) {}
  ~CancelFlag() { link_.cancelRequested = false; }
  CancelFlag(const CancelFlag&) = delete;
  CancelFlag& operator=(const CancelFlag&) = delete;

 private:
  StationLink& link_;
};

}  // namespace

RunWithProgress progressDialog(StationLink& link, const WindowScale& scale, QWidget* window) {
  return [&link, &scale, window](const std::function<void(Progress&)>& work) {
    const CancelFlag cancelFlag(link);
    DlgComm dialog(link, window);
    scale.ResizeWindow(&dialog);
    CommProgress progress(link, dialog);
    dialog.run(CommJob::ProgressOnly, [&] {
      dialog.setProgressEnabled(true);
      work(progress);
      progress.showLast();
      dialog.setProgressEnabled(false);
    });
    if (progress.hasSpokenSinceCancel()) {
      dialog.run(CommJob::ProgressOnly, [&] { dialog.setStatus(progress.status()); });
    }
  };
}

}  // namespace lokari
