// The form of the messages in the options dialog.
#include <QCheckBox>

#include "options_fixture.h"

namespace lokari {
namespace {

class DlgOptionsMakerFormTest : public test::OptionsFixture {
 protected:
  QCheckBox* box() const { return control<QCheckBox>(QStringLiteral("chkMakerForm")); }
};

TEST_F(DlgOptionsMakerFormTest, TheBoxIsUntickedAndASentenceSaysWhatItChanges) {
  open();
  EXPECT_FALSE(box()->isChecked());
  EXPECT_EQ(box()->text(), "Nachrichten: nach &Herstellerunterlagen");
  const QString sentence = control<QLabel>(QStringLiteral("labMakerForm"))->text();
  EXPECT_TRUE(sentence.contains("wie bisher")) << qPrintable(sentence);
  EXPECT_EQ(box()->accessibleDescription(), sentence);
}

TEST_F(DlgOptionsMakerFormTest, TickedItTellsTheUnitsOtherAddressesAndIsWritten) {
  open();
  click("chkMakerForm");
  ASSERT_EQ(prompt.shown.size(), 1);
  EXPECT_TRUE(prompt.shown.first().contains("(D - 1) x 4 + 1 bis 4"))
      << qPrintable(prompt.shown[0]);
  EXPECT_FALSE(settings.makerForm);
  click("cmdOK");
  EXPECT_TRUE(settings.makerForm);
  EXPECT_TRUE(iniText().contains("MakerForm=J\r\n")) << qPrintable(iniText());

  open();
  EXPECT_TRUE(box()->isChecked());
  click("chkMakerForm");
  EXPECT_EQ(prompt.shown.size(), 1) << "nothing is told when it is taken back";
  click("cmdOK");
  EXPECT_FALSE(settings.makerForm);
  EXPECT_TRUE(iniText().contains("MakerForm=N\r\n")) << qPrintable(iniText());
}

TEST_F(DlgOptionsMakerFormTest, WhatCouldNotBeWrittenIsWrittenTheNextTime) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("LOKARI.INI")));
  open();
  click("chkMakerForm");
  click("cmdOK");
  EXPECT_TRUE(settings.makerForm);
  ASSERT_TRUE(QDir(folder.path()).rmdir(QStringLiteral("LOKARI.INI")));
  open();
  click("cmdOK");
  EXPECT_TRUE(iniText().contains("MakerForm=J\r\n")) << qPrintable(iniText());
}

TEST_F(DlgOptionsMakerFormTest, LeftAsItIsItLeavesTheSettingsFileWithoutItsKey) {
  open();
  click("cmdOK");
  EXPECT_FALSE(iniText().contains("MakerForm"));
}

}  // namespace
}  // namespace lokari
