// `frmDecoder`, the modal window in which the CVs of one vehicle's decoder are viewed, edited, read
// and written. All state and logic is the bench's; the window draws it and hands the user's acts
// over.
#pragma once

#include <QDialog>

#include <functional>
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

  /// Escape and the window manager's close button: the same as `cmdCancel`. What would be lost is
  /// asked about.
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
  bool jobWaits_ = false;  // for the line; what it is to do must not change meanwhile
};

}  // namespace lokari
