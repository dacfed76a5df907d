// The buttons above the record form.
#pragma once

#include <QHash>
#include <QWidget>

class QToolButton;

namespace lokari {

class Pictures;

class ToolRow final : public QWidget {
 public:
  /// Every button is disabled until somebody connects it: see enable().
  ToolRow(const Pictures& pictures, QWidget* parent);

  /// A name that is not in the table is a programming error: std::logic_error.
  QToolButton* button(const QString& name) const;

 private:
  QHash<QString, QToolButton*> buttons_;
};

}  // namespace lokari
