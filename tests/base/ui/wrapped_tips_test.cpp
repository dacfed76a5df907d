#include "base/ui/wrapped_tips.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHelpEvent>
#include <QRadioButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>

#include "base/ui/fit_area.h"
#include "base/ui/option_group.h"

namespace lokari {
namespace {

const QString kLong = QStringLiteral(
    "Ein Hinweis, der so lang ist, dass er auf einem kleinen Bildschirm über den Rand hinaus "
    "reichte, wenn ihn niemand in Zeilen teilte.");

TEST(WrappedTips, LongTextsAreBrokenBetweenWords) {
  const QStringList lines = wrappedTip(kLong).split(u'\n');
  ASSERT_EQ(lines.size(), 3);
  for (const QString& line : lines) {
    EXPECT_LE(line.size(), 60);
    EXPECT_FALSE(line.startsWith(u' ') || line.endsWith(u' '));
  }
  EXPECT_EQ(lines.join(u' '), kLong);
}

TEST(WrappedTips, ShortTextsAndTheirOwnLinesStay) {
  for (const char* text : {"", "Kurz", "Zwei\nZeilen"})
    EXPECT_EQ(wrappedTip(QString::fromLatin1(text)), QString::fromLatin1(text));
  EXPECT_EQ(wrappedTip(QString(80, u'x')), QString(80, u'x')) << "no word is broken";
}

TEST(WrappedTips, ThoseOfControlsAndCellsAreWrappedAsTheyAppear) {
  qApp->installEventFilter(new WrappedTips(qApp));
  QWidget control;
  control.setToolTip(kLong);
  control.show();
  QHelpEvent over(QEvent::ToolTip, {5, 5}, control.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(&control, &over);
  EXPECT_EQ(QToolTip::text(), wrappedTip(kLong));
  QToolTip::hideText();

  QStandardItemModel cells(1, 1);
  cells.setData(cells.index(0, 0), kLong, Qt::ToolTipRole);
  QTableView view;
  view.setModel(&cells);
  view.show();
  QApplication::processEvents();
  const QPoint at = view.visualRect(cells.index(0, 0)).center();
  QHelpEvent overCell(QEvent::ToolTip, at, view.viewport()->mapToGlobal(at));
  QApplication::sendEvent(view.viewport(), &overCell);
  EXPECT_EQ(QToolTip::text(), wrappedTip(kLong));
}

TEST(FitArea, IsAsLargeAsItsContentsAndScrollsBelowThat) {
  QWidget window;
  auto* rows = new QVBoxLayout(&window);
  auto* area = new FitArea(&window);
  auto* contents = new QWidget(area);
  contents->setMinimumSize(300, 400);
  area->take(contents);
  rows->addWidget(area, 1);
  auto* below = new QWidget(&window);
  below->setMinimumHeight(30);
  rows->addWidget(below);
  window.resize(window.sizeHint());
  window.show();
  QApplication::processEvents();
  EXPECT_TRUE(window.size().height() >= 430);
  EXPECT_EQ(contents->visibleRegion().boundingRect(), contents->rect());
  window.resize(window.width(), 200);
  QApplication::processEvents();
  EXPECT_EQ(window.height(), 200);
  EXPECT_EQ(contents->height(), 400) << "nothing is squeezed";
  EXPECT_EQ(contents->visibleRegion().boundingRect().width(), 300) << "the bar has room of its own";
  EXPECT_EQ(below->visibleRegion().boundingRect(), below->rect());
}

TEST(OptionGroup, IsOneStopOfTheTabKey) {
  QWidget window;
  OptionGroup group(&window);
  QRadioButton first(&window);
  QRadioButton second(&window);
  for (QRadioButton* option : {&first, &second}) group.add(option);
  const auto stops = [&] {
    return std::pair((first.focusPolicy() & Qt::TabFocus) != 0,
                     (second.focusPolicy() & Qt::TabFocus) != 0);
  };
  EXPECT_EQ(stops(), std::pair(true, true)) << "none is chosen";
  second.setChecked(true);
  EXPECT_EQ(stops(), std::pair(false, true));
  first.setChecked(true);
  EXPECT_EQ(stops(), std::pair(true, false));
  second.move(0, 40);
  window.show();
  QApplication::setActiveWindow(&window);
  first.setFocus();
  QTest::keyClick(&first, Qt::Key_Down);
  EXPECT_TRUE(second.isChecked()) << "the arrow keys choose";
  EXPECT_TRUE(second.hasFocus());
}

}  // namespace
}  // namespace lokari
