// The list of the speed table, and the buttons beside it.
#include "decoder/ui/dlg_spd_tab.h"

#include <QLineEdit>

#include "decoder/fixed_fields.h"
#include "decoder/ui/speed_curve.h"
#include "window_fixture.h"

namespace lokari {
namespace {

const QString kOutOfRange = QStringLiteral("Eingabe außerhalb des Wertebereichs!");

class DlgSpdTabTest : public test::WindowFixture {
 protected:
  /// Opens the window with the table in use and the list in it, and runs `script` there. A list
  /// that the script leaves open is cancelled.
  void list(const std::function<void()>& script, int steps = 28) {
    setValue(29, config_bit::kSpeedTable + (steps == 28 ? config_bit::kSteps : 0));
    const auto show = bench.tableListBox;
    test::ActivationHook hook([&] {
      script();
      if (dialog->isVisible()) dialog->reject();
    });
    bench.tableListBox = [&](SpeedTableList& shown) {
      // The dialog is made and shown in there; it has the front a moment later.
      const auto watch = [&] {
        dialog = window.findChild<DlgSpdTab*>();
        dialog->installEventFilter(&hook);
      };
      QMetaObject::invokeMethod(&window, watch, Qt::QueuedConnection);
      show(shown);
    };
    edit([&] {
      tabs()->setCurrentIndex(1);
      click("cmdTblList");
      EXPECT_TRUE(dialog);
      dialog = nullptr;
      QCoreApplication::processEvents();
      if (after) after();
    });
    bench.tableListBox = show;
  }

  ValueEdit* box(int number) {
    return dialog->findChild<ValueEdit*>(QStringLiteral("txtSpdVl_%1").arg(number));
  }
  QLabel* caption(int number) {
    return dialog->findChild<QLabel*>(QStringLiteral("lblSpdVl_%1").arg(number));
  }
  void press(const char* name) {
    QTest::mouseClick(dialog->findChild<QAbstractButton*>(QString::fromLatin1(name)),
                      Qt::LeftButton);
  }

