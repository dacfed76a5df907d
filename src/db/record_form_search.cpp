// The form as a query form, find and filter, and the way to the vehicle list and back.
#include <QScopedValueRollback>

#include <utility>

#include "base/prompt.h"
#include "db/database.h"
#include "db/form_fields.h"
#include "db/form_names.h"
#include "db/jet_sql.h"
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
  offerFindNext();

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
  // The query is no record: from here on the record that was current before it is on show again,
  // unless another one is found.
  try {
    filter ? filterBy(condition) : findFirst(condition);
  } catch (const StorageError& error) {
    noteFailure(error);
    show();
    tell(storageMessage_, searchFault(records_.table(), condition));
  }
}

void RecordForm::findFirst(const SearchCondition& condition) {
  rememberFind(condition.sql);
  if (condition.sql.isEmpty()) {
    records_.MoveFirst();
    show();
    return;
  }
  whileLocked([&] { records_.FindFirst(condition.sql); });
  const bool none = records_.NoMatch();
  show();
  if (!none) return;
  const SearchCondition wider = offerStars(condition);
  if (!wider.sql.isEmpty()) findFirst(wider);
}

// All reading comes ahead of the first message: a file that is held may have a box of its own.
void RecordForm::filterBy(const SearchCondition& condition) {
  const QString all = QString::fromUtf16(kAllVehicles);
  RecordSet found;
  bool none = false;
  whileLocked([&] {
    found.open(*database_,
               condition.sql.isEmpty() ? all : all + provenWhere(records_.table(), condition.sql));
    none = found.count() == 0;
    if (none) found.open(*database_, all);
  });
  records_ = std::move(found);
  sqlFilter = none ? QString() : condition.sql;
  // A print after a search without a match still asks for what was searched.
  reportFilter = condition.report;
  show();
  emit filteredChanged(isFiltered());
  if (!none) return;
  const SearchCondition wider = offerStars(condition);
  if (!wider.sql.isEmpty()) filterBy(wider);
}

SearchCondition RecordForm::offerStars(const SearchCondition& condition) {
  const QString text = QString::fromUtf16(kNoMatch);
  const SearchCondition wider =
      records_.isOpen() ? withStars(records_.table(), condition) : SearchCondition();
  const int hits = wider.sql.isEmpty() ? 0 : countOf(wider.sql);
  if (hits == 0) {
    tell(text);
    return {};
  }
  QStringList patterns;
  for (const SearchTerm& term : wider.terms) {
    if (term.isText) patterns << u'"' + term.wanted + u'"';
  }
  const QScopedValueRollback telling(telling_, true);
  const int answer = parts_.prompt.choose(
      {.text = text,
       .more = QStringLiteral("Der Stern steht für beliebige Zeichen: %1 findet %2.")
                   .arg(patterns.join(QStringLiteral(" und ")),
                        hits == 1 ? QStringLiteral("ein Fahrzeug")
                                  : QStringLiteral("%1 Fahrzeuge").arg(hits)),
       .answers = {QStringLiteral("Mit Stern &suchen"), QStringLiteral("&Nicht suchen")},
       .safe = 1});
  return answer == 0 ? wider : SearchCondition();
}

/// How many vehicles of the set meet the condition; a failure counts none.
int RecordForm::countOf(const QString& condition) const {
  try {
    return records_.countOf(condition);
  } catch (const StorageError&) {
    return 0;
  }
}

void RecordForm::rememberFind(const QString& condition) {
  lastFind_ = condition;
  offerFindNext();
}

void RecordForm::offerFindNext() {
  setEnabled({form::kFindNext}, !lastFind_.isEmpty() && isEnabled(QStringLiteral("mnuEditFind")));
}

void RecordForm::mnuEditFindNext() {
  if (lastFind_.isEmpty() || isSearching() || !leave(FormAction::Find)) return;
  if (!attempt([this] { records_.FindNext(lastFind_); })) return;
  show();
  if (records_.NoMatch()) {
    tell(QStringLiteral("Keine weiteren passenden Daten gefunden!"),
         QStringLiteral("Gesucht wird ab dem gezeigten Satz; vom ersten an sucht \"Suchen\"."));
  }
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
