// `dlg_comm`, the modal progress dialog through which every long job runs and is cancelled.
#pragma once

#include <QDialog>

#include <exception>
#include <functional>

#include "link/comm_job.h"
#include "link/comm_view.h"
#include "link/switch_on_question.h"

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace lokari {

class StationLink;

class DlgComm final : public QDialog, public CommView {
  Q_OBJECT

 public:
  /// `link` must outlive the dialog; its `cancelRequested` and `commJob` are the dialog's.
  explicit DlgComm(StationLink& link, QWidget* parent = nullptr);

  /// Sets `commJob`, shows the dialog modally and starts `work` when the dialog first comes to the
  /// front. Comes back when the work has ended and the dialog is closed: by the work's hide(), or
  /// by the user after it. While it runs it is the link's view. What the work throws is thrown on,
  /// with the dialog closed. A job that switches on a layout that we have stopped asks first; when
  /// the user does not want it nothing happens. The line is the job's while the work runs; cabs use
  /// it while a question is open and behind the end of the work.
  void run(CommJob job, std::function<void()> work);

  void setStatus(const QString& text) override;
  void setDetail(const QString& text) override;
  void setProgress(double percent) override;
  void resetProgress() override;
  void setProgressEnabled(bool enabled) override;
  void setCancelCaption(const QString& caption) override;
  void setFarewell(bool running) override;
  void hide() override;

  /// The Escape key and the window manager's close button: the same as `cmdCancel`.
  void reject() override;

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// What the job has to add, and that the farewell runs.
  void showDetail();
  /// Where the one job of a run() stands.
  enum class Stage { Waiting, Running, Ended };

  void build();
  void prepare(CommJob job);
  bool mayRun(CommJob job);
  void startJob();
  void cancel();
  void makeRoom();
  void keepButtonsOnScreen();
  void copyText();

  StationLink& link_;
  QLabel* lblCommStatus_ = nullptr;
  QLabel* lblCommDetail_ = nullptr;
  QProgressBar* panProgress_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  QPushButton* cmdStop_ = nullptr;      // stops the layout
  QPushButton* cmdCopyText_ = nullptr;  // of a job that has ended
  QTimer* frontTimer_ = nullptr;

  std::function<void()> work_;
  Stage stage_ = Stage::Ended;
  std::exception_ptr failure_;
  CommView* before_ = nullptr;   // the link's view ahead of the job
  SwitchOnLeave leave_;          // to switch the layout on, for as long as the work runs
  std::shared_ptr<void> aside_;  // lets others use the line behind the work
  QString detail_;
  QString farewell_;
};

}  // namespace lokari
