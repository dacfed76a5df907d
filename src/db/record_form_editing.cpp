// The user's changes: how an edit begins, what is checked, how a record is stored and left.
#include <cmath>

#include "base/numbers.h"
#include "base/prompt.h"
#include "db/database.h"
#include "db/form_clipboard.h"
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

bool isAddress(double value) {
  return value >= form::kLowestAddress && value <= form::kHighestAddress;
}

}  // namespace

// ---- Controls
// --------------------------------------------------------------------------------------

void RecordForm::edited(const QString& control, const QString& text) {
  states_[control].text = text;
  if (loadingRecord) return;
  typed_ = true;
  textEdited(control);
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
}

bool RecordForm::takesKey(const QString& control, QChar key) {
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
  if (key < kFirstTyped || text(control).size() <= kCollectionLimit) return true;
  parts_.prompt.beep();
  return false;
}

void RecordForm::focusGained(const QString& control) {
  const FormField* field = formField(control);
  if (field != nullptr && field->selectedOnFocus && isEnabled(control)) emit selectWanted(control);
}

void RecordForm::focusLost(const QString& control) {
  const FormField* field = formField(control);
  if (field == nullptr || !field->checkedOnFocusLoss) return;
  const bool address = control == form::kAddress;
  if ((address && adrCheckOff) || !chkDbField(*field) || !address) return;
  const std::optional<double> value = parseNumber(text(control));
  if (value && !isAddress(*value)) {
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
  // Stored: the next change is the first one again.
  if (editMode() == EditMode::Edit && Update()) recordDirty = false;
}

bool RecordForm::beginEdit() {
  return attempt([this] {
    if (!loaded_) {
      throw StorageError(storage_error::kOther,
                         QStringLiteral("Der Datensatz konnte nicht gelesen werden und wird daher "
                                        "nicht verändert."));
    }
    records_.Edit();
  });
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

void RecordForm::noteStored() {
  changed_.clear();
  typed_ = false;
  pictureChanged_ = false;
}

// ---- Storing and leaving
// ---------------------------------------------------------------------------

bool RecordForm::validate(FormAction action) {
  validateFail = 0;
  if (std::exchange(skipValidate, false)) return true;
  if (action == FormAction::Remove || action >= FormAction::Close) return true;
  if (records_.count() < 1 || position() < 0) return true;
  const bool save = !changed_.isEmpty() || pictureChanged_;
  if (editMode() == EditMode::None || !save) return true;
  if (!isAddress(std::nearbyint(numericPrefix(text(form::kAddress))))) {
    parts_.prompt.message(QStringLiteral("Adresse ungültig"));
    validateFail = 1;
    emit focusWanted(form::kAddress, false);
  } else if (text(form::kShortName).isEmpty()) {
    parts_.prompt.message(QStringLiteral("Kurzbezeichnung muß eingegeben werden"));
    validateFail = 2;
    emit focusWanted(form::kShortName, false);
  }
  return validateFail == 0;
}

bool RecordForm::Update() {
  return validate(FormAction::Store) && store();
}

bool RecordForm::store() {
  return attempt([this] {
    // The blank record behind the last one is only stored when the user made something of it.
    if (isUntouchedBlank()) {
      records_.CancelUpdate();
    } else {
      writeControls();
      if (editMode() == EditMode::Add) nameCollection();
      records_.Update();
    }
    noteStored();
  });
}

bool RecordForm::isUntouchedBlank() const {
  return editMode() == EditMode::Add && position() < 0 && !typed_;
}

// Null collections do not collide, empty ones do: a vehicle without a collection has the empty one
// from its first save on.
void RecordForm::nameCollection() {
  const QString column = QStringLiteral("DC_COLL");
  if (records_.value(column).isNull()) records_.setValue(column, QStringLiteral(""));
}

// A picture is taken away without an edit, and goes with the record when it is left.
bool RecordForm::storeTakenPicture() {
  if (!pictureChanged_ || position() < 0 || !records_.isOpen()) return true;
  changed_.clear();
  return beginEdit() && store();
}

bool RecordForm::leave(FormAction action) {
  if (!validate(action)) return false;
  if (editMode() == EditMode::None) return storeTakenPicture();
  if (changed_.isEmpty() && !pictureChanged_ && editMode() == EditMode::Edit) {
    records_.CancelUpdate();
    return true;
  }
  return store();
}

bool RecordForm::storeEdit() {
  if (isSearching()) {
    dropBlank();
    return true;
  }
  if (isUntouchedBlank()) return true;
  const bool added = editMode() == EditMode::Add;
  if (editMode() != EditMode::None && !Update()) return false;
  if (!storeTakenPicture()) return false;
  recordDirty = false;
  // The texts on show are those of the new record: it has to be the current one.
  if (added) showAdded();
  return true;
}

void RecordForm::showAdded() {
  records_.MoveLast();
  show();
  if (!savedOkCaption.isEmpty()) browse();
}

bool RecordForm::close() {
  if (!storeEdit()) return false;
  records_.close();
  return true;
}

bool RecordForm::attempt(const std::function<void()>& operation) {
  try {
    operation();
    return true;
  } catch (const StorageError& error) {
    report(error);
    return false;
  }
}

void RecordForm::report(const StorageError& error) {
  storageMessage_ = error.code() == storage_error::kDuplicateKey
                        ? QStringLiteral("Datensatz mit dieser Adresse bereits vorhanden!")
                        : error.text();
  parts_.prompt.message(storageMessage_);
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
