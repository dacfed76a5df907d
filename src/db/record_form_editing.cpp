// The user's changes: how an edit begins, what is checked, how a record is stored and left.
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/prompt.h"
#include "db/database.h"
#include "db/foreign_changes.h"
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
  collectionTaken_ = false;
  noteUnsaved();
}

void RecordForm::noteUnsaved() {
  const bool touched = typed_ || pictureChanged_;
  const bool unsaved =
      touched && !isSearching() && (editMode() != EditMode::None || pictureChanged_);
  if (std::exchange(unsaved_, unsaved) != unsaved) emit unsavedChanged(unsaved);
}

// ---- Storing and leaving
// ---------------------------------------------------------------------------

bool RecordForm::validate(FormAction action) {
  validateFail = 0;
  if (std::exchange(skipValidate, false)) return true;
  if (action == FormAction::Remove || action >= FormAction::Close) return true;
  // A blank record passes for as long as nobody made something of it.
  if ((records_.count() < 1 || position() < 0) && !typed_) return true;
  const bool save = !changed_.isEmpty() || pictureChanged_;
  if (editMode() == EditMode::None || !save) return true;
  validateFail = faultOnShow();
  if (validateFail == 1) {
    tell(QStringLiteral("Adresse ungültig"));
    emit focusWanted(form::kAddress, false);
  } else if (validateFail == 2) {
    tell(QStringLiteral("Kurzbezeichnung muß eingegeben werden"));
    emit focusWanted(form::kShortName, false);
  }
  return validateFail == 0;
}

int RecordForm::faultOnShow() const {
  if (!isAddress(std::nearbyint(numericPrefix(text(form::kAddress))))) return 1;
  return text(form::kShortName).isEmpty() ? 2 : 0;
}

bool RecordForm::Update() {
  return validate(FormAction::Store) && store(Way::Stay) == Stored::Yes;
}

RecordForm::Stored RecordForm::store(Way way) {
  for (bool over = false;;) {
    try {
      whileLocked([&] { write(over); });
      // The other program's fields were not on show yet.
      if (over) show();
      return Stored::Yes;
    } catch (const RecordChanged& changed) {
      switch (askAboutChange(changed)) {
        case Foreign::Overwrite:
          over = true;
          break;
        case Foreign::Take:
          records_.reread();
          dropEdit();
          if (way == Way::Stay) show();
          return Stored::GivenUp;
        case Foreign::Neither:
          return Stored::No;
      }
    } catch (const StorageError& error) {
      return refused(error, way);
    }
  }
}

void RecordForm::write(bool over) {
  // The blank record behind the last one is only stored when the user made something of it.
  if (isUntouchedBlank()) {
    records_.CancelUpdate();
  } else {
    writeControls();
    if (editMode() == EditMode::Add) nameCollection();
    over ? records_.overwrite() : records_.Update();
    rememberDeleted({}, 0);
  }
  noteStored();
}

RecordForm::Stored RecordForm::refused(const StorageError& error, Way way) {
  noteFailure(error);
  if (way == Way::Stay) {
    tell(storageMessage_);
    return Stored::No;
  }
  const QScopedValueRollback telling(telling_, true);
  const int answer = parts_.prompt.choose(
      {.text = storageMessage_,
       .more = QStringLiteral("Die Eingaben zu Adresse %1 \"%2\" sind nicht gespeichert. Wer sie "
                              "verwirft, kann den Datensatz verlassen.")
                   .arg(text(form::kAddress), text(form::kShortName)),
       .answers = {QStringLiteral("Eingaben &verwerfen"), QStringLiteral("&Weiter bearbeiten")},
       .safe = 1,
       .icon = Icon::Warning});
  if (answer != 0) return Stored::No;
  dropEdit();
  return Stored::GivenUp;
}

RecordForm::Foreign RecordForm::askAboutChange(const RecordChanged& changed) {
  const QScopedValueRollback telling(telling_, true);
  const int answer = parts_.prompt.choose(
      {.text = changed.text(),
       .more = foreignChanges(records_, changed.stored()),
       .answers = {QStringLiteral("&Meine Eingaben speichern"),
                   QStringLiteral("Stand von &dort nehmen"), QStringLiteral("&Weiter bearbeiten")},
       .safe = 2,
       .icon = Icon::Warning});
  constexpr std::array kAnswers{Foreign::Overwrite, Foreign::Take, Foreign::Neither};
  return kAnswers[static_cast<size_t>(answer)];
}

