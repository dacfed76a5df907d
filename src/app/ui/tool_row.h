// The buttons above the record form.
#pragma once

#include <QHash>
#include <QWidget>

class QLabel;
class QToolButton;

namespace lokari {

class Pictures;

class ToolRow final : public QWidget {
 public:
  /// Every button is disabled until somebody connects it: see enable().
  ToolRow(const Pictures& pictures, QWidget* parent);

  /// A name that is not in the table is a programming error: std::logic_error.
  QToolButton* button(const QString& name) const;

  /// `lblUnsaved`: the record on show has changes that are not on disk.
  void showUnsaved(bool unsaved);

 private:
  QHash<QString, QToolButton*> buttons_;
  QLabel* lblUnsaved_;
};

}  // namespace lokari
