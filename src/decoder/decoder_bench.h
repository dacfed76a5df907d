// The decoder bench: everything that the decoder window is and does, without a window. The window
// shows `controls`, `tabs`, `rows` and the grid, and hands the user's acts over; the batch jobs and
// the command line work on the same bench.
#pragma once

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "base/clock.h"
#include "base/settings.h"
#include "decoder/batch_report.h"
#include "decoder/bench_controls.h"
#include "decoder/config_clicks.h"
#include "decoder/cv_grid.h"
#include "decoder/cv_sets.h"
#include "decoder/description.h"
#include "decoder/func_map.h"
#include "decoder/page_rows.h"
#include "link/comm_job.h"

namespace lokari {

class Catalogue;
class CommView;
class Prompt;
class RecordForm;
class SpeedTableList;
class StationLink;
struct CopyTargets;
struct CvRecord;
struct CvValue;
struct DecFault;
struct OptionRow;

/// What a bench works with; all of it must outlive the bench.
struct BenchParts {
  Settings& settings;  ///< a batch write may switch `continueOnError` off
  Clock& clock;
  Prompt& prompt;
  StationLink& link;
  const Catalogue& catalogue;
  QString basePath;      ///< folder of the description files
  QStringList decTypes;  ///< decoder type names by CV 250, 256 entries; empty is none
  /// The form on the vehicles that CVs can be copied to; without it they cannot.
  RecordForm* form = nullptr;
};

/// The user's answer to copying from the first set.
enum class CopyAnswer { All = 1, None = 2, Selected = 6 };

/// Why a decoder type has no description, as the user is told it.
struct MissingDescription {
  QString line;  ///< in place of the pages' contents
  QString text;  ///< of a message, names the file
  QString more;  ///< below it
};

/// How the last batch job ended.
enum class JobEnd {
  NoDescription,
  NothingMarked,
  NoSession,  ///< the station could not be reached
  Stopped,    ///< cancelled, or a question was answered so
  Failed,     ///< a failure ended it
  Complete,   ///< every CV was tried; their marks tell which failed
};

/// What the user wants with values that leaving the window would lose.
enum class Leave { Stay, Store, Drop };

class DecoderBench : public QObject {
  Q_OBJECT

 public:
  explicit DecoderBench(BenchParts parts, QObject* parent = nullptr);
  ~DecoderBench() override;

  // ---- State ----------------------------------------------------------------------------------

  bool windowOpening = false;  ///< from the start of open() until the first refresh is done
  bool commRunning = false;    ///< a batch job is running
  bool refreshing = false;     ///< refreshFields() is running
  bool calcOpen = false;       ///< the calculator dialog is open
  int dcManufNo = 0;           ///< manufacturer number, 0 for none

  CvSets sets;  ///< `cvValues`, `cvMarks`, the five sets
  DecoderDescription description;
  BenchControls controls;

  const std::vector<BenchTab>& tabs() const { return tabs_; }  ///< 34 entries, by tab number
  int selectedTab() const { return selectedTab_; }
  const std::vector<PageRow>& rows() const {
    return rows_;
  }  ///< of all pages, in order of their CVs
  const CvGrid& grid() const { return grid_; }
  /// What a data row of the grid shows, always the present state.
  GridRow gridRow(int row) const;

  // ---- The dialogs that a window plugs in; without one its button does nothing ----------------

  /// The bit dialog: value, bit description and caption in, the new value out, or a negative
  /// number when the user cancelled.
  std::function<int(int value, const QString& bits, const QString& caption)> bitDialogBox;
  /// The calculator: a field's text in, the new text out, or a null text when cancelled.
  std::function<QString(const QString& text)> calculatorBox;
  /// `dlgSpdTab`: the speed table as a list.
  std::function<void(SpeedTableList& list)> tableListBox;
  /// The function mapping dialog: the rows in, the new value of each row out, or nothing when the
  /// user cancelled.
  std::function<std::optional<std::vector<int>>(const std::vector<FuncMapRow>& rows)> funcMapBox;
  /// The question of `cmdCopy`.
  std::function<CopyAnswer(const QString& text)> copyBox;
  /// Runs a long work that does not use the station with the link's view on show; without it the
  /// work runs at once.
  std::function<void(const std::function<void()>& work)> progressBox;

  // ---- Opening, choosing, closing -------------------------------------------------------------

