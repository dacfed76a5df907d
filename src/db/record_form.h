// The record form: one vehicle at a time, each column in a control, a navigator, a toolbar. This is
// all of it but the window: the window shows texts and states by the controls' names and hands the
// user's acts over.
//
// Names are those of the controls: fields (`dc_adr`, `st_sname`, ... see form_fields.h), the shown
// `dc_manuf`, buttons (`butTable`, `butFind`, `butNew`, `butDelete`, `butOK`, `butCancel`,
// `butFilter`, `butPicLink`, `butPicDel`, `butProg`, `butDrive`, `butSwitch`), the navigator
// `Data1` and the menu entries `mnuDbPrint`, `mnuEditNew`, `mnuEditCopy`, `mnuEditInsert`,
// `mnuEditDelete`, `mnuEditFind`, `mnuEditFindNext`. Texts of `butOK` and `Data1` are their
// captions.
//
// No operation throws: a storage failure is shown through the Prompt.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

#include "db/cv_record.h"
#include "db/record_search.h"
#include "db/record_set.h"

namespace lokari {

class Database;
class Desktop;
class IniFile;
class Prompt;
struct FormField;
struct FormClipboard;

/// What the record set is about to do when the form is validated.
enum class FormAction {
  None = 0,
  First = 1,
  Previous,
  Next,
  Last,
  Add,
  Store,
  Remove,
  Find,
  ToBookmark,
  Close,
  Unload,
};

/// What a search for a record came to.
enum class FindResult {
  Found,
  NoMatch,  ///< the record on show stays
  Refused,  ///< the record on show cannot be left, a message says why
  Failed,   ///< the condition is not understood; see storageMessage()
};

struct RecordFormParts {
  Prompt& prompt;
  Desktop& desktop;
  IniFile& ini;     ///< holds `PicDir`
  QString appPath;  ///< where the picture dialog starts without `PicDir`
};

class RecordForm : public QObject {
  Q_OBJECT

 public:
  explicit RecordForm(RecordFormParts parts, QObject* parent = nullptr);
  ~RecordForm() override;

  // ---- What the window shows --------------------------------------------------------------------

  QString text(const QString& control) const;
  bool isEnabled(const QString& control) const;
  bool isVisible(const QString& control) const;
  /// Entries of a drop-down, `md_scale` included.
  QStringList list(const QString& control) const { return lists_.value(control); }
  /// The picture as an encoded file (BMP, JPEG, PNG), empty for none. Lay it out by fitPicture().
  QByteArray picture() const { return picture_; }
  /// The option button that is on: 1 to 3, or 0 when none is.
  int typeOption() const { return typeOption_; }
  /// True while a filter is on: the navigator has the colour of tool tips.
  bool isFiltered() const { return !sqlFilter.isEmpty(); }
  /// The record on show has changes of the user that are not on disk.
  bool isUnsaved() const { return unsaved_; }
  /// The record on show could be read. Where not, empty fields say nothing of it.
  bool isRead() const { return loaded_; }

  // ---- State ------------------------------------------------------------------------------------

  bool recordDirty = false;    ///< a user change has begun on this record
  bool loadingRecord = false;  ///< the program fills the controls; changes are no edits
  int validateFail = 0;        ///< last validation: 0 good, 1 address wrong, 2 short name missing
  bool skipValidate = false;   ///< the next validation passes unchecked
  bool quietDelete = true;     ///< no question at deletion; until the first database is open
  QString savedOkCaption;      ///< kept caption of `butOK`; not empty: new-record mode
  Bookmark savedBookmark;      ///< the record that was current before butNew()
  bool adrCheckOff = false;    ///< no range check when `dc_adr` loses the focus
  QString sqlFilter;           ///< condition of the active filter
  QString reportFilter;        ///< the same as a report selection
  QString pendingFind;         ///< condition that the vehicle list is given and hands back

  RecordSet& records() { return records_; }
  const RecordSet& records() const { return records_; }
  int position() const { return records_.position(); }
  EditMode editMode() const { return records_.editMode(); }
  /// The working copy of the record on show.
  const CvRecord& workingCopy() const { return working_; }
  /// The text of the last storage failure.
  QString storageMessage() const { return storageMessage_; }

  // ---- The database -----------------------------------------------------------------------------

