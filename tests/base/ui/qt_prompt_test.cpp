#include "base/ui/qt_prompt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

namespace lokari {
namespace {

/// Lets `act` handle the modal window that comes up next.
template <typename Window>
void whenShown(std::function<void(Window&)> act) {
  QTimer::singleShot(0, qApp, [act = std::move(act)] {
    auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
    ASSERT_NE(window, nullptr);
    act(*window);
  });
}

QStringList captions(const QMessageBox& box) {
  QStringList result;
  for (QAbstractButton* button : box.buttons()) result << button->text();
  result.sort();
  return result;
}

TEST(QtPrompt, AsksWithYesAndNoInGerman) {
  QtPrompt prompt;
  QStringList seen;
  QString text;
  whenShown<QMessageBox>([&](QMessageBox& box) {
    seen = captions(box);
    text = box.text();
    for (QAbstractButton* button : box.buttons()) {
      if (button->text() == QStringLiteral("&Ja")) button->click();
    }
  });
  EXPECT_EQ(prompt.ask(QStringLiteral("Eins\rZwei"), Buttons::YesNo, Icon::Question, {}),
            Answer::Yes);
  EXPECT_EQ(seen, QStringList({QStringLiteral("&Ja"), QStringLiteral("&Nein")}));
  EXPECT_EQ(text, QStringLiteral("Eins\nZwei"));
}

TEST(QtPrompt, AClosedBoxIsTheSafeAnswer) {
  QtPrompt prompt;
  whenShown<QMessageBox>([](QMessageBox& box) { box.close(); });
  EXPECT_EQ(prompt.ask(QStringLiteral("?"), Buttons::YesNo, Icon::Question, {}), Answer::No);
  whenShown<QMessageBox>([](QMessageBox& box) { box.close(); });
  EXPECT_EQ(prompt.ask(QStringLiteral("?"), Buttons::OkCancel, Icon::Question, {}), Answer::Cancel);
  whenShown<QMessageBox>([](QMessageBox& box) { box.close(); });
  EXPECT_EQ(prompt.ask(QStringLiteral("?"), Buttons::YesNoCancel, Icon::Question, {}),
            Answer::Cancel);
  whenShown<QMessageBox>([](QMessageBox& box) { box.close(); });
  EXPECT_EQ(prompt.ask(QStringLiteral("!"), Buttons::Ok, Icon::Warning, {}), Answer::Ok);
}

TEST(QtPrompt, TheBusyPointerGoesWhileABoxIsUp) {
  QtPrompt prompt;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  Qt::CursorShape shape = Qt::WaitCursor;
  whenShown<QMessageBox>([&](QMessageBox& box) {
    shape = QApplication::overrideCursor()->shape();
    box.close();
  });
  prompt.ask(QStringLiteral("!"), Buttons::Ok, Icon::Warning, {});
  EXPECT_EQ(shape, Qt::ArrowCursor);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  QApplication::restoreOverrideCursor();
}

TEST(QtPrompt, AFileDialogHasTitleFolderFiltersAndPresetName) {
  QtPrompt prompt;
  const QTemporaryDir folder;
  QString title;
  QString start;
  QStringList chosen;
  whenShown<QFileDialog>([&](QFileDialog& dialog) {
    title = dialog.windowTitle();
    start = dialog.directory().absolutePath();
    chosen = dialog.selectedFiles();
    dialog.reject();
  });
  const QString name = prompt.saveFile({QStringLiteral("Neue Datenbank anlegen"),
                                        QStringLiteral("Access-Datenbanken|*.mdb"), folder.path(),
                                        QStringLiteral("NEUE_DB.MDB")});
  EXPECT_EQ(title, QStringLiteral("Neue Datenbank anlegen"));
  EXPECT_EQ(start, folder.path());
  EXPECT_EQ(chosen, QStringList(folder.filePath(QStringLiteral("NEUE_DB.MDB"))));
  EXPECT_TRUE(name.isEmpty());
}

/// What the dialog gives for a name that the user types and confirms with Enter.
QString openedAs(const QString& folder, const QString& name) {
  QtPrompt prompt;
  whenShown<QFileDialog>([&](QFileDialog& dialog) {
    auto* edit = dialog.findChild<QLineEdit*>();
    ASSERT_NE(edit, nullptr);
    edit->setText(name);
    QTest::keyClick(edit, Qt::Key_Return);
    // A refused name would keep the dialog open.
    if (dialog.isVisible()) dialog.reject();
  });
  return prompt.openFile({QStringLiteral("Geschwindigkeitstabelle laden"),
                          QStringLiteral("Geschwindikeitstabellen (*.spd)|*.spd"),
                          folder,
                          {}});
}

TEST(QtPrompt, ANameToOpenMayBeTypedWithoutItsExtension) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("Tab1.spd")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_EQ(openedAs(folder.path(), QStringLiteral("Tab1")),
            folder.filePath(QStringLiteral("Tab1")));
  EXPECT_EQ(openedAs(folder.path(), QStringLiteral("Tab1.spd")),
            folder.filePath(QStringLiteral("Tab1.spd")));
}

TEST(QtPrompt, AFolderIsEnteredNotOpened) {
  const QTemporaryDir folder;
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Alt")));
  EXPECT_TRUE(openedAs(folder.path(), QStringLiteral("Alt")).isEmpty());
}

TEST(NameFilters, MasksMatchInAnyCase) {
  const QStringList filters =
      nameFilters(QStringLiteral("Bilder(*.bmp,*.jpg)|*.bmp;*.jpg|Alle Dateien (*.*)|*.*"));
  ASSERT_EQ(filters.size(), 2);
  EXPECT_EQ(filters[0], QStringLiteral("Bilder(*.bmp,*.jpg) (*.[bB][mM][pP] *.[jJ][pP][gG])"));
  EXPECT_EQ(filters[1], QStringLiteral("Alle Dateien (*.*) (*)"));
}

TEST(NameFilters, AnUnfinishedPairIsLeftOut) {
  EXPECT_EQ(nameFilters(QStringLiteral("A|*.a|B")), QStringList(QStringLiteral("A (*.[aA])")));
  EXPECT_TRUE(nameFilters(QString()).isEmpty());
}

}  // namespace
}  // namespace lokari
