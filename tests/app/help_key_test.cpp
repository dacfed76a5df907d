// F1 in the real windows, modal ones too.
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QMessageBox>
#include <QToolButton>

#include "base/ui/qt_prompt.h"
#include "simulated_desk.h"

namespace lokari {
namespace {

class HelpKeyTest : public test::SimulatedDesk {
 protected:
  HelpKeyTest() : SimulatedDesk(StationKind::TamsMc) { outside.desktop.log.clear(); }

  QStringList& log() { return outside.desktop.log; }

  /// F1 where the keyboard is.
  static void pressHelp(QWidget* window, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* focus = window->focusWidget();
    QTest::keyClick(focus != nullptr ? focus : window, Qt::Key_F1, modifiers);
  }

  /// Runs `look` in the modal window of that name.
  void inWindow(const char* name, const std::function<void(QDialog&)>& look) {
    watch_.callOnTimeout([this, name = QString::fromLatin1(name), look] {
      auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (modal == nullptr || modal->objectName() != name) return;
      watch_.stop();
      look(*modal);
    });
    watch_.start(0);
  }

  QTimer watch_;
};

TEST_F(HelpKeyTest, TheMainWindowIsAboutVehicles) {
  pressHelp(window.get());
  EXPECT_EQ(log(), QStringList{QStringLiteral("help fahrzeuge.html")});
}

TEST_F(HelpKeyTest, TheSearchFormIsAboutSearching) {
  control<QToolButton>(window.get(), "butFind")->click();
  pressHelp(window.get());
  control<QToolButton>(window.get(), "butCancel")->click();
  pressHelp(window.get());
  EXPECT_EQ(log(), (QStringList{QStringLiteral("help suchen.html#formular"),
                                QStringLiteral("help fahrzeuge.html")}));
}

TEST_F(HelpKeyTest, ShiftAndF1IsTheSearch) {
  pressHelp(window.get(), Qt::ShiftModifier);
  EXPECT_EQ(log().size(), 1);
  EXPECT_TRUE(log().first().startsWith(QStringLiteral("search ")));
}

TEST_F(HelpKeyTest, ACabAndAPanelHaveTheirPages) {
  driving().OpenCab(3, true);
  pressHelp(cabWindow(3));
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  driving().butSwitch();
  pressHelp(windowNamed("frmPanel"));
  EXPECT_EQ(log(), (QStringList{QStringLiteral("help fahren.html#bedienen"),
                                QStringLiteral("help fahren.html#schaltpult")}));
}

TEST_F(HelpKeyTest, AModalWindowHasItsOwn) {
  inWindow("dlgOptions", [](QDialog& dialog) {
    pressHelp(&dialog);
    dialog.reject();
  });
  window->findChild<QAction*>(QStringLiteral("mnuParaOptions"))->trigger();
  EXPECT_EQ(log(), QStringList{QStringLiteral("help einstellungen.html")});
}

TEST_F(HelpKeyTest, TheDecoderWindowAndALists) {
  inWindow("frmDecoder", [](QDialog& dialog) {
    pressHelp(&dialog);
    dialog.reject();
  });
  control<QToolButton>(window.get(), "butProg")->click();
  inWindow("dlgMotor", [](QDialog& dialog) {
    pressHelp(&dialog);
    dialog.reject();
  });
  window->findChild<QAction*>(QStringLiteral("mnuMotorValues"))->trigger();
  EXPECT_EQ(log(), (QStringList{QStringLiteral("help decoder.html"),
                                QStringLiteral("help listen.html#auswahl")}));
}

TEST_F(HelpKeyTest, AListThatIsFoldedOutGoesAndItsWindowCounts) {
  auto* list = control<QComboBox>(window.get(), "dc_coll");
  list->showPopup();
  QWidget* popup = QApplication::activePopupWidget();
  ASSERT_NE(popup, nullptr);
  QTest::keyClick(popup, Qt::Key_F1);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(log(), QStringList{QStringLiteral("help fahrzeuge.html")});
}

TEST_F(HelpKeyTest, ABoxAsksForItsMessage) {
  QtPrompt boxes;
  watch_.callOnTimeout([this] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    watch_.stop();
    pressHelp(box);
    box->reject();
  });
  watch_.start(0);
  boxes.message(QStringLiteral("Type nicht festgelegt!"));
  EXPECT_EQ(log(), QStringList{QStringLiteral("help fahrzeuge.html")});
  EXPECT_EQ(outside.desktop.message, QStringLiteral("Type nicht festgelegt!"));
}

}  // namespace
}  // namespace lokari
