// `dlgDcManuf`: the makers of decoders.
#pragma once

#include "db/catalogue_files.h"
#include "db/ui/grid_dialog.h"

namespace lokari {

class Database;
class Prompt;

class DlgDcManuf final : public GridDialog {
  Q_OBJECT

 public:
  /// Throws StorageError when the makers cannot be read. `database` and `prompt` must outlive it.
  DlgDcManuf(Database& database, Prompt& prompt, const CatalogueFiles& files,
             const WindowScale& scale, QWidget* parent);
};

}  // namespace lokari
