// How the decoder makers (DCMANUFS) are edited. A maker is a number, a name and a folder of that
// name below the data folder; number and name are checked before they are taken, and the folder
// comes and goes with the row.
#pragma once

#include "db/catalogue_files.h"
#include "db/list_rules.h"

namespace lokari {

class Prompt;

class MakerRules final : public ListRules {
 public:
  enum Column { kSequence, kNumber, kName };

  MakerRules(const Database& database, Prompt& prompt, CatalogueFiles files)
      : database_(database), prompt_(prompt), files_(std::move(files)) {}

  std::vector<ListColumn> columns() const override;
  /// A number is fixed once it is stored; a new one is a whole number from 0 to 255 that no other
  /// maker has. A name obeys checkCatalogueName(); when another one would part the maker from its
  /// description files, the user is asked.
  bool mayChange(ListRow& row, int column, QString& text) override;
  /// A maker needs a number and a name.
  RowVerdict mayStore(const ListRow& row) override;
  /// Makes the folder.
  void inserted(const ListRow& row) override;
  /// Maker 0 and makers that have types stay; for one that vehicles name the user is asked.
  bool mayDelete(const ListRow& row) override;
  /// Removes the folder if it is empty.
  void deleted(const ListRow& row) override;

 private:
  bool mayNumber(const ListRow& row, QString& text);
  bool mayName(const ListRow& row, const QString& name);
  bool isValidName(const QString& name);
  bool refuse(const char16_t* message);

  const Database& database_;
  Prompt& prompt_;
  CatalogueFiles files_;
};

}  // namespace lokari