  /// Shows a record's sets. `address` is the text of `dc_adr` of the main window.
  void open(const CvRecord& record, const QString& address);
  /// Hands the sets, the decoder and the maker back; tells closed(true). An unknown maker's name
  /// gives a message and leaves the record's number.
  void cmdOK(CvRecord& record);
  void cmdCancel();
  /// Whether the window has anything that the record does not: values that were read, written or
  /// typed, a name, an address, a type.
  bool unsaved() const;
  /// Whether the current set holds values or marks that came about under the present type and are
  /// not stored: another type would put its defaults in their place.
  bool unsavedOfType() const;
  /// Asks where something is unsaved.
  Leave askToLeave();

  /// A choice in `cbDcManuf`, `cbDcDecoder`. Choosing what is chosen changes nothing; a change that
  /// would lose values asks. False when the user then stays with the type he has.
  bool chooseManufacturer(const QString& name);
  bool chooseDecoder(const QString& name);
  /// A choice in `cbDcVer`.
  void chooseSet(const QString& name);
  /// `cbDcVer` loses the focus: its text is the current set's new name.
  void setNameLeft(const QString& text);
  /// False when a key in the text of `cbDcVer` is to be swallowed. `code` is its character code.
  /// `replaced` characters of the text are selected: what does not lengthen it passes.
  static bool setNameTakes(const QString& text, int code, qsizetype replaced = 0) {
    constexpr int kDelete = 127;
    return code < 32 || code == kDelete || text.size() < 8 || replaced > 0;
  }

  /// Reads the two selectors, loads the description file that they name and adapts everything.
  void ChangeDecoder();
  /// Shows the working set in all controls, or in the grid only.
  void refreshFields(bool onlyGrid);

  // ---- The user's acts ------------------------------------------------------------------------

  /// Value fields (`dc_adr`, `txt...`, and `tabText` while the grid is edited) and fields of rows.
  void fieldEdited(const QString& name, const QString& text);
  void fieldLeft(const QString& name);
  /// F2 in a value field: the calculator.
  void fieldF2(const QString& name);
  void optionClicked(const QString& name);
  void checkBoxToggled(const QString& name, bool checked);
  /// Any button by its name, `cmdReadFunc_1` and the like included. cmdOK and cmdCancel have
  /// operations of their own.
  void buttonClicked(const QString& name);
  void selectTab(int tab);

  /// Rows, by their place in rows().
  void rowEdited(int row, const QString& text);
  void rowLeft(int row);
  void rowF2(int row);
  void rowReadToggled(int row, bool checked);
  void rowWriteToggled(int row, bool checked);
  void rowBitClicked(int row);

  /// Opens the bit dialog with the caption of a CV. The new value, or nothing without OK.
  std::optional<int> bitDialog(int cvValue, const QString& bitText, CvIndex cv);
  /// The function mapping dialog, and what it was left with.
  void cmdFuncMap();
  /// Copies from the first set into the current one, as the user answers.
  void cmdCopy();
  /// Puts the present values of the listed CVs into the vehicles on the form, all five sets, after
  /// a question that tells whom it reaches; a filter holds. All of them or, after a failure or a
  /// cancel, none. The user is told how many.
  void copyCvsToVehicles(const std::vector<CvIndex>& list);
  /// Whether there are vehicles to copy to.
  bool canCopyToVehicles() const { return parts_.form != nullptr; }
  Prompt& prompt() const { return parts_.prompt; }

  /// The grid. A selection of one row is no selection of several.
  void gridSelected(int first, int last) { grid_.select(first, last); }
  void gridHeaderClicked(GridColumn column);
  void gridClicked(int row, GridColumn column);
  /// Escape in the cell in hand: it is as it was.
  void gridEditGivenUp();

  // ---- Values and colours ---------------------------------------------------------------------

  /// Takes the text of a value field into `cvValues`. False when it is out of range and the focus
  /// must stay. `field` is a control or the field of a row.
  bool CheckDcField(const QString& field, CvIndex cv, const QString& range);
  /// `cvValues[index] = value`, index being CV - 1.
  void setCvval(int value, int index);

  /// The colour of a CV's mark.
  TextColour colourOf(CvIndex cv) const;
  void ColorCVx(CvIndex cv, const QString& field, int gridRow);
  void ColorCV29();
  void ColorCV19();
  void ColorAdr();

  /// The tool tip that a control's tag makes: the tip of the CV it names, or the tag itself, with
  /// a blank on both sides. Empty for none.
  QString DcToolTips(const QString& tag) const;

  // ---- Jobs -----------------------------------------------------------------------------------

