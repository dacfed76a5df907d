// How the decoder types (DECODERS) of one maker are edited. A type is a name and a description file
// of that name in the maker's folder. What a vehicle has is neither renamed nor deleted.
#pragma once

#include "db/catalogue.h"
#include "db/catalogue_files.h"
#include "db/list_rules.h"

namespace lokari {

class Prompt;

class TypeRules final : public ListRules {
 public:
  enum Column { kSequence, kType, kMaker };

  TypeRules(const Database& database, Prompt& prompt, CatalogueFiles files)
      : database_(database), prompt_(prompt), files_(std::move(files)) {}

  /// Whose types the grid shows; maker 0 can't have any.
  void setMaker(const Maker& maker) { maker_ = maker; }
  /// The current maker's number.
  int manufNo() const { return maker_.number; }

  std::vector<ListColumn> columns() const override;
  bool mayInsert() override;
  /// The maker's number is fixed and comes by itself. A name is new to its maker and obeys
  /// checkCatalogueName(); when another one would part the type from its description file, the user
  /// is asked.
  bool mayChange(ListRow& row, int column, QString& text) override;
  /// A type needs a name.
  RowVerdict mayStore(const ListRow& row) override;
  /// Gives the type a description file.
  void inserted(const ListRow& row) override;
  bool mayDelete(const ListRow& row) override;
  /// Removes the description file.
  void deleted(const ListRow& row) override;

 private:
  bool mayName(ListRow& row, const QString& name);
  bool isValidName(const QString& name);
  bool refuse(const char16_t* message);

  const Database& database_;
  Prompt& prompt_;
  CatalogueFiles files_;
  Maker maker_;
};

}  // namespace lokari
