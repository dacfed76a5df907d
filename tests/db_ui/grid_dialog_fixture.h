// A dialog with a grid that is edited in place, driven by keys.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>

#include <memory>

#include "base/ui/window_scale.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"

namespace lokari::test {

class GridDialogFixture : public ::testing::Test {
 protected:
  GridDialogFixture() { base_.clearLists(); }

  static QString str(const char* text) { return QString::fromUtf8(text); }

  void open(std::unique_ptr<QDialog> dialog) {
    dialog_ = std::move(dialog);
    dialog_->show();
    QApplication::processEvents();
  }

  template <typename T>
  T* child(const char* name) const {
    T* found = dialog_->findChild<T*>(str(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  QTableView* grid() const { return child<QTableView>("DBGrid1"); }
  int rows() const { return grid()->model()->rowCount(); }
  QString cell(int row, int column) const {
    return grid()->model()->index(row, column).data().toString();
  }
  /// A column from top to bottom, the empty row included.
  QString column(int column) const {
    QStringList texts;
    for (int row = 0; row < rows(); ++row) texts << cell(row, column);
    return texts.join(u'|');
  }
  QString mark(int row) const { return grid()->model()->headerData(row, Qt::Vertical).toString(); }
  /// "row,column" of the current cell.
  QString place() const {
    const QModelIndex current = grid()->currentIndex();
    return QStringLiteral("%1,%2").arg(current.row()).arg(current.column());
  }
  void go(int row, int column) const {
    grid()->setFocus();
    grid()->setCurrentIndex(grid()->model()->index(row, column));
  }
  void goToEnd(int column) const { go(rows() - 1, column); }

  /// Each to whoever has the focus: the first one opens the cell that takes the others.
  void keys(const char* text) const {
    for (const QChar c : str(text)) QTest::keyClicks(QApplication::focusWidget(), c);
  }
  void key(Qt::Key key) const {
    QTest::keyClick(QApplication::focusWidget(), key);
    QApplication::processEvents();
  }
  QPoint middleOf(int row, int column) const {
    return grid()->visualRect(grid()->model()->index(row, column)).center();
  }
  void click(int row, int column) const {
    QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, middleOf(row, column));
    QApplication::processEvents();
  }
  bool isEditing() const {
    const auto* focus = QApplication::focusWidget();
    return focus != nullptr && focus->objectName() == QStringLiteral("gridText");
  }

  /// The first column of a statement's answer as it is on disk.
  QString stored(const char* statement) {
    QStringList values;
    base_.open().read(str(statement), {}, [&values](const QSqlQuery& row) {
      values << (row.value(0).isNull() ? QStringLiteral("Null") : row.value(0).toString());
    });
    return values.join(u'|');
  }
  QString message() {
    EXPECT_EQ(prompt_.shown.size(), 1) << prompt_.shown.join(u'|').toStdString();
    const QString text = prompt_.shown.isEmpty() ? QString() : prompt_.shown.last();
    prompt_.shown.clear();
    return text;
  }

  TestDatabase base_;
  ScriptedPrompt prompt_;
  WindowScale scale_{base_.folder() + QStringLiteral("/WINDOW.INI")};
  std::unique_ptr<QDialog> dialog_;
};

}  // namespace lokari::test
