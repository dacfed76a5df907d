// `dlgDcDecoder`: the decoder types of one maker.
#pragma once

#include "db/catalogue.h"
#include "db/catalogue_files.h"
#include "db/ui/grid_dialog.h"

class QComboBox;

namespace lokari {

class Database;
class Prompt;
class TypeRules;

class DlgDcDecoder final : public GridDialog {
  Q_OBJECT

 public:
  /// Shows the types of `maker`, or, when there is no such maker or it can't have types, of the
  /// first that can. Throws StorageError when they cannot be read. `database` and `prompt` must
  /// outlive it.
  DlgDcDecoder(Database& database, Prompt& prompt, const CatalogueFiles& files, int maker,
               const WindowScale& scale, QWidget* parent);

 private:
  void addMakers();
  void addHint();
  int preselected(int maker) const;
  void chooseMaker();

  Prompt& prompt_;
  Catalogue catalogue_;
  QComboBox* makers_;
  TypeRules* rules_ = nullptr;  // of the grid
  int shown_ = -1;              // the line of the drop-down whose types are on show
};

}  // namespace lokari
