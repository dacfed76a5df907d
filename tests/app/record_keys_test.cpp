// Keys and buttons around the record on show, in the real main window.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QSqlQuery>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <memory>
#include <optional>

#include "app/ui/main_win.h"
#include "app/workbench.h"
#include "app_folder.h"
#include "base/ui/qt_prompt.h"
#include "db/database_session.h"

namespace lokari {
namespace {

class RecordKeysTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_.add({{QStringLiteral("Club"), 64, QStringLiteral("C64")},
                 {QStringLiteral("Club"), 65, QStringLiteral("C65")}});
    workbench_ = std::make_unique<Workbench>(outside_.parts(folder_));
    window_ = std::make_unique<MainWin>(*workbench_);
    ASSERT_TRUE(window_->start());
    window_->show();
    // The splash may come up in front.
    window_->findChild<QWidget*>(QStringLiteral("frmEntry"))->close();
    window_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
  }

  template <typename T>
  T* child(const char16_t* name) const {
    T* found = window_->findChild<T*>(QString::fromUtf16(name));
    EXPECT_NE(found, nullptr) << qPrintable(QString::fromUtf16(name));
    return found;
  }
  QString shown(const char16_t* name) const { return child<QLineEdit>(name)->text(); }
  /// A key goes where the focus is, as a person's does.
  void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
    QTest::keyClick(QApplication::focusWidget(), code, modifiers);
  }
  void type(const char* keys) const {
    for (const char* each = keys; *each != '\0'; ++each) {
      QTest::keyClick(QApplication::focusWidget(), *each);
    }
  }
  QStringList addresses() const {
    QStringList result;
    workbench_->session().database().read(
        QStringLiteral("SELECT DC_ADR FROM LOCO_DAT ORDER BY DC_RECNO"), {},
        [&](const QSqlQuery& row) { result << row.value(0).toString(); });
    return result;
  }

  test::AppFolder folder_;
  test::Outside outside_;
  std::unique_ptr<Workbench> workbench_;
  std::unique_ptr<MainWin> window_;
};

TEST_F(RecordKeysTest, ADigitBehindAltNBelongsToTheNewRecord) {
  child<QLineEdit>(u"dc_adr")->setFocus();
  child<QLineEdit>(u"dc_adr")->end(false);
  key(Qt::Key_N, Qt::AltModifier);
  type("7");
  EXPECT_EQ(child<QLabel>(u"Data1_Caption")->text(), QStringLiteral("neuer Satz"));
  EXPECT_EQ(shown(u"dc_adr"), QStringLiteral("7"));
  EXPECT_EQ(addresses(), (QStringList{QStringLiteral("64"), QStringLiteral("65")}));
}

TEST_F(RecordKeysTest, ALetterWithAltThatIsNoButtonsChangesNoField) {
  for (const char16_t* field : {u"st_sname", u"fz_lname"}) {
    child<QLineEdit>(field)->setFocus();
    const QString before = shown(field);
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_X, Qt::AltModifier, QStringLiteral("x"));
    QApplication::sendEvent(QApplication::focusWidget(), &letter);
    EXPECT_EQ(shown(field), before);
    EXPECT_FALSE(child<QLabel>(u"lblUnsaved")->isVisible());
    // The right Alt key types.
    QKeyEvent sign(QEvent::KeyPress, Qt::Key_At, Qt::GroupSwitchModifier, QStringLiteral("@"));
    QApplication::sendEvent(QApplication::focusWidget(), &sign);
    EXPECT_NE(shown(field), before);
    key(Qt::Key_Escape);
  }
}

TEST_F(RecordKeysTest, ALetterBehindCtrlPageDownBelongsToTheNextRecord) {
  auto* name = child<QLineEdit>(u"fz_lname");
  name->setFocus();
  key(Qt::Key_PageDown, Qt::ControlModifier);
  type("x");
  EXPECT_EQ(shown(u"st_sname"), QStringLiteral("C65"));
  EXPECT_EQ(shown(u"fz_lname"), QStringLiteral("x"));
}

TEST_F(RecordKeysTest, ALabelShowsUnsavedChangesAndEscGivesThemUp) {
  auto* note = child<QLabel>(u"lblUnsaved");
  EXPECT_FALSE(note->isVisible());
  child<QLineEdit>(u"fz_lname")->setFocus();
  type("neu");
  EXPECT_TRUE(note->isVisible());
  key(Qt::Key_Escape);
  EXPECT_EQ(shown(u"fz_lname"), QString());
  EXPECT_FALSE(note->isVisible());
  EXPECT_TRUE(outside_.prompt.shown.isEmpty());
}

