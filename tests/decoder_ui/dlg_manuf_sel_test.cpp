#include "decoder/ui/dlg_manuf_sel.h"

#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "dialog_script.h"

namespace lokari {
namespace {

using test::in;
using test::inDialog;

const QList<Maker> kMakers{{0, QStringLiteral("Standard")},
                           {145, QStringLiteral("Zimo")},
                           {13, QStringLiteral("Eigen(9)")}};

std::optional<int> choose(const std::function<void(QDialog&)>& script) {
  DlgManufSel dlgManufSel(kMakers);
  inDialog("dlgManufSel", script);
  return dlgManufSel.choose();
}

QListWidget* lines(const QDialog& dialog) {
  return in<QListWidget>(dialog, "lstManSel");
}

TEST(DlgManufSelTest, HasALineForEachMaker) {
  choose([](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Decoder-Hersteller"));
    QStringList texts;
    for (int i = 0; i < lines(dialog)->count(); ++i) texts << lines(dialog)->item(i)->text();
    EXPECT_EQ(texts, (QStringList{"Standard\t(0)", "Zimo\t(145)", "Eigen(9)\t(13)"}));
  });
}

TEST(DlgManufSelTest, OkGivesTheNumberOfTheSelectedLine) {
  EXPECT_EQ(choose([](QDialog& dialog) {
              lines(dialog)->setCurrentRow(2);
              in<QPushButton>(dialog, "cmdOK")->click();
            }),
            13);
}

TEST(DlgManufSelTest, WithoutASelectedLineThereIsNoOk) {
  EXPECT_EQ(choose([](QDialog& dialog) {
              EXPECT_FALSE(in<QPushButton>(dialog, "cmdOK")->isEnabled());
              lines(dialog)->setCurrentRow(0);
              EXPECT_TRUE(in<QPushButton>(dialog, "cmdOK")->isEnabled());
              in<QPushButton>(dialog, "cmdOK")->click();
            }),
            0);
}

TEST(DlgManufSelTest, ADoubleClickIsOk) {
  EXPECT_EQ(choose([](QDialog& dialog) {
              QListWidget* list = lines(dialog);
              const QPoint place = list->visualItemRect(list->item(1)).center();
              QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
              QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
            }),
            145);
}

TEST(DlgManufSelTest, TheKeyboardIsEnough) {
  EXPECT_EQ(choose([](QDialog& dialog) {
              EXPECT_EQ(dialog.focusWidget(), lines(dialog));
              QTest::keyClick(lines(dialog), Qt::Key_Z);
              QTest::keyClick(lines(dialog), Qt::Key_Return);
            }),
            145);
}

TEST(DlgManufSelTest, CancelGivesNothing) {
  EXPECT_EQ(choose([](QDialog& dialog) {
              lines(dialog)->setCurrentRow(1);
              in<QPushButton>(dialog, "cmdCancel")->click();
            }),
            std::nullopt);
}

TEST(DlgManufSelTest, EveryControlIsNamedForScreenReaders) {
  choose([](QDialog& dialog) { EXPECT_FALSE(lines(dialog)->accessibleName().isEmpty()); });
}

}  // namespace
}  // namespace lokari
