#include "link/ui/progress_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include <stdexcept>

#include "base/ui/window_scale.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

class ProgressDialogTest : public test::LinkFixture {
 protected:
  ProgressDialogTest() : LinkFixture(StationKind::TamsMc) {}

  static QDialog* dialog() {
    auto* found = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    return found != nullptr && found->objectName() == QStringLiteral("dlg_comm") ? found : nullptr;
  }
  template <typename T>
  static T* control(const char* name) {
    return dialog() == nullptr ? nullptr : dialog()->findChild<T*>(QString::fromLatin1(name));
  }
  static QString status() { return control<QLabel>("lblCommStatus")->text(); }

  /// Each time the dialog stands there with "OK": keeps its words and presses the button.
  void closeWhenEnded() {
    closer_.callOnTimeout([this] {
      auto* button = control<QPushButton>("cmdCancel");
      if (button == nullptr || button->text() != QStringLiteral("OK")) return;
      lastWords_ << status();
      button->click();
    });
    closer_.start(0);
  }

  WindowScale scale_{QString()};
  QTimer closer_;
  QStringList lastWords_;
};

TEST_F(ProgressDialogTest, StaysOpenWithTheLastWordsUntilTheUserClosesIt) {
  closeWhenEnded();
  progressDialog(link, scale_, nullptr)([](Progress& progress) {
    progress.setStatus(QStringLiteral("Satz 1 von 2"));
    progress.setPercent(50);
    EXPECT_EQ(status(), QStringLiteral("Satz 1 von 2"));
    EXPECT_EQ(control<QPushButton>("cmdCancel")->text(), QStringLiteral("Abbruch"));
    EXPECT_FALSE(progress.cancelled());
    progress.setStatus(
        QStringLiteral("Import erfolgreich abgeschlossen,\r2 Datensätze importiert!"));
    progress.setPercent(100);
  });
  EXPECT_EQ(lastWords_, QStringList{"Import erfolgreich abgeschlossen,\n2 Datensätze importiert!"});
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_FALSE(link.cancelRequested);
  EXPECT_EQ(link.view(), &view);
}

TEST_F(ProgressDialogTest, AbbruchClosesItAndTheResultIsShownAllTheSame) {
  closeWhenEnded();
  progressDialog(link, scale_, nullptr)([](Progress& progress) {
    progress.setStatus(QStringLiteral("Satz 1 von 2"));
    control<QPushButton>("cmdCancel")->click();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(progress.cancelled());
    progress.setStatus(QStringLiteral("1 Datensatz importiert"));
  });
  EXPECT_EQ(lastWords_, QStringList{"1 Datensatz importiert"});
  EXPECT_FALSE(link.cancelRequested);
}

TEST_F(ProgressDialogTest, AWorkThatSaysNothingAfterAbbruchIsNotShownAgain) {
  closeWhenEnded();
  progressDialog(link, scale_, nullptr)([](Progress& progress) {
    progress.setStatus(QStringLiteral("Seite 1 von 2"));
    control<QPushButton>("cmdCancel")->click();
    EXPECT_TRUE(progress.cancelled());
  });
  EXPECT_TRUE(lastWords_.isEmpty());
}

TEST_F(ProgressDialogTest, AFailureClosesItAndReachesTheCaller) {
  EXPECT_THROW(progressDialog(link, scale_,
                              nullptr)([](Progress&) { throw std::runtime_error("beschädigt"); }),
               std::runtime_error);
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_FALSE(link.cancelRequested);
}

}  // namespace
}  // namespace lokari