TEST_F(RecordKeysTest, EscAsksAheadOfGivingUpWhatTheDecoderWindowHandedBack) {
  RecordForm& form = workbench_->session().form();
  ASSERT_TRUE(form.prepareProgramming());
  CvRecord record = form.workingCopy();
  record.recCvValues[0][2] = '\7';
  record.recCvMarks[0][2] = '1';
  form.storeProgrammed(record, QStringLiteral("64"), QString());
  child<QLineEdit>(u"fz_lname")->setFocus();
  key(Qt::Key_Escape);
  ASSERT_EQ(outside_.prompt.asked.size(), 1);
  EXPECT_EQ(outside_.prompt.shown.last(),
            QStringLiteral("Eingaben zu diesem Datensatz verwerfen?"));
  EXPECT_TRUE(child<QLabel>(u"lblUnsaved")->isVisible()) << "the safe answer";
  key(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(folder_.stored(64, QStringLiteral("DC_CV")).toByteArray().mid(2, 1), QByteArray("\7"));
}

TEST_F(RecordKeysTest, StoringEndsTheLabel) {
  child<QLineEdit>(u"fz_lname")->setFocus();
  type("neu");
  key(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_FALSE(child<QLabel>(u"lblUnsaved")->isVisible());
}

TEST_F(RecordKeysTest, ADeletionCanBeTakenBackByItsButton) {
  auto* undo = child<QToolButton>(u"butUndo");
  EXPECT_FALSE(undo->isVisible());
  outside_.prompt.answers = {Answer::Yes};
  child<QToolButton>(u"butDelete")->click();
  EXPECT_EQ(shown(u"st_sname"), QStringLiteral("C65"));
  ASSERT_TRUE(undo->isVisible());
  undo->click();
  EXPECT_EQ(shown(u"st_sname"), QStringLiteral("C64"));
  EXPECT_EQ(addresses().size(), 2);
  EXPECT_FALSE(undo->isVisible());
}

TEST_F(RecordKeysTest, AnEditInHandIsAskedAboutByTheButtonThatTakesBack) {
  outside_.prompt.answers = {Answer::Yes};
  child<QToolButton>(u"butDelete")->click();
  child<QLineEdit>(u"fz_lname")->setFocus();
  type("neu");
  child<QToolButton>(u"butUndo")->click();
  ASSERT_EQ(outside_.prompt.asked.size(), 1);
  EXPECT_EQ(shown(u"fz_lname"), QStringLiteral("neu")) << "the safe answer goes on editing";
  EXPECT_EQ(addresses().size(), 1);
  outside_.prompt.choices = {1};
  child<QToolButton>(u"butUndo")->click();
  EXPECT_EQ(shown(u"st_sname"), QStringLiteral("C64"));
  EXPECT_EQ(addresses().size(), 2);
}

TEST_F(RecordKeysTest, TheEndFromOutsideStoresTheEdit) {
  child<QLineEdit>(u"fz_lname")->setFocus();
  type("neu");
  window_->endProgram();
  EXPECT_FALSE(window_->isVisible());
  const Database database(folder_.file(test::AppFolder::databaseName()));
  QString name;
  database.read(QStringLiteral("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 64"), {},
                [&](const QSqlQuery& row) { name = row.value(0).toString(); });
  EXPECT_EQ(name, QStringLiteral("neu"));
}

// ---- The end from outside -----------------------------------------------------------------------

/// A dialog that is busy for a while, or has a question.
class BusyDialog final : public QDialog {
 public:
  BusyDialog(QWidget* parent, int refusals) : QDialog(parent), refusals_(refusals) {
    setModal(true);
  }
  void reject() override {
    ++asked;
    if (question) {
      QTimer::singleShot(0, this, [this] { question->accept(); });
      question->exec();
      return;
    }
    if (--refusals_ < 0) QDialog::reject();
  }

  int asked = 0;
  std::unique_ptr<QMessageBox> question;

 private:
  int refusals_;
};

TEST_F(RecordKeysTest, ADialogThatIsBusyAtFirstDoesNotHoldTheEndUp) {
  BusyDialog dialog(window_.get(), 2);
  QTimer::singleShot(0, &dialog, [this] { window_->endProgram(); });
  dialog.exec();
  EXPECT_EQ(dialog.asked, 3);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }));
}

TEST_F(RecordKeysTest, OneDialogBehindAnotherAtTheSamePlaceInMemoryIsAskedToo) {
  // A dialog opens as soon as the first one closes, where that one stood.
  std::optional<BusyDialog> dialog;
  dialog.emplace(window_.get(), 0);
  QTimer::singleShot(0, window_.get(), [this] { window_->endProgram(); });
  dialog->exec();
  dialog.emplace(window_.get(), 0);
  dialog->exec();
  EXPECT_EQ(dialog->asked, 1);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }));
}

TEST_F(RecordKeysTest, ABoxThatOnlyTellsDoesNotHoldTheEndUp) {
  QTimer::singleShot(0, window_.get(), [this] { window_->endProgram(); });
  QtPrompt().message(QStringLiteral("Keine Daten von Digitalzentrale erhalten"));
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }));
}

TEST_F(RecordKeysTest, AQuestionThatWasOpenTakesItsSafeAnswerAtTheEnd) {
  QTimer::singleShot(0, window_.get(), [this] { window_->endProgram(); });
  EXPECT_EQ(QtPrompt().ask(QStringLiteral("Ja?"), Buttons::YesNo), Answer::No);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->isVisible(); }));
}

TEST_F(RecordKeysTest, WhoSaysNoToADialogsQuestionKeepsTheProgram) {
  BusyDialog dialog(window_.get(), 0);
  dialog.question = std::make_unique<QMessageBox>(&dialog);
  QTimer::singleShot(0, &dialog, [this] { window_->endProgram(); });
  QTimer::singleShot(1500, &dialog, [&dialog] { dialog.done(0); });
  dialog.exec();
  EXPECT_EQ(dialog.asked, 1);
  QApplication::processEvents();
  EXPECT_TRUE(window_->isVisible());
  window_->endProgram();
  EXPECT_FALSE(window_->isVisible()) << "asked for once more";
}

}  // namespace
}  // namespace lokari