  /// Shows another database from its first record, in browsing mode and without a filter; a pending
  /// edit is dropped. `records` is its opened default query.
  void bind(Database& database, RecordSet records);
  /// Shows the record set with another query, such as a filter's; throws StorageError and keeps the
  /// old set when it is refused.
  void requery(const QString& query);

  // ---- The user's acts in controls --------------------------------------------------------------

  /// The text of a field was changed by the user.
  void edited(const QString& control, const QString& text);
  void focusGained(const QString& control);
  void focusLost(const QString& control);
  /// False when a key is to be thrown away; `key` is its character, backspace being 8. It takes the
  /// place of `replaced` selected characters: what does not lengthen a text passes its limit.
  bool takesKey(const QString& control, QChar key, qsizetype replaced = 0);
  /// A click on `dc_type_1` to `dc_type_3`.
  void clickType(int type);

  // ---- The navigator; each stores the record on show and leaves it, or says why not
  // --------------

  void MoveFirst();
  void MovePrevious();
  /// From the last record on it begins a new record, without the buttons of new-record mode.
  void MoveNext();
  void MoveLast();
  FindResult FindFirst(const QString& condition);
  void goTo(const Bookmark& bookmark);
  /// Stores the record if it is being edited; a new one is then on show in browsing mode. A blank
  /// record that nobody touched stays what it is, and a query form is left. False when the record
  /// was not valid, or the storage refused it and the user goes on editing; a message was shown.
  /// Where he gives the edit up instead, the record is on show as it was.
  bool storeEdit();
  /// The same for an edit that is valid and for no other: nothing is asked about an edit that is
  /// not finished. True when nothing is left to store.
  bool storeIfValid();
  /// Stores what is pending and closes the record set, for shutdown. False when it could not be
  /// stored: then everything stays as it is.
  bool close();

  // ---- Commands ---------------------------------------------------------------------------------

  void butNew();
  void butDelete();
  void butCancel();
  /// Gives the edit of the record on show up, or the blank record behind the last one. A change of
  /// more than one field is asked about.
  void giveUp();
  /// Puts the record back that butDelete() took last. Possible until another one is stored. An edit
  /// in hand is asked about.
  void butUndo();
  /// Confirms the new record, or finds what the query form asks for.
  void butOK();
  /// Makes the form a query form: blank, its buttons those of the search. A pending edit is stored
  /// first; when it is not valid the form stays what it is.
  void butFind();
  /// Restricts the record set to what the query form asks for; an empty form ends the filter.
  void butFilter();
  /// Goes on to the next record behind the one on show that the last find was for.
  void mnuEditFindNext();
  /// True while the form is a query form. What it holds then is no record and is never stored.
  bool isSearching() const { return isVisible(QStringLiteral("butFilter")); }
  void mnuEditCopy();
  void mnuEditInsert();
  void butPicLink();
  void butPicDel();

  /// The database on show, or nullptr.
  Database* database() const { return database_; }
  /// The CV sets on disk may have changed beside the form: the working copy takes them anew. What
  /// a pending edit holds of them stays, and is asked about when it is stored over others.
  void refreshCvSets();

  /// Empties the working copy.
  void InitDcData() { working_.InitDcData(); }

  /// The checks of butProg ahead of the decoder window. False when it must not open; a message was
  /// shown. Otherwise the working copy is ready.
  bool prepareProgramming();
  /// After the decoder window closed with success: the fields take its texts, the working copy and
  /// the edited record take `record`. It is on disk at the next move, like every edit.
  void storeProgrammed(const CvRecord& record, const QString& address, const QString& maker);

  /// This program has stored a CV of the record on show beside the form: the working copy takes it,
  /// and an edit in hand will not put the old one back.
  void takeStoredCv(const CvPlace& cv);

  /// The checks of butTable ahead of the vehicle list: false when there is no record to list. The
  /// record is stored; `pendingFind` tells the list where to stand.
  bool prepareList();
  /// After the list closed: goes to the record that `pendingFind` names. Empty, or a condition
  /// without a value, leaves the form where it is; so does a record that is not found.
  void takeFromList();

  /// The catalogue has changed: the maker of the record on show takes its name anew.
  void refreshMaker();
  /// Reads the list of a drop-down anew; its text stays.
  void refreshList(const QString& control);

