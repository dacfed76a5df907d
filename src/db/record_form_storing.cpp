// How a record is validated, stored and left, and what happens where the storage refuses it.
#include <QScopeGuard>
#include <QScopedValueRollback>

#include <array>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "base/prompt.h"
#include "db/database.h"
#include "db/foreign_changes.h"
#include "db/form_fields.h"
#include "db/form_names.h"
#include "db/lock_wait.h"
#include "db/record_form.h"

namespace lokari {

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
  if (!form::isAddress(std::nearbyint(numericPrefix(text(form::kAddress))))) return 1;
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
          dropEdit();
          attempt([this] { records_.reread(); });
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
    // An edit that is refused goes on as the user left it.
    const auto edit = records_.changes();
    auto restore = qScopeGuard([&] { records_.setChanges(edit); });
    if (addressTyped_) clearAddressMarks(over);
    over ? records_.overwrite() : records_.Update();
    restore.dismiss();
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
  try {
    records_.reread();
  } catch (const StorageError&) {
    // Told already. What was read of the record stays on show.
  }
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
  try {
    begin();
  } catch (const StorageError& error) {
    return refused(error, way);
  }
  return store(way);
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
  if (database_ == nullptr) {
    operation();
    return;
  }
  const auto wait = [this](const QString& fault, const std::function<bool()>& done) {
    const QScopedValueRollback telling(telling_, true);
    return parts_.prompt.waitUntil(
        fault + QStringLiteral("\nEs wird gewartet, bis sie frei ist ..."), done);
  };
  lokari::whileLocked(*database_, wait, operation);
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

void RecordForm::tell(const QString& text, const QString& more) {
  const QScopedValueRollback telling(telling_, true);
  parts_.prompt.message(text, Icon::Warning, more);
}

}  // namespace lokari
