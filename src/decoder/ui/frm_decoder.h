// `frmDecoder`, the modal window in which the CVs of one vehicle's decoder are viewed, edited, read
// and written. All state and logic is the bench's; the window draws it and hands the user's acts
// over.
#pragma once

#include <QDialog>
#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

#include "decoder/decoder_bench.h"

class QBoxLayout;
class QComboBox;
class QGridLayout;
class QLabel;
class QTabWidget;

namespace lokari {

class ControlBinder;
class CvTableView;
class Pictures;
class RowsPage;
class StationLink;
class ToolTip;
class WindowScale;
struct CvRecord;

/// Says which vehicle it is, for FrmDecoder::edit().
QString vehicleLine(const QString& name, const QString& address, const QString& collection);

class FrmDecoder final : public QDialog {
  Q_OBJECT

 public:
  /// All arguments but `pictures` must outlive the window.
  FrmDecoder(DecoderBench& bench, StationLink& link, Clock& clock, const Pictures& pictures,
             const WindowScale& scale, QWidget* parent = nullptr);

  /// Shows a record's sets until the user has done; `address` is the text of the main window's
  /// `dc_adr`. True after cmdOK: the record's sets, decoder and maker are those of the window.
  /// `vehicle` is what `lblVehicle` says whose decoder it is.
  bool edit(CvRecord& record, const QString& address, const QString& vehicle = {});

  /// Runs what needs the station for itself, at once or as soon as the station is free; without it,
  /// at once. The window may be gone by then: who sets it forgets such a job.
  std::function<void(std::function<void()> job)> alone;
  /// Shows that a job waits, for as long as the result lives; `giveUp` is the user's "Abbruch".
  std::function<std::shared_ptr<void>(const QString& text, std::function<void()> giveUp)>
      showWaiting;

  /// Escape and the window manager's close button: the same as `cmdCancel`. What would be lost is
  /// asked about. While a job waits for the station they give that up.
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeHeader(QBoxLayout* rows);
  void makeTabs(QBoxLayout* rows, const Pictures& pictures);
  void makeReport(QBoxLayout* rows);
  void makeFooter(QBoxLayout* rows);
  void makeJobButtons(QGridLayout* grid);
  void connectBench();

  QSize designSize() const;
  void showTabs();
  void showTab(int tab);
  void resetRows();
  void focusField(const QString& name, bool selectAll);
  void runJob(CommJob job);
  void waitForLine();
  void endWait();
  void accepted();
  void showSetNames(const Control& control);
  void limitSetName(const QString& text);

  DecoderBench& bench_;
  StationLink& link_;
  const WindowScale& scale_;
  ControlBinder* binder_;
  ToolTip* toolTip_;
  QLabel* lblVehicle_ = nullptr;
  QTabWidget* ssDecoder_ = nullptr;
  QComboBox* cbDcVer_ = nullptr;
  std::vector<RowsPage*> rowsPages_;  // by tab number; null for the two fixed ones
  CvRecord* record_ = nullptr;
  qsizetype setNameLength_ = 0;
  // A job that has not begun yet; what it is to do must not change meanwhile.
  bool jobWaits_ = false;
  std::shared_ptr<void> waiting_;
  QPointer<QWidget> focusBefore_;
  QWidget* contents_ = nullptr;
};

}  // namespace lokari
