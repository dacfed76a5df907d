// The database's file fails under an edit: the real main window can still be closed, and another
// file opened, by giving the edit up.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

#include <memory>
#include <sqlite3.h>

#include "app/ui/main_win.h"
#include "app/workbench.h"
#include "app_folder.h"
#include "db/database_session.h"
#include "support/no_larger_files.h"

namespace lokari {
namespace {

/// Keeps a fault up for as long as it lives.
using Fault = std::shared_ptr<void>;

struct Case {
  const char* name;
  Fault (*make)(const QString& path, Database& database);
  const char* text;  ///< a part of what the user is told
};

Fault none() {
  return nullptr;
}

const Case kCases[] = {
    {"FullDisk",
     [](const QString&, Database&) -> Fault { return std::make_shared<test::NoLargerFiles>(1000); },
     "kann nicht gelesen oder geschrieben werden"},
    {"ReadOnly",
     [](const QString&, Database& database) -> Fault {
       database.write(QStringLiteral("PRAGMA query_only = 1"), {});
       return none();
     },
     "schreibgeschützt"},
    {"Locked",
     [](const QString& path, Database&) -> Fault {
       sqlite3* other = nullptr;
       EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &other), SQLITE_OK);
       EXPECT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
       return {other, sqlite3_close};
     },
     "von einem anderen Programm benutzt"},
    {"Replaced",
     [](const QString& path, Database&) -> Fault {
       EXPECT_TRUE(QFile::copy(path, path + QStringLiteral(".neu")));
       EXPECT_TRUE(QFile::remove(path));
       EXPECT_TRUE(QFile::rename(path + QStringLiteral(".neu"), path));
       return none();
     },
     "liegt nicht mehr an ihrem Platz"},
    {"Gone",
     [](const QString& path, Database&) -> Fault {
       EXPECT_TRUE(QFile::remove(path));
       return none();
     },
     "liegt nicht mehr an ihrem Platz"},
    {"Rubbish",
     [](const QString& path, Database&) -> Fault {
       QFile file(path);
       EXPECT_TRUE(file.open(QIODevice::ReadWrite));
       file.write(QByteArray(file.size(), 'x'));
       return none();
     },
     "keine Datenbank"},
};

class WayOutTest : public ::testing::TestWithParam<Case> {
 protected:
  void SetUp() override {
    folder_.add({{QStringLiteral("Club"), 64, QStringLiteral("C64")}});
    folder_.copyTemplate(QStringLiteral("DB/ANDERE.MDB"));
    workbench_ = std::make_unique<Workbench>(outside_.parts(folder_));
    window_ = std::make_unique<MainWin>(*workbench_);
    ASSERT_TRUE(window_->start());
    window_->show();
    QApplication::processEvents();
  }
  void breakFile() {
    fault_ = GetParam().make(folder_.file(test::AppFolder::databaseName()),
                             workbench_->session().database());
  }
  void typeOver() const {
    auto* field = window_->findChild<QLineEdit*>(QStringLiteral("fz_lname"));
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("neu"));
  }
  void expectTold() const {
    EXPECT_TRUE(outside_.prompt.shown.join(u'\n').contains(QString::fromUtf8(GetParam().text)))
        << qPrintable(outside_.prompt.shown.join(u'\n'));
    EXPECT_FALSE(outside_.prompt.boxInBox);
  }
  /// What the user says to the offer.
  void giveUp(bool yes) { outside_.prompt.choices = {yes ? 0 : 1}; }

  test::AppFolder folder_;
  test::Outside outside_;
  std::unique_ptr<Workbench> workbench_;
  std::unique_ptr<MainWin> window_;
  Fault fault_;
};

INSTANTIATE_TEST_SUITE_P(Faults, WayOutTest, ::testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(WayOutTest, TheProgramIsClosedByGivingTheEditUp) {
  typeOver();
  breakFile();
  giveUp(false);
  window_->close();
  EXPECT_TRUE(window_->isVisible()) << "who goes on editing stays";
  expectTold();
  EXPECT_EQ(window_->findChild<QLineEdit*>(QStringLiteral("fz_lname"))->text(),
            QStringLiteral("neu"));
  giveUp(true);
  window_->close();
  EXPECT_FALSE(window_->isVisible());
}

TEST_P(WayOutTest, AnotherFileIsOpenedByGivingTheEditUp) {
  typeOver();
  breakFile();
  giveUp(true);
  outside_.prompt.fileNames = {folder_.file(QStringLiteral("DB/ANDERE.MDB"))};
  window_->findChild<QAction*>(QStringLiteral("mnuDbOpen"))->trigger();
  expectTold();
  EXPECT_EQ(window_->windowTitle(), QStringLiteral("ANDERE.MDB - Lokari V4.11"));
  EXPECT_EQ(workbench_->session().database().path(), folder_.file(QStringLiteral("DB/ANDERE.MDB")));
}

TEST_P(WayOutTest, APictureThatWasTakenAwayIsNoWallEither) {
  fault_.reset();
  folder_.change(64, {{QStringLiteral("MD_PIC"), QByteArray("GIF89a no picture, but bytes")}});
  workbench_->session().requery();
  workbench_->session().form().butPicDel();
  ASSERT_TRUE(workbench_->session().form().isUnsaved());
  breakFile();
  // The decoder window asks for the sets anew, which fails; the record counts as unreadable then.
  workbench_->session().form().refreshCvSets();
  giveUp(true);
  window_->close();
  EXPECT_FALSE(window_->isVisible());
}

TEST_P(WayOutTest, ADeletionThatIsRefusedIsTold) {
  breakFile();
  outside_.prompt.answers = {Answer::Yes};
  window_->findChild<QToolButton*>(QStringLiteral("butDelete"))->click();
  expectTold();
  EXPECT_EQ(window_->findChild<QLineEdit*>(QStringLiteral("st_sname"))->text(),
            QStringLiteral("C64"));
}

}  // namespace
}  // namespace lokari