  /// Runs what `commJob` of the link says, one of the four batch jobs, on the link's view.
  void runJob();
  void RdComm();
  void WriteComm();
  /// Whether a job would handle a CV as things are marked now. The address has a box of its own.
  bool isPlanned(bool write, CvIndex cv) const;
  /// Why no job acts upon the ticks of a CV; empty when one does.
  QString idleReason(CvIndex cv) const;
  /// The ticked CVs that a job would leave out, a line a reason; empty for none.
  QString leftOut(bool write) const;
  JobEnd jobEnd = JobEnd::NothingMarked;
  /// Whether any job since open() has come as far as the station: what the decoder holds may then
  /// be what only this bench knows.
  bool reachedStation() const { return reachedStation_; }
  /// What the last batch job did; `lblReport` tells its remarks.
  const BatchReport& report() const { return report_; }
  /// "CV 3, 33 und 257 (2)"; neighbours as "67 bis 94".
  QString listOfCvs(const std::vector<CvIndex>& cvs) const;
  /// What the colour of a CV does not tell, for its tool tip; empty for nothing.
  QString noteOf(CvIndex cv) const;

 signals:
  // `controls` tells its own changes.
  void tabsChanged();
  void tabSelected(int tab);
  void rowsReset();
  void rowChanged(int row);
  void gridReset();
  void gridRowChanged(int row);
  /// `tabText` is to be laid over a cell of the column "Wert", its text selected; or hidden.
  void gridEditOpened(int row);
  void gridEditClosed();
  /// The focus goes to a field, a row's included.
  void focusRequested(const QString& field, bool selectAll);
  void toolTipHidden();
  /// `picSpeedTable` is to be drawn anew.
  void speedTableChanged();
  void busyChanged(bool busy);
  /// Show `dlg_comm` and run runJob() in it.
  void jobRequested(lokari::CommJob job);
  void closed(bool success);

 private:
  friend class BatchRun;
  friend class ReadBatch;
  friend class WriteBatch;

  // Opening and choosing: decoder_bench.cpp.
  void fillSelectors(int manufacturer, const QString& decoder);
  void fillDecoders(const QString& wanted);
  void decoderChosen();
  /// Asks about values that nothing but the window holds; true when another type may replace them.
  bool mayDropValues();
  /// Does at once what Timer3 still has to do.
  void finishChoice();
  void showSetNames();
  void showCurrentSet();

  // Loading the description: bench_load.cpp.
  /// Where the chosen type's own file is looked for; empty without a maker.
  QString ownFile() const;
  QString descriptionFile() const;
  void loadFile(const QString& file);
  /// Ends everything that belongs to the description in use: its ticks, its rows, what is selected
  /// and edited in the grid.
  void endDescription();
  void takeStraightTable();
  void takeDefaults();
  void missFile();
  /// `fault` is what ended the reading; nothing when there was nothing to read.
  void failFile(const QString& file, const DecFault* fault);
  void stayEmpty(MissingDescription missing);
  /// Without a description tells why there is none; true then.
  bool refusedWithoutDescription();

  // Fitting the window to the description: bench_adapt.cpp.
  void adapt();
  void adaptAddress();
  void adaptDrive();
  void enableGroup(const QString& group, bool enabled);
  void adaptOptions();
  void adaptButtons();
  void adaptConsist();
  void adaptPulseOptions();
  void adaptRows();
  void adaptFixedFields();

  // Value fields: bench_fields.cpp. A field is a control, a field of a row, or `tabText`.
  std::optional<int> addressNumber() const;
  /// The address that the decoder of this window is known by: as the record has it, or as a job
  /// has read or written it since. Nothing where that is none.
  std::optional<int> knownAddress() const { return knownAddress_; }
  void noteAddress(std::optional<int> address);
  int rowNamed(const QString& field) const;
  int rowOf(CvIndex cv) const;
  CvIndex cvOfField(const QString& field) const;
  QString fieldOf(CvIndex cv) const;
  QString fieldText(const QString& field) const;
  /// Sets a text, and the field's change follows, as if the user had typed it.
  void setFieldText(const QString& field, const QString& text);
  /// Empties the field and sets it, so that its change follows even when the text stays.
  void refillField(const QString& field, const QString& text);
  /// Sets a text, and nothing follows. True when it changed.
  bool showFieldText(const QString& field, const QString& text);
  void setFieldColour(const QString& field, TextColour colour);
  // Texts that were not taken: bench_holds.cpp.
  QString heldText(const QString& field) const;
  void holdAddress();
  /// Shows beside a field the value that holds, unless its text is that value or empty.
  void showHolds(const QString& field);
  bool givesWay(const QString& field) const;
  /// Every text that was not taken gives way to the value that holds.
  void giveWay();
  // Ticks that no job acts upon: bench_ticks.cpp.
  void showIdleTicks();
  void fieldChanged(const QString& field);
  void refuseAddress();
  bool userChange() const { return !commRunning && !windowOpening && !refreshing; }
  /// Shows a CV's value and colour wherever it stands.
  void showValue(CvIndex cv);
  void valueChanged(CvIndex cv);

