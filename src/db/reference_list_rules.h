// How the five reference lists are edited: a row is an entry and, if the user wants, the number
// that orders it. An entry that vehicles use may be changed and deleted, since they hold its text.
#pragma once

#include "db/list_rules.h"

namespace lokari {

class Prompt;
struct ReferenceList;

class ReferenceListRules final : public ListRules {
 public:
  enum Column { kSequence, kText };

  ReferenceListRules(const ReferenceList& list, Prompt& prompt) : list_(list), prompt_(prompt) {}

  std::vector<ListColumn> columns() const override;
  /// An entry once stored cannot be emptied.
  bool mayChange(ListRow& row, int column, QString& text) override;
  /// A new row needs an entry; a number alone is dropped.
  RowVerdict mayStore(const ListRow& row) override;
  /// Asks.
  bool mayDelete(const ListRow& row) override;

 private:
  const ReferenceList& list_;
  Prompt& prompt_;
};

}  // namespace lokari
