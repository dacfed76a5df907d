// The user's changes: what is checked while he types, how an edit begins, and how he moves on.
#include <QScopedValueRollback>

#include "base/numbers.h"
#include "base/prompt.h"
#include "db/database.h"
#include "db/form_fields.h"
#include "db/form_names.h"
#include "db/record_form.h"

namespace lokari {
namespace {

constexpr QChar kBackspace{8};
constexpr QChar kFirstTyped{20};
constexpr int kCollectionLimit = 15;  // a longer text takes no more characters

QString name(const char16_t* text) {
  return QString::fromUtf16(text);
}

}  // namespace

// ---- Controls
// --------------------------------------------------------------------------------------

void RecordForm::edited(const QString& control, const QString& text) {
  states_[control].text = text;
  if (loadingRecord) return;
  typed_ = true;
  textEdited(control);
  if (control == form::kAddress) {
    // In the record only when it is stored: until then others may store the sets.
    addressTyped_ = true;
    working_.clearAddressMarks();
  }
  noteUnsaved();
}

// A text that the program sets in the way of the user: the control's change is handled.
void RecordForm::changeText(const QString& control, const QString& text) {
  if (this->text(control) == text) return;
  setText(control, text);
  textEdited(control);
}

void RecordForm::textEdited(const QString& control) {
  const FormField* field = formField(control);
  if (field == nullptr) return;
  changed_.insert(control);
  if (field->binding == Binding::DropDown) {
    chngComboField(*field);
  } else if (control == form::kAddress && numericPrefix(text(control)) == 0) {
    // An empty address or 0 is the beginning of another one.
    emit selectWanted(control);
  } else if (control == form::kType) {
    const int type = text(control).toInt();
    if (type < 1 || type > 3) return;
    setTypeOption(type);
    chngDbField();
  } else if (control != form::kDecoder) {
    chngDbField();
  }
}

void RecordForm::clickType(int type) {
  typed_ = true;
  changeText(form::kType, QString::number(type));
  noteUnsaved();
}

bool RecordForm::takesKey(const QString& control, QChar key, qsizetype replaced) {
  const FormField* field = formField(control);
  if (field == nullptr || key == kBackspace) return true;
  switch (field->keys) {
    case KeyFilter::All:
      return true;
    case KeyFilter::Digits:
      return QStringView(u"0123456789").contains(key);
    case KeyFilter::Price:
      return QStringView(u"01234567890.,").contains(key);
    case KeyFilter::Collection:
      break;
  }
  constexpr QChar kDelete(127);
  const bool lengthens = key >= kFirstTyped && key != kDelete && replaced == 0;
  if (!lengthens || text(control).size() <= kCollectionLimit) return true;
  parts_.prompt.beep();
  return false;
}

void RecordForm::focusGained(const QString& control) {
  const FormField* field = formField(control);
  if (field != nullptr && field->selectedOnFocus && isEnabled(control)) emit selectWanted(control);
}

void RecordForm::focusLost(const QString& control) {
  // The focus went to a box of this form; a second one would cover it.
  if (telling_) return;
  if (control == form::kCollection && collectionTaken_ && editMode() == EditMode::Edit) {
    collectionTaken_ = false;
    if (Update()) recordDirty = false;
    return;
  }
  const FormField* field = formField(control);
  if (field == nullptr || !field->checkedOnFocusLoss) return;
  const bool address = control == form::kAddress;
  if ((address && adrCheckOff) || !chkDbField(*field) || !address) return;
  const std::optional<double> value = parseNumber(text(control));
  if (value && !form::isAddress(*value)) {
    focusBack(control, QStringLiteral("Erlaubte Werte liegen zwischen 1 und 10239!"));
  }
}

bool RecordForm::chkDbField(const FormField& field) {
  if (database_ == nullptr) return true;
  const QString control = name(field.control);
  const QString entry = text(control);
  const ColumnInfo* column =
      records_.isOpen() ? records_.table().column(name(field.column)) : nullptr;
  if (column == nullptr) return true;
  if (column->isText() && entry.size() > column->size) {
    focusBack(control, QStringLiteral("Maximale Eingabelänge überschritten!"));
    return false;
  }
  if (column->isNumeric() && !entry.isEmpty() && !isNumeric(entry)) {
    focusBack(control, QStringLiteral("Numerische Eingabe erforderlich!"));
    return false;
  }
  return true;
}

void RecordForm::focusBack(const QString& control, const QString& message) {
  // Whatever loses the focus to this field is not checked meanwhile.
  const QScopedValueRollback telling(telling_, true);
  emit focusWanted(control, true);
  parts_.prompt.message(message);
}

// ---- Edits
// -----------------------------------------------------------------------------------------

void RecordForm::chngDbField() {
  if (editMode() != EditMode::None || recordDirty) return;
  recordDirty = true;
  if (position() >= 0 && !loadingRecord) beginEdit();
}

void RecordForm::chngComboField(const FormField& field) {
  if (editMode() == EditMode::None && !recordDirty && position() >= 0 && !loadingRecord) {
    recordDirty = true;
    beginEdit();
  }
  if (editMode() == EditMode::None) return;
  const QString value = text(name(field.control));
  if (!attempt([&] { records_.setValue(name(field.column), value); })) return;
  if (editMode() != EditMode::Edit) return;
  if (field.control == QStringView(u"dc_coll")) {
    // A collection is stored with every key. One that has the address already may be on the way to
    // one that has not: the message waits until the field is left.
    collectionTaken_ = attempt([this] { writeControls(); }) && isTaken();
    if (collectionTaken_) return;
  }
  // Stored: the next change is the first one again.
  if (Update()) recordDirty = false;
}

bool RecordForm::isTaken() const {
  try {
    return records_.isTaken();
  } catch (const StorageError&) {
    // Storing meets the same failure and tells it.
    return false;
  }
}

void RecordForm::begin() {
  if (!loaded_) {
    throw StorageError(storage_error::kOther,
                       QStringLiteral("Der Datensatz konnte nicht gelesen werden und wird daher "
                                      "nicht verändert."));
  }
  records_.Edit();
}

bool RecordForm::beginEdit() {
  return attempt([this] { begin(); });
}

// What nobody changed stays in the record as it is.
void RecordForm::writeControls() {
  for (const FormField& field : formFields()) {
    const QString control = name(field.control);
    if (field.binding != Binding::Bound || !changed_.contains(control)) continue;
    const QString entry = text(control);
    records_.setValue(name(field.column), entry.isEmpty() ? QVariant() : QVariant(entry));
  }
  if (pictureChanged_) {
    records_.setValue(form::kPictureColumn, picture_.isEmpty() ? QVariant() : QVariant(picture_));
  }
}

// No set has read or written an address that was typed. What another program has stored of sets
// that the edit does not hold stays, when the edit is stored `over` it.
void RecordForm::clearAddressMarks(bool over) {
  for (const CvColumns& set : kCvColumns) {
    const QString column = name(set.marks);
    if (over) records_.reread({name(set.values), column});
    const QByteArray marks = records_.value(column).toByteArray();
    const QByteArray cleared = withoutAddressMarks(marks);
    if (cleared != marks) records_.setValue(column, cleared);
  }
}

int RecordForm::changedFields() const {
  QSet<QString> columns;
  for (const FormField& field : formFields()) {
    if (changed_.contains(name(field.control))) columns.insert(name(field.column));
  }
  for (const QString& column : records_.changes().keys()) {
    if (records_.isChanged(column)) columns.insert(column);
  }
  if (pictureChanged_) columns.insert(form::kPictureColumn);
  return static_cast<int>(columns.size());
}

void RecordForm::noteStored() {
  changed_.clear();
  typed_ = false;
  addressTyped_ = false;
  pictureChanged_ = false;
  collectionTaken_ = false;
  noteUnsaved();
}

void RecordForm::noteUnsaved() {
  const bool touched = typed_ || pictureChanged_;
  const bool unsaved =
      touched && !isSearching() && (editMode() != EditMode::None || pictureChanged_);
  if (std::exchange(unsaved_, unsaved) != unsaved) emit unsavedChanged(unsaved);
}

// ---- The navigator
// ---------------------------------------------------------------------------------

void RecordForm::MoveFirst() {
  if (!leave(FormAction::First)) return;
  records_.MoveFirst();
  show();
}

void RecordForm::MoveLast() {
  if (!leave(FormAction::Last)) return;
  records_.MoveLast();
  show();
}

void RecordForm::MovePrevious() {
  if (!leave(FormAction::Previous)) return;
  if (!records_.BOF()) records_.MovePrevious();
  if (records_.BOF()) records_.MoveFirst();
  show();
}

void RecordForm::MoveNext() {
  if (!leave(FormAction::Next)) return;
  if (!records_.EOF_()) records_.MoveNext();
  if (records_.EOF_()) attempt([this] { records_.AddNew(); });
  show();
}

FindResult RecordForm::FindFirst(const QString& condition) {
  if (!leave(FormAction::Find)) return FindResult::Refused;
  try {
    records_.FindFirst(condition);
  } catch (const StorageError& error) {
    storageMessage_ = error.text();
    show();
    return FindResult::Failed;
  }
  // Also without a match: the record was stored, and its next change begins another edit.
  show();
  return records_.NoMatch() ? FindResult::NoMatch : FindResult::Found;
}

void RecordForm::goTo(const Bookmark& bookmark) {
  if (!leave(FormAction::ToBookmark)) return;
  try {
    records_.setBookmark(bookmark);
  } catch (const StorageError&) {
    // The record is gone: the current one is shown, or where there is none the last one.
  }
  show();
}

}  // namespace lokari