  DlgSpdTab* dialog = nullptr;
  std::function<void()> after;
};

TEST_F(DlgSpdTabTest, ShowsTwentyEightBoxes) {
  describe("");
  setValue(67, 20, '1');
  setValue(94, 200);
  list([&] {
    EXPECT_EQ(caption(1)->text(), QStringLiteral("Stufe 1:"));
    EXPECT_EQ(caption(28)->text(), QStringLiteral("Stufe 28:"));
    EXPECT_EQ(box(1)->text(), QStringLiteral("20"));
    EXPECT_EQ(test::textColourOf(box(1)), QColor(0, 0, 255));
    EXPECT_EQ(box(28)->text(), QStringLiteral("200"));
    EXPECT_TRUE(box(28)->isVisible());
    EXPECT_TRUE(box(1)->hasFocus());
    EXPECT_EQ(box(1)->selectedText(), QStringLiteral("20"));
  });
}

TEST_F(DlgSpdTabTest, AClickIntoABoxSelectsItsText) {
  describe("");
  setValue(71, 123);
  list([&] {
    QTest::mouseClick(box(5), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_TRUE(box(5)->hasFocus());
    EXPECT_EQ(box(5)->selectedText(), QStringLiteral("123"));
  });
}

TEST_F(DlgSpdTabTest, WithFourteenStepsHalfOfThemAndASmallerDialog) {
  describe("");
  setValue(68, 2);
  setValue(94, 9);
  QSize all;
  list([&] { all = dialog->size(); });
  list(
      [&] {
        EXPECT_EQ(box(1)->text(), QStringLiteral("2"));
        EXPECT_EQ(box(14)->text(), QStringLiteral("9"));
        EXPECT_FALSE(box(15)->isVisible());
        EXPECT_FALSE(caption(15)->isVisible());
        EXPECT_LT(dialog->width(), all.width());
      },
      14);
  EXPECT_FALSE(all.isEmpty());
}

TEST_F(DlgSpdTabTest, OfAShortTableFifteen) {
  describe("FAMILY=1\n");
  list([&] {
    EXPECT_TRUE(box(15)->isVisible());
    EXPECT_FALSE(box(16)->isVisible());
  });
}

TEST_F(DlgSpdTabTest, DoesNotComeUpWhileTheTableIsOff) {
  describe("");
  edit([&] {
    tabs()->setCurrentIndex(1);
    click("cmdTblList");
    EXPECT_FALSE(window.findChild<DlgSpdTab*>());
    EXPECT_EQ(prompt.shown, QStringList({"Die Geschwindigkeitstabelle ist ausgeschaltet."}));
  });
}

TEST_F(DlgSpdTabTest, TheCurveFollowsABoxThatIsLeft) {
  describe("");
  setValue(67, 20, '1');
  list([&] {
    auto* picture = control<SpeedCurve>(QStringLiteral("picSpeedTable"));
    const QPointF before = picture->positionOf(1);
    type(box(1), QStringLiteral("120"));
    EXPECT_NE(test::textColourOf(box(1)), QColor(0, 0, 255));
    EXPECT_EQ(value(67), 20);
    leave(box(1));
    EXPECT_EQ(value(67), 120);
    EXPECT_LT(picture->positionOf(1).y(), before.y());
    EXPECT_TRUE(box(2)->hasFocus());
    EXPECT_EQ(box(2)->selectedText(), box(2)->text());
  });
}

TEST_F(DlgSpdTabTest, AValueAboveTheScaleComesBackSelected) {
  describe("INTERNALSTEPS=120\n");
  list([&] {
    type(box(3), QStringLiteral("121"));
    leave(box(3));
    EXPECT_EQ(prompt.shown, QStringList{kOutOfRange});
    EXPECT_TRUE(box(3)->hasFocus());
    EXPECT_EQ(box(3)->selectedText(), QStringLiteral("121"));
    EXPECT_EQ(value(69), 0);
  });
}

TEST_F(DlgSpdTabTest, OkStoresTheBoxInHandToo) {
  describe("");
  list([&] {
    type(box(1), QStringLiteral("11"));
    leave(box(1));
    type(box(28), QStringLiteral("99"));
    press("cmdOK");
    EXPECT_FALSE(dialog->isVisible());
  });
  EXPECT_EQ(value(67), 11);
  EXPECT_EQ(value(94), 99);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(DlgSpdTabTest, TheEnterKeyTakesTheBoxInHand) {
  describe("");
  list([&] {
    type(box(2), QStringLiteral("7"));
    QTest::keyClick(box(2), Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
  });
  EXPECT_EQ(value(68), 7);
}

TEST_F(DlgSpdTabTest, OkStaysOpenWithARefusedBox) {
  describe("");
  list([&] {
    type(box(2), QStringLiteral("256"));
    press("cmdOK");
    QCoreApplication::processEvents();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(prompt.shown, QStringList{kOutOfRange});
    EXPECT_TRUE(box(2)->hasFocus());
  });
}

TEST_F(DlgSpdTabTest, CancelBringsAllBackAndAsksNothingAboutTheBoxInHand) {
  describe("");
  for (int cv = 67; cv <= 94; ++cv) setValue(cv, cv, '1');
  after = [&] {
    for (int cv = 67; cv <= 94; ++cv) {
      EXPECT_EQ(value(cv), cv);
      EXPECT_EQ(bench.sets.mark(CvIndex(cv)), CvMark::Verified);
    }
  };
  list([&] {
    type(box(1), QStringLiteral("200"));
    leave(box(1));
    EXPECT_EQ(value(67), 200);
    type(box(2), QStringLiteral("falsch"));
    press("cmdCancel");
    EXPECT_FALSE(dialog->isVisible());
  });
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(DlgSpdTabTest, EscapeIsCancel) {
  describe("");
  list([&] {
    type(box(1), QStringLiteral("200"));
    leave(box(1));
    QTest::keyClick(box(2), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
  });
  EXPECT_EQ(value(67), 0);
}

TEST_F(DlgSpdTabTest, TheOtherButtonsWorkOnTheTableToo) {
  describe("");
  setValue(68, 20);
  setValue(29, config_bit::kSpeedTable + config_bit::kSteps);
  const QString path = base.filePath(QStringLiteral("Meine.spd"));
  edit([&] {
    tabs()->setCurrentIndex(1);
    click("cmdSmooth");
    EXPECT_EQ(value(67), 10);
    prompt.fileNames = {path, path};
    click("cmdSaveTable");
    ASSERT_TRUE(QFile::exists(path));
    bench.sets.setValue(CvIndex(67), 77);
    click("cmdLoadTable");
    EXPECT_EQ(value(67), 10);
  });
  EXPECT_TRUE(prompt.shown.isEmpty());
}

}  // namespace
}  // namespace lokari
