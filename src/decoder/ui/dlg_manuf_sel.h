// `dlgManufSel`, the choice of the maker of a description file that does not name a known one.
#pragma once

#include <QDialog>
#include <QList>

#include <optional>

#include "db/catalogue.h"

class QListWidget;

namespace lokari {

class DlgManufSel final : public QDialog {
  Q_OBJECT

 public:
  explicit DlgManufSel(const QList<Maker>& makers, QWidget* parent = nullptr);

  /// Shows the dialog; the number of the chosen maker, or nothing when the user cancelled.
  std::optional<int> choose();

 private:
  int chosenNumber() const;

  QListWidget* lstManSel_;
};

}  // namespace lokari
