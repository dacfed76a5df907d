// `dlgFTypes`, `dlgLines`, `dlgEras`, `dlgManuf`, `dlgMotor`: one of the five lists that the
// drop-downs of the record form offer.
#pragma once

#include "db/ui/grid_dialog.h"

namespace lokari {

class Database;
class Prompt;
struct ReferenceList;

class DlgList final : public GridDialog {
  Q_OBJECT

 public:
  /// Throws StorageError when the list cannot be read. `database` and `prompt` must outlive it.
  DlgList(const ReferenceList& list, Database& database, Prompt& prompt, const WindowScale& scale,
          QWidget* parent);

 protected:
  void setColumnWidths() override;

 private:
  int naturalWidth() const;
  int widthOf(int column, double factor) const;
};

}  // namespace lokari
