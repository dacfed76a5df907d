#include "base/ui/passing_note.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWidget>

namespace lokari {
namespace {

class PassingNoteTest : public ::testing::Test {
 protected:
  PassingNoteTest() {
    window.show();
    window.activateWindow();
    QApplication::processEvents();
  }
  QMessageBox* note() { return window.findChild<QMessageBox*>(QStringLiteral("boxPassingNote")); }

  QWidget window;
};

TEST_F(PassingNoteTest, ComesUpOnlyWithTheEventsAndHoldsNothingUp) {
  showPassingNote(QStringLiteral("Es ist vorbei."), &window);
  EXPECT_EQ(note(), nullptr) << "the work that asked for it is not interrupted";
  QApplication::processEvents();
  ASSERT_NE(note(), nullptr);
  EXPECT_EQ(note()->text(), "Es ist vorbei.");
  EXPECT_FALSE(note()->isModal());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(PassingNoteTest, GoesWithItsButton) {
  showPassingNote(QStringLiteral("Es ist vorbei."), &window);
  QApplication::processEvents();
  ASSERT_NE(note(), nullptr);
  QTest::mouseClick(note()->button(QMessageBox::Ok), Qt::LeftButton);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(note(), nullptr);
}

TEST(PassingNote, AWindowThatHasGoneGetsNone) {
  {
    QWidget window;
    showPassingNote(QStringLiteral("Es ist vorbei."), &window);
  }
  QApplication::processEvents();
  EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}

}  // namespace
}  // namespace lokari