 signals:
  /// The program set a text; the window shows it without handing it back as an edit.
  void textChanged(const QString& control, const QString& text);
  /// `enabled` or `visible` of a control changed.
  void stateChanged(const QString& control);
  void listChanged(const QString& control);
  void pictureChanged();
  void typeOptionChanged(int option);
  void filteredChanged(bool on);
  void unsavedChanged(bool unsaved);
  /// Give the control the focus; with `selectAll` its whole text is selected as well.
  void focusWanted(const QString& control, bool selectAll);
  /// Select the whole text of the control.
  void selectWanted(const QString& control);
  /// Another record is on show, or a new one was begun or left.
  void recordShown();

 private:
  struct State {
    QString text;
    bool enabled = true;
    bool visible = true;
  };

  // Controls.
  void addControl(const QString& control, bool enabled = true, bool visible = true);
  void setText(const QString& control, const QString& text);
  void changeText(const QString& control, const QString& text);
  void textEdited(const QString& control);
  void pasteText(const QString& control, const QString& text);
  void setEnabled(const QStringList& controls, bool enabled);
  void setVisible(const QStringList& controls, bool visible);
  void setPicture(const QByteArray& picture);
  void setTypeOption(int option);
  void setList(const QString& control, const QStringList& entries);

  // Showing.
  /// What is looked up beside the record: the maker's name and the collections.
  enum class Beside { Anew, Kept };
  void show(Beside beside = Beside::Anew);
  void fillBound();
  void reposition(Beside beside);
  void showRecord(Beside beside);
  void showMaker();
  void showBlank();
  void updComboFields();

  // Editing.
  void chngDbField();
  void chngComboField(const FormField& field);
  bool chkDbField(const FormField& field);
  void focusBack(const QString& control, const QString& message);
  /// Throws StorageError.
  void begin();
  bool beginEdit();
  void writeControls();
  void clearAddressMarks(bool over);
  int changedFields() const;

  // Leaving.
  bool validate(FormAction action);
  int faultOnShow() const;
  bool leave(FormAction action);
  /// On a way out, an edit that the storage refuses may be given up.
  enum class Way { Out, Stay };
  enum class Stored { Yes, GivenUp, No };
  Stored store(Way way);
  void write(bool over);
  Stored refused(const StorageError& error, Way way);
  Stored storePending();
  /// What is stored where another program changed the record under the edit.
  enum class Foreign { Overwrite, Take, Neither };
  Foreign askAboutChange(const RecordChanged& changed);
  void dropEdit();
  /// The collection of the edit holds the address already.
  bool isTaken() const;
  Stored storeTakenPicture(Way way);
  bool isUntouchedBlank() const;
  void nameCollection();
  void showAdded();
  bool Update();
  void noteStored();
  void noteUnsaved();
  bool attempt(const std::function<void()>& operation);
  void whileLocked(const std::function<void()>& operation);
  void tell(const QString& text, const QString& more = {});
  void noteFailure(const StorageError& error);
  void report(const StorageError& error);

  // Modes.
  void browse();
  void dropBlank();
  void runSearch(bool filter);
  void findFirst(const SearchCondition& condition);
  void filterBy(const SearchCondition& condition);
  /// Tells that nothing was found. Gives the condition with stars where that finds something and
  /// the user wants it, else one without `sql`.
  SearchCondition offerStars(const SearchCondition& condition);
  int countOf(const QString& condition) const;
  void rememberFind(const QString& condition);
  void offerFindNext();
  void deleteRecord();
  void rememberDeleted(std::optional<RowValues> row, int position);
  bool leaveForUndo();
  /// Which vehicle has the address of a deleted one by now, as a sentence; empty for none.
  QString inTheWayOf(const RowValues& row) const;

  RecordFormParts parts_;
  Database* database_ = nullptr;
  RecordSet records_;
  CvRecord working_;
  bool loaded_ = true;  // the record on show could be read
  QString storageMessage_;
  QHash<QString, State> states_;
  QHash<QString, QStringList> lists_;
  QSet<QString> changed_;  // controls that were changed since the record was shown or stored
  bool typed_ = false;     // by the user, that is
  bool addressTyped_ = false;
  bool pictureChanged_ = false;
  bool unsaved_ = false;
  bool collectionTaken_ = false;  // the collection that is being typed has the address already
  bool telling_ = false;          // a box of this form is open
  QString lastFind_;              // the condition of the last find; empty for none
  QByteArray picture_;
  int typeOption_ = 0;
  std::unique_ptr<FormClipboard> clipboard_;
  struct Deleted {
    RowValues row;
    int position = 0;
  };
  std::optional<Deleted> deleted_;
};

}  // namespace lokari
