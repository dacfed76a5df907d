// The form's controls, and how a record is shown in them.
#include "db/record_form.h"

#include <utility>

#include "base/numbers.h"
#include "db/catalogue.h"
#include "db/database.h"
#include "db/form_clipboard.h"
#include "db/form_fields.h"
#include "db/form_names.h"
#include "db/reference_lists.h"

namespace lokari {
namespace {

constexpr char16_t kSearchCaption[] = u"Suchen";

QString name(const char16_t* text) {
  return QString::fromUtf16(text);
}

}  // namespace

RecordForm::RecordForm(RecordFormParts parts, QObject* parent)
    : QObject(parent), parts_(std::move(parts)), clipboard_(std::make_unique<FormClipboard>()) {
  for (const FormField& field : formFields()) addControl(name(field.control));
  addControl(form::kMaker);
  addControl(form::kNavigator);
  for (const QString& control : form::toolbar() + form::drivingButtons() + form::menuEntries()) {
    addControl(control);
  }
  addControl(form::kPicLink);
  addControl(form::kPicDel);
  addControl(form::kInsert, false);
  addControl(form::kUndoEntry, false);
  addControl(form::kFindNext, false);
  addControl(form::kUndo, true, false);
  for (const form::Name& control : {form::kOk, form::kCancel, form::kFilter}) {
    addControl(control, true, false);
  }
  states_[form::kOk].text = name(kSearchCaption);
  lists_.insert(QStringLiteral("md_scale"), scaleSuggestions());
}

RecordForm::~RecordForm() = default;

void RecordForm::addControl(const QString& control, bool enabled, bool visible) {
  states_.insert(control, {QString(), enabled, visible});
}

QString RecordForm::text(const QString& control) const {
  return states_.value(control).text;
}

bool RecordForm::isEnabled(const QString& control) const {
  return states_.value(control).enabled;
}

bool RecordForm::isVisible(const QString& control) const {
  return states_.value(control).visible;
}

void RecordForm::setText(const QString& control, const QString& text) {
  State& state = states_[control];
  if (state.text == text) return;
  state.text = text;
  emit textChanged(control, text);
}

void RecordForm::setEnabled(const QStringList& controls, bool enabled) {
  for (const QString& control : controls) {
    if (std::exchange(states_[control].enabled, enabled) != enabled) emit stateChanged(control);
  }
}

void RecordForm::setVisible(const QStringList& controls, bool visible) {
  for (const QString& control : controls) {
    if (std::exchange(states_[control].visible, visible) != visible) emit stateChanged(control);
  }
}

void RecordForm::setPicture(const QByteArray& picture) {
  if (picture_ == picture) return;
  picture_ = picture;
  emit pictureChanged();
}

void RecordForm::setTypeOption(int option) {
  if (std::exchange(typeOption_, option) != option) emit typeOptionChanged(option);
}

void RecordForm::setList(const QString& control, const QStringList& entries) {
  if (lists_.value(control) == entries) return;
  lists_.insert(control, entries);
  emit listChanged(control);
}

void RecordForm::refreshList(const QString& control) {
  if (database_ == nullptr) return;
  attempt([&] {
    const ReferenceList* list = referenceListOf(control);
    setList(control,
            list == nullptr ? readCollections(*database_) : readReferenceList(*database_, *list));
  });
}

void RecordForm::bind(Database& database, RecordSet records) {
  database_ = &database;
  records_ = std::move(records);
  savedBookmark.reset();
  sqlFilter.clear();
  reportFilter.clear();
  emit filteredChanged(false);
  rememberDeleted({}, 0);
  rememberFind({});
  browse();
  for (const ReferenceList& list : referenceLists()) refreshList(name(list.control));
  show();
}

void RecordForm::requery(const QString& query) {
  if (database_ == nullptr) return;
  RecordSet records;
  records.open(*database_, query);
  records_ = std::move(records);
  show();
}

// The controls take the record's values, then the display follows.
void RecordForm::show(Beside beside) {
  const bool kept = std::exchange(loadingRecord, true);
  noteStored();
  loaded_ = true;
  fillBound();
  reposition(beside);
  loadingRecord = kept;
  emit recordShown();
}

void RecordForm::fillBound() {
  const bool readable = records_.position() >= 0 || records_.editMode() == EditMode::Add;
  QHash<QString, QString> texts;
  QByteArray picture;
  if (readable) {
    loaded_ = attempt([&] {
      for (const FormField& field : formFields()) {
        texts.insert(name(field.control), records_.text(name(field.column)));
      }
      picture = records_.value(form::kPictureColumn).toByteArray();
    });
  }
  for (const FormField& field : formFields()) {
    if (field.binding == Binding::Bound) {
      setText(name(field.control), texts.value(name(field.control)));
    }
  }
  const int type = text(form::kType).toInt();
  setTypeOption(type >= 1 && type <= 3 ? type : 0);
  setPicture(picture);
}

void RecordForm::reposition(Beside beside) {
  recordDirty = false;
  if (records_.position() >= 0) {
    if (records_.editMode() != EditMode::None && !Update()) return;
    recordDirty = false;
    showRecord(beside);
    return;
  }
  if (records_.editMode() == EditMode::Add) {
    showBlank();
    setText(form::kNavigator, form::kNewRecord);
    return;
  }
  try {
    records_.BOF() ? records_.MoveNext() : records_.MovePrevious();
  } catch (const StorageError&) {
    // An empty set: there is nowhere to go.
    showBlank();
    setText(form::kNavigator, QStringLiteral("keine Daten"));
    return;
  }
  fillBound();
  reposition(beside);
}

void RecordForm::showRecord(Beside beside) {
  // What could not be read must not look like an empty decoder, which a save would make it.
  CvRecord working;
  if (!loaded_ || !attempt([&] { loadCvRecord(records_, working); })) {
    loaded_ = false;
    working = CvRecord();
  }
  working_ = working;
  updComboFields();
  setText(form::kNavigator, QStringLiteral("Satz ") + printed(records_.position() + 1) +
                                QStringLiteral(" von ") + printed(records_.count()));
  if (!loaded_ || beside == Beside::Kept) return;
  showMaker();
  refreshList(form::kCollection);
}

void RecordForm::showMaker() {
  QVariant number;
  attempt([&] { number = records_.value(QStringLiteral("DC_MANUF")); });
  if (number.isNull()) {
    setText(form::kMaker, QString());
    return;
  }
  // The name of the record shown before stays for a number that the catalogue lacks.
  const auto maker = Catalogue(database_).makerByNumber(number.toInt());
  if (maker) setText(form::kMaker, maker->name);
}

void RecordForm::refreshMaker() {
  // A new record and a query form show no maker.
  const bool shown = records_.position() >= 0 && editMode() != EditMode::Add && !isSearching();
  if (shown && loaded_) showMaker();
}

// Nothing of the record shown before stays: what is on show is what would be stored.
void RecordForm::showBlank() {
  for (const FormField& field : formFields()) {
    if (field.binding == Binding::DropDown) setText(name(field.control), QString());
  }
  setText(form::kMaker, QString());
  InitDcData();
}

void RecordForm::updComboFields() {
  if (records_.position() < 0) return;
  for (const FormField& field : formFields()) {
    if (field.binding != Binding::DropDown) continue;
    QString text;
    if (loaded_) attempt([&] { text = records_.text(name(field.column)); });
    setText(name(field.control), text);
  }
}

}  // namespace lokari
