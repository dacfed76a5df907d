// A grid over a table of a database, driven as a user does it: a text in a cell, leaving the row,
// deleting it.
#pragma once

#include <gtest/gtest.h>

#include <QSqlQuery>

#include <memory>
#include <optional>

#include "db/list_grid.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"

namespace lokari::test {

class ListGridFixture : public ::testing::Test {
 protected:
  ListGridFixture() { base_.clearLists(); }

  static QString str(const char* text) { return QString::fromUtf8(text); }

  void show(std::unique_ptr<ListRules> rules, const QString& query) {
    grid_.emplace(base_.open(), prompt_, std::move(rules));
    grid_->open(query);
  }

  /// Types a text into a cell; false when it was refused.
  bool type(int row, int column, const char* text) {
    return grid_->setData(grid_->index(row, column), str(text), Qt::EditRole);
  }
  /// Types into the empty row at the end.
  bool typeNew(int column, const char* text) { return type(grid_->blankRow(), column, text); }

  QString cell(int row, int column) const { return grid_->index(row, column).data().toString(); }
  /// The texts of a column from top to bottom, without the empty row at the end.
  QString column(int column) const {
    QStringList texts;
    for (int row = 0; row < grid_->blankRow(); ++row) texts << cell(row, column);
    return texts.join(u' ');
  }

  /// The first column of a statement's answer as it is on disk; "Null" where it is Null.
  QString stored(const char* statement) {
    QStringList values;
    base_.open().read(str(statement), {}, [&values](const QSqlQuery& row) {
      values << (row.value(0).isNull() ? QStringLiteral("Null") : row.value(0).toString());
    });
    return values.join(u' ');
  }

  /// The text of the only box that was shown; the record is empty after it.
  QString message() {
    EXPECT_EQ(prompt_.shown.size(), 1) << prompt_.shown.join(u'|').toStdString();
    const QString text = prompt_.shown.isEmpty() ? QString() : prompt_.shown.last();
    prompt_.shown.clear();
    return text;
  }
  bool isQuiet() const { return prompt_.shown.isEmpty(); }

  TestDatabase base_;
  ScriptedPrompt prompt_;
  std::optional<ListGrid> grid_;
};

}  // namespace lokari::test