// What nobody stored is forgotten; what is on show stays until it is shown anew.
void RecordForm::dropEdit() {
  records_.CancelUpdate();
  noteStored();
  recordDirty = false;
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
RecordForm::Stored RecordForm::storeTakenPicture(Way way) {
  if (!pictureChanged_ || position() < 0 || !records_.isOpen()) return Stored::Yes;
  changed_.clear();
  return beginEdit() ? store(way) : Stored::No;
}

bool RecordForm::leave(FormAction action) {
  if (!validate(action)) return false;
  if (editMode() == EditMode::None) return storeTakenPicture(Way::Out) != Stored::No;
  if (changed_.isEmpty() && !pictureChanged_ && editMode() == EditMode::Edit) {
    records_.CancelUpdate();
    return true;
  }
  return store(Way::Out) != Stored::No;
}

bool RecordForm::storeEdit() {
  if (isSearching()) {
    dropBlank();
    return true;
  }
  const bool added = editMode() == EditMode::Add;
  const Stored stored = storePending();
  if (stored == Stored::GivenUp) {
    // The file may not be there any more: only what was read of the record is shown.
    browse();
    show(Beside::Kept);
  } else if (stored == Stored::Yes && added && editMode() == EditMode::None) {
    // The texts on show are those of the new record: it has to be the current one.
    showAdded();
  }
  return stored != Stored::No;
}

RecordForm::Stored RecordForm::storePending() {
  if (isUntouchedBlank()) return Stored::Yes;
  if (editMode() != EditMode::None) {
    if (!validate(FormAction::Store)) return Stored::No;
    if (const Stored stored = store(Way::Out); stored != Stored::Yes) return stored;
  }
  const Stored picture = storeTakenPicture(Way::Out);
  if (picture == Stored::Yes) recordDirty = false;
  return picture;
}

bool RecordForm::storeIfValid() {
  if (isSearching() || isUntouchedBlank()) return true;
  if (editMode() != EditMode::None && faultOnShow() != 0) return false;
  return storeEdit();
}

void RecordForm::showAdded() {
  records_.MoveLast();
  show();
  if (!savedOkCaption.isEmpty()) browse();
}

bool RecordForm::close() {
  // A record that is given up needs no showing: everything closes behind it.
  if (!isSearching() && storePending() == Stored::No) return false;
  records_.close();
  return true;
}

bool RecordForm::attempt(const std::function<void()>& operation) {
  try {
    whileLocked(operation);
    return true;
  } catch (const StorageError& error) {
    report(error);
    return false;
  }
}

// A file that another program holds is free again in a moment, as a rule.
void RecordForm::whileLocked(const std::function<void()>& operation) {
  try {
    operation();
  } catch (const StorageError& error) {
    if (error.code() != storage_error::kLocked || database_ == nullptr) throw;
    const QScopedValueRollback telling(telling_, true);
    // Windows live on while the file is asked for again.
    database_->setPatience(0);
    const auto patience = qScopeGuard([this] { database_->setPatience(kLockPatience); });
    const bool done = parts_.prompt.waitUntil(
        error.text() + QStringLiteral("\nEs wird gewartet, bis sie frei ist ..."), [&operation] {
          try {
            operation();
            return true;
          } catch (const StorageError& again) {
            if (again.code() != storage_error::kLocked) throw;
            return false;
          }
        });
    if (!done) throw;
  }
}

void RecordForm::noteFailure(const StorageError& error) {
  storageMessage_ = error.code() == storage_error::kDuplicateKey
                        ? QStringLiteral("Datensatz mit dieser Adresse bereits vorhanden!")
                        : error.text();
}

void RecordForm::report(const StorageError& error) {
  noteFailure(error);
  tell(storageMessage_);
}

void RecordForm::tell(const QString& text) {
  const QScopedValueRollback telling(telling_, true);
  parts_.prompt.message(text);
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
