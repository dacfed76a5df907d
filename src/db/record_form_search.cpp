// The form as a query form, find and filter, and the way to the vehicle list and back.
#include <utility>

#include "base/prompt.h"
#include "db/database.h"
#include "db/form_fields.h"
#include "db/form_names.h"
#include "db/record_form.h"
#include "db/record_search.h"

namespace lokari {
namespace {

constexpr char16_t kAllVehicles[] = u"SELECT * FROM LOCO_DAT";
constexpr char16_t kNoMatch[] = u"Keine passenden Daten gefunden!";

}  // namespace

void RecordForm::butFind() {
  if (isSearching() || !storeEdit()) return;
  if (!attempt([this] { records_.AddNew(); })) return;
  setVisible(form::toolbar(), false);
  setEnabled({form::kPicLink, form::kNavigator}, false);
  setVisible({form::kNavigator}, false);
  setVisible({form::kOk, form::kCancel, form::kFilter}, true);
  setEnabled(form::drivingButtons() + form::menuEntries(), false);

  const bool kept = std::exchange(loadingRecord, true);
  noteStored();
  loaded_ = true;
  fillBound();
  for (const FormField& field : formFields()) {
    if (field.binding == Binding::DropDown) setText(QString::fromUtf16(field.control), QString());
  }
  setText(form::kMaker, QString());
  setText(form::kType, QString());
  setTypeOption(0);
  loadingRecord = kept;
  emit focusWanted(form::kAddress, false);
  emit recordShown();
}

void RecordForm::butFilter() {
  runSearch(true);
}

void RecordForm::runSearch(bool filter) {
  if (!isSearching()) return;
  browse();
  const SearchCondition condition =
      searchCondition(records_.table(), [this](const QString& control) { return text(control); });
  records_.CancelUpdate();
  const Bookmark lastPlace = records_.bookmark();
  // The query is no record: from here on the record that was current before it is on show again,
  // unless another one is found.
  if (!attempt([&] {
        filter ? filterBy(condition.sql, condition.report) : findFirst(condition.sql, lastPlace);
      })) {
    show();
  }
}

void RecordForm::findFirst(const QString& condition, const Bookmark& lastPlace) {
  if (condition.isEmpty()) {
    records_.MoveFirst();
    show();
    return;
  }
  records_.FindFirst(condition);
  const bool none = records_.NoMatch();
  if (none && lastPlace) records_.setBookmark(lastPlace);
  show();
  if (none) parts_.prompt.message(QString::fromUtf16(kNoMatch));
}

void RecordForm::filterBy(const QString& condition, const QString& selection) {
  const QString all = QString::fromUtf16(kAllVehicles);
  RecordSet found;
  found.open(*database_, condition.isEmpty() ? all : all + QStringLiteral(" WHERE ") + condition);
  const bool none = found.count() == 0;
  if (none) found.open(*database_, all);
  records_ = std::move(found);
  show();
  if (none) parts_.prompt.message(QString::fromUtf16(kNoMatch));
  sqlFilter = none ? QString() : condition;
  // A print after a search without a match still asks for what was searched.
  reportFilter = selection;
  emit filteredChanged(isFiltered());
}

bool RecordForm::prepareList() {
  if (position() < 0 || isSearching()) return false;
  // A record that is not valid keeps its edit; the list opens all the same.
  storeEdit();
  pendingFind = QStringLiteral("DC_COLL = \"") + text(form::kCollection) +
                QStringLiteral("\" AND DC_ADR = ") + text(form::kAddress);
  return true;
}

void RecordForm::takeFromList() {
  const QString condition = std::exchange(pendingFind, QString());
  // A condition that ends like this compares with nothing.
  if (condition.isEmpty() || condition.endsWith(QStringLiteral("= "))) return;
  if (FindFirst(condition) == FindResult::Failed) parts_.prompt.message(storageMessage_);
}

}  // namespace lokari
