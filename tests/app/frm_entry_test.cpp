#include "app/ui/frm_entry.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

#include "base/ui/pictures.h"
#include "support/virtual_clock.h"

namespace lokari {
namespace {

class FrmEntryTest : public ::testing::Test {
 protected:
  FrmEntryTest() {
    main_.setGeometry(100, 80, 900, 600);
    entry_ = new FrmEntry(&main_, pictures_, clock_);
    entry_->show();
  }

  test::VirtualClock clock_;
  Pictures pictures_{QString()};
  QWidget main_;
  FrmEntry* entry_;
};

TEST_F(FrmEntryTest, TellsWhatTheProgramIsFor) {
  QStringList texts;
  for (const QLabel* label : entry_->findChildren<QLabel*>()) texts << label->text();
  EXPECT_TRUE(texts.contains(QStringLiteral("Programmieren,")));
  EXPECT_TRUE(texts.contains(QStringLiteral("Fahren")));
  EXPECT_TRUE(texts.contains(QStringLiteral("und Schalten")));
  EXPECT_EQ(entry_->findChild<QLabel*>(QStringLiteral("lblTitle"))->text(),
            QStringLiteral("Lokari V4.11"));
}

TEST_F(FrmEntryTest, ClosesAfterFiveSeconds) {
  clock_.advance(4999);
  EXPECT_TRUE(entry_->isVisible());
  clock_.advance(1);
  EXPECT_FALSE(entry_->isVisible());
}

TEST_F(FrmEntryTest, AClickOnThePictureOrALabelClosesItAtOnce) {
  for (const char16_t* name : {u"imgEntry", u"lblTitle"}) {
    entry_->show();
    QTest::mouseClick(entry_->findChild<QLabel*>(QString::fromUtf16(name)), Qt::LeftButton);
    EXPECT_FALSE(entry_->isVisible());
  }
}

TEST_F(FrmEntryTest, StandsInTheMiddleOfTheMainWindow) {
  entry_->centre();
  const QRect around = main_.frameGeometry();
  EXPECT_EQ(entry_->x(), around.x() + around.width() / 2 - entry_->width() / 2);
  EXPECT_EQ(entry_->y(), around.y() + around.height() / 2 - entry_->height() / 2);
}

}  // namespace
}  // namespace lokari
