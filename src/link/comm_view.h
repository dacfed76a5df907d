// What a long job shows while it runs: the controls of `dlg_comm`. The dialog shows them, the
// command line prints them, tests record them.
#pragma once

#include <QString>

namespace lokari {

class CommView {
 public:
  virtual ~CommView() = default;

  /// `lblCommStatus`.
  virtual void setStatus(const QString& text) = 0;
  /// The status with which a job ends: its result.
  virtual void setClosingText(const QString& text) { setStatus(text); }
  /// `lblCommDetail`: how far the job is, in words, below the status; empty for nothing. A view
  /// without room for it leaves it out.
  virtual void setDetail(const QString& text) { Q_UNUSED(text) }
  /// Stands below the status and adds to it, such as which CV a failure met; empty for nothing.
  virtual void setRemark(const QString& text) { setDetail(text); }
  /// `panProgress`: shows the bar at the whole part of `percent`, captioned with it and "%", and
  /// brings the dialog to the front.
  virtual void setProgress(double percent) = 0;
  /// The bar back to nothing.
  virtual void resetProgress() = 0;
  /// `panProgress` enabled: a batch is running.
  virtual void setProgressEnabled(bool enabled) = 0;
  /// `cmdCancel`: "Abbruch" while a job runs, "OK" when it has finished.
  virtual void setCancelCaption(const QString& caption) = 0;
  /// The session says goodbye to the station from now on, or has done it. `cmdCancel` then ends the
  /// waits of the farewell, whatever it did before.
  virtual void setFarewell(bool running) { Q_UNUSED(running) }
  /// Closes the dialog; the job has ended orderly.
  virtual void hide() = 0;
};

}  // namespace lokari
