#include "db/reference_list_rules.h"

#include "base/prompt.h"
#include "db/reference_lists.h"

namespace lokari {

std::vector<ListColumn> ReferenceListRules::columns() const {
  return {{list_.sequence, u"Seq."}, {list_.text, list_.caption}};
}

bool ReferenceListRules::mayChange(ListRow& row, int column, QString& text) {
  if (column != kText || row.isNew() || !text.trimmed().isEmpty()) return true;
  prompt_.message(
      QStringLiteral("Ein leerer Eintrag wird nicht gespeichert.\n"
                     "Mit Entf wird die Zeile gelöscht."));
  return false;
}

RowVerdict ReferenceListRules::mayStore(const ListRow& row) {
  const bool empty = row.text(kText).trimmed().isEmpty();
  return row.isNew() && empty ? RowVerdict::Drop : RowVerdict::Store;
}

bool ReferenceListRules::mayDelete(const ListRow& row) {
  // The key stands beside those that move in the list, and nothing brings an entry back.
  return prompt_.ask(
             {.text = QStringLiteral("„%1“ aus der Liste löschen?").arg(row.storedText(kText)),
              .buttons = Buttons::YesNo,
              .more = QStringLiteral("Fahrzeuge, die den Eintrag tragen, behalten ihn."),
              .preset = Answer::No}) == Answer::Yes;
}

}  // namespace lokari