  // Options: bench_options.cpp.
  void setOption(const QString& name);
  void takeOption(const OptionRow& option);
  void showOptions(const QString& group, bool set);
  void showAllOptions();
  void switchDirectionOverAndBack();
  void showMarkOfOptions(int cv);
  /// The colour of a CV that failed, wherever it shows.
  void showMarkOf(CvIndex cv);
  void showMark29();
  void showMark19();
  void showMarkAdr();
  void showVersion();
  QString decoderTypeText(int type) const;

  // What a job did, and what of it is still to be said: bench_report.cpp.
  void showReport();
  /// What was said about a job before is over.
  void clearReport();
  /// `lblLegend`: what the colours mean, with what is written and not proved.
  void showLegend();
  /// Asks about values that failed reads have taken the place of, before the sets are stored.
  void settleLostValues();

  // Read and write marks: bench_marks.cpp.
  bool readAllowed(CvIndex cv) const;
  bool writeAllowed(CvIndex cv) const;
  bool gridEditable(CvIndex cv) const;
  void setMark(bool write, CvIndex cv, bool set);
  void showMark(CvIndex cv);
  /// Shows the ticks of everything that has a box among the fixed controls.
  void showBoxes();
  void setBox(const QString& name, bool checked);
  void boxChanged(const QString& name, bool checked);
  void markBox(bool write, const QString& name);
  void setAllMarks(bool write, bool set);
  void setMarksOfTab(bool write, int page, int ordinal);
  void setMarksOfFixedTab(bool write, int tab);
  bool markButtonClicked(const QString& name);
  /// Whether the table's box stands for a CV of 67 to 94.
  bool tablePlanned(bool write, CvIndex point) const;

  // The buttons of the speed table: bench_table.cpp.
  void adaptTable();
  bool tableButtonClicked(const QString& name);
  void smoothTable();
  void listTable();
  void loadTable();
  void saveTable();

  // Dialogs: bench_dialogs.cpp.
  void editBits(CvIndex cv, CvIndex next);
  void takeUserValue(CvIndex cv, int value);

  // Copying: bench_copy.cpp.
  std::vector<CvIndex> copyListOfFixedTab(int tab) const;
  std::vector<CvIndex> copyListOfRows(int page, int ordinal) const;
  bool copyButtonClicked(const QString& name);
  /// What the user answers about such CVs of the first set: those to leave out, or nothing when
  /// nothing is to be copied.
  std::optional<std::vector<CvIndex>> doubtfulToSpare(std::vector<CvIndex> doubtful) const;
  void copyAllButDoubtful();
  void copySelectedButDoubtful();
  QString copyTargetsText(const CopyTargets& targets) const;
  /// The vehicle of the window was among those that values were copied into.
  void takeCopiedValues(const std::vector<CvValue>& values);

  // The grid: bench_grid.cpp.
  void makeTableNames();
  void rebuildGrid();
  void openGridEdit(int row);
  void closeGridEdit();
  void gridEditLeft();

  BenchParts parts_;
  std::vector<BenchTab> tabs_;
  std::vector<PageRow> rows_;
  std::vector<int> rowOfCv_;  // by internal index, -1 for none
  QHash<QString, int> rowOfField_;
  CvGrid grid_;
  int gridEditRow_ = 0;
  CvSets gridEditKept_;  // before the cell in hand was touched
  int selectedTab_ = 0;
  // What leaving would lose: bench_unsaved.cpp.
  struct Kept {
    CvSets sets;
    QString address;
    QString maker;
    QString decoder;
  };
  Kept present() const;
  bool inHand(const QString& field, CvIndex cv, const QString& range) const;
  bool anyInHand() const;
  Kept opened_;  // as the record was opened
  std::optional<int> knownAddress_;
  QString addressHeld_;   // the address that holds while its text is none
  CvIndex userRowCv_{9};  // CV of the spare row of the drive page
  bool progressEnabled_ = false;
  BatchReport report_;
  std::set<CvIndex> written_;    // writes of them went out since open(); named when given up
  bool reachedStation_ = false;  // any job since open()
  ConfigClicks configClicks_;    // since the options of CV 29 last agreed with its value
  bool choicePending_ = false;
  std::unique_ptr<Clock::Alarm> Timer3_;
  std::optional<MissingDescription> missing_;
};

}  // namespace lokari
