// New record, confirm, cancel, delete, and the way to the decoder window and back.
#include <QScopedValueRollback>

#include <utility>

#include "base/numbers.h"
#include "base/prompt.h"
#include "db/database.h"
#include "db/form_clipboard.h"
#include "db/form_names.h"
#include "db/record_form.h"

namespace lokari {
namespace {

constexpr double kFunctionUnit = 2;

}  // namespace

void RecordForm::butNew() {
  if (!storeEdit()) return;
  if (position() >= 0) savedBookmark = records_.bookmark();
  setVisible(form::toolbar(), false);
  setEnabled({form::kPicLink, form::kNavigator}, false);
  if (savedOkCaption.isEmpty()) savedOkCaption = text(form::kOk);
  setText(form::kOk, QStringLiteral("OK"));
  setVisible({form::kOk, form::kCancel}, true);
  setEnabled(form::drivingButtons() + form::menuEntries(), false);
  offerFindNext();

  if (!validate(FormAction::Add) || !attempt([this] { records_.AddNew(); })) return;
  noteStored();
  loaded_ = true;
  fillBound();
  emit focusWanted(form::kAddress, false);
  changeText(form::kType, QStringLiteral("1"));
  for (const char16_t* control :
       {u"fz_ftype", u"fz_line", u"fz_era", u"md_manuf", u"md_motor", u"dc_coll"}) {
    changeText(QString::fromUtf16(control), QString());
  }
  setText(form::kMaker, QString());
  InitDcData();
  setText(form::kNavigator, form::kNewRecord);
  emit recordShown();
}

void RecordForm::butOK() {
  if (savedOkCaption.isEmpty()) {
    runSearch(false);
    return;
  }
  if (editMode() == EditMode::None) {
    // butDelete has given the new record up already.
    browse();
    return;
  }
  if (text(form::kAddress).isEmpty()) {
    parts_.prompt.beep();
    return;
  }
  if (!isNumeric(text(form::kType))) changeText(form::kType, QStringLiteral("1"));
  if (Update()) showAdded();
}

void RecordForm::butCancel() {
  if (position() < 0) {
    parts_.prompt.beep();
    return;
  }
  dropBlank();
}

void RecordForm::dropBlank() {
  browse();
  records_.CancelUpdate();
  show();
}

void RecordForm::browse() {
  setVisible(form::toolbar(), true);
  setEnabled({form::kPicLink, form::kNavigator}, true);
  setVisible({form::kNavigator}, true);
  setVisible({form::kOk, form::kCancel, form::kFilter}, false);
  setEnabled(form::drivingButtons() + form::menuEntries(), true);
  if (!savedOkCaption.isEmpty()) setText(form::kOk, savedOkCaption);
  savedOkCaption.clear();
  offerFindNext();
  noteUnsaved();
}

void RecordForm::butDelete() {
  if (editMode() == EditMode::Add) {
    records_.CancelUpdate();
    noteStored();
    skipValidate = true;
    goTo(savedBookmark);
    return;
  }
  if (!quietDelete && parts_.prompt.ask(QStringLiteral("Datensatz wirklich löschen?"),
                                        Buttons::YesNo, Icon::Question, {}) != Answer::Yes) {
    return;
  }
  deleteRecord();
}

void RecordForm::deleteRecord() {
  validate(FormAction::Remove);
  const int place = position();
  std::optional<RowValues> row;
  const bool deleted = attempt([&] {
    row.reset();
    try {
      row = records_.row();
    } catch (const StorageError& error) {
      // Somebody was quicker: there is nothing to bring back.
      if (error.code() != storage_error::kRecordDeleted) throw;
    }
    records_.Delete();
  });
  // What could not be deleted is still there and still on show.
  if (!deleted) return;
  noteStored();
  rememberDeleted(std::move(row), place);
  if (!records_.EOF_()) records_.MoveNext();
  if (position() < 0 && !records_.BOF()) records_.MovePrevious();
  if (position() < 0 && isFiltered()) {
    // Nothing is left of the filter; there may be other vehicles.
    try {
      filterBy({});
    } catch (const StorageError& error) {
      show();
      report(error);
    }
  } else {
    show();
  }
  if (position() < 0) butNew();
}

void RecordForm::rememberDeleted(std::optional<RowValues> row, int position) {
  deleted_.reset();
  if (row) deleted_ = Deleted{std::move(*row), position};
  setVisible({form::kUndo}, deleted_.has_value());
  setEnabled({form::kUndoEntry}, deleted_.has_value());
}

void RecordForm::butUndo() {
  if (!deleted_) return;
  // Storing the edit in hand would forget what is to be put back.
  const Deleted deleted = *deleted_;
  if (!leaveForUndo()) return;
  browse();
  try {
    whileLocked([&] { records_.restore(deleted.row, deleted.position); });
    noteStored();
    rememberDeleted({}, 0);
  } catch (const StorageError& error) {
    noteFailure(error);
    tell(storageMessage_, inTheWayOf(deleted.row));
    // What stands in its way can be moved, and the record is nowhere else.
    rememberDeleted(deleted.row, deleted.position);
  }
  show();
}

// Whoever wants a record back has said nothing about the edit in hand.
bool RecordForm::leaveForUndo() {
  if (isUntouchedBlank()) return true;
  if (!isUnsaved()) return storeEdit();
  const QScopedValueRollback telling(telling_, true);
  switch (parts_.prompt.choose(
      {.text = QStringLiteral("Vor dem Zurückholen: Eingaben zu Adresse %1 \"%2\" speichern?")
                   .arg(text(form::kAddress), text(form::kShortName)),
       .more = QStringLiteral("Danach ist der zurückgeholte Datensatz zu sehen."),
       .answers = {QStringLiteral("&Speichern"), QStringLiteral("Eingaben &verwerfen"),
                   QStringLiteral("&Weiter bearbeiten")},
       .safe = 2})) {
    case 0:
      return storeEdit();
    case 1:
      dropEdit();
      return true;
    default:
      return false;
  }
}

QString RecordForm::inTheWayOf(const RowValues& row) const {
  try {
    const std::optional<RowValues> other = records_.inTheWayOf(row);
    if (!other) return {};
    const QString collection = other->value(QStringLiteral("DC_COLL")).toString();
    return QStringLiteral(
               "Adresse %1%2 hat jetzt \"%3\". Der gelöschte Datensatz \"%4\" lässt sich "
               "zurückholen, sobald sie wieder frei ist.")
        .arg(other->value(QStringLiteral("DC_ADR")).toString(),
             collection.isEmpty() ? QString()
                                  : QStringLiteral(" der Sammlung \"%1\"").arg(collection),
             other->value(QStringLiteral("ST_SNAME")).toString(),
             row.value(QStringLiteral("ST_SNAME")).toString());
  } catch (const StorageError&) {
    return {};
  }
}

void RecordForm::giveUp() {
  if (isSearching() || !savedOkCaption.isEmpty()) {
    butCancel();
    return;
  }
  if (!isUnsaved()) return;
  if (changedFields() > 1 &&
      parts_.prompt.choose(
          {.text = QStringLiteral("Eingaben zu diesem Datensatz verwerfen?"),
           .more = QStringLiteral("Es sind mehrere Felder geändert."),
           .answers = {QStringLiteral("&Verwerfen"), QStringLiteral("&Weiter bearbeiten")},
           .safe = 1}) != 0) {
    return;
  }
  // A blank record stands behind the last one.
  const bool blank = editMode() == EditMode::Add;
  dropEdit();
  if (blank) {
    records_.MoveLast();
  } else {
    // Another program may have changed the record during the edit.
    attempt([this] { records_.reread(); });
  }
  show();
}

bool RecordForm::prepareProgramming() {
  const std::optional<double> type = parseNumber(text(form::kType));
  if (!type) {
    parts_.prompt.message(QStringLiteral("Type nicht festgelegt!"));
    return false;
  }
  if (*type == kFunctionUnit) {
    parts_.prompt.message(QStringLiteral("Programmierfenster für Funktionsteile nicht verfügbar!"));
    return false;
  }
  if (!loaded_) {
    parts_.prompt.message(QStringLiteral("Die CV-Werte konnten nicht gelesen werden."));
    return false;
  }
  if (!working_.hasArrays()) InitDcData();
  if (working_.recManuf == 0) working_.recDecoder.clear();
  adrCheckOff = true;
  return true;
}

void RecordForm::refreshCvSets() {
  if (position() < 0 || editMode() == EditMode::Add || !loaded_) return;
  loaded_ = attempt([this] {
    records_.reread(cvRecordColumns());
    loadCvRecord(records_, working_);
  });
  if (addressTyped_) working_.clearAddressMarks();
}

void RecordForm::storeProgrammed(const CvRecord& record, const QString& address,
                                 const QString& maker) {
  working_ = record;
  // Shown only: the column takes the name with the sets, and a paste may still replace both.
  setText(form::kDecoder, record.recDecoder);
  setText(form::kMaker, maker);
  changeText(form::kAddress, address);
  if (editMode() == EditMode::None && !beginEdit()) return;
  if (!attempt([&] { assignCvRecord(records_, working_); })) return;
  // The window has had its say about the marks of the address.
  addressTyped_ = false;
  // The record counts as changed, whatever the sets hold.
  recordDirty = true;
  typed_ = true;
  changed_.insert(form::kShortName);
  noteUnsaved();
}

void RecordForm::takeStoredCv(const CvPlace& cv) {
  const auto set = static_cast<size_t>(cv.set - 1);
  const QString values = QString::fromUtf16(kCvColumns[set].values);
  const QString marks = QString::fromUtf16(kCvColumns[set].marks);
  try {
    records_.changedBeside(values, [&cv](const QVariant& field) { return withValue(field, cv); });
    records_.changedBeside(marks, [&cv](const QVariant& field) { return withMark(field, cv); });
    working_.recCvValues[set] = chkCVVar(records_.value(values));
    working_.recCvMarks[set] = chkCVVar(records_.value(marks));
  } catch (const StorageError&) {
    // The line is held here, and waits for no file. What stands in the row is compared when the
    // edit is stored.
  }
  if (addressTyped_) working_.clearAddressMarks();
}

}  // namespace lokari
