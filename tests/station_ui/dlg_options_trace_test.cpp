// The trace in the options dialog.
#include <QCheckBox>

#include "link/trace.h"
#include "options_fixture.h"

namespace lokari {
namespace {

class DlgOptionsTraceTest : public test::OptionsFixture {
 protected:
  DlgOptionsTraceTest() {
    log.onFailure = [this](const QString& text) { notes << text; };
  }

  void openOn(StationLink& station) {
    dialog = std::make_unique<DlgOptions>(
        OptionsParts{settings, station, prompt, IniFile(iniPath()),
                     PortTable(folder.path(), folder.filePath(QStringLiteral("adapters")))},
        scale);
    dialog->show();
    dialog->activateWindow();
    QApplication::processEvents();
  }
  QCheckBox* box() const { return control<QCheckBox>(QStringLiteral("chkTrace")); }

  QStringList notes;
  Trace log{folder.path(), clock};
  StationLink ownLink{settings, clock, prompt, {line, socket, can, nullptr, &log}};
};

TEST_F(DlgOptionsTraceTest, TheBoxIsUntickedAndSaysWhatItDoesAndWhere) {
  openOn(ownLink);
  EXPECT_FALSE(box()->isChecked());
  EXPECT_EQ(box()->text(), "&Mitschreiben, was gesendet und empfangen wird");
  const QString sentence = control<QLabel>(QStringLiteral("labTrace"))->text();
  EXPECT_TRUE(sentence.contains(folder.filePath(QStringLiteral("TRACE.log"))))
      << qPrintable(sentence);
  EXPECT_EQ(box()->accessibleDescription(), sentence);
}

TEST_F(DlgOptionsTraceTest, TickedItIsWrittenIntoTheSettingsFileAndBeginsAtOnce) {
  openOn(ownLink);
  click("chkTrace");
  EXPECT_TRUE(box()->isChecked());
  EXPECT_FALSE(log.isOn());
  click("cmdOK");
  EXPECT_TRUE(iniText().endsWith("IPAddr=000.000.000.000\r\nTrace=1\r\n")) << qPrintable(iniText());
  EXPECT_TRUE(settings.trace);
  EXPECT_TRUE(log.isOn());
  openOn(ownLink);
  EXPECT_TRUE(box()->isChecked());
  click("chkTrace");
  click("cmdOK");
  EXPECT_TRUE(iniText().contains("Trace=0\r\n"));
  EXPECT_FALSE(log.isOn());
}

TEST_F(DlgOptionsTraceTest, LeftAsItIsItLeavesTheSettingsFileWithoutItsKey) {
  openOn(ownLink);
  click("cmdOK");
  EXPECT_FALSE(iniText().contains("Trace"));
}

TEST_F(DlgOptionsTraceTest, CancelForgetsIt) {
  openOn(ownLink);
  click("chkTrace");
  click("cmdCancel");
  EXPECT_FALSE(settings.trace);
  EXPECT_FALSE(log.isOn());
  EXPECT_EQ(iniText(), "");
}

TEST_F(DlgOptionsTraceTest, AnOptionThatChangesGetsAHeadOfItsOwn) {
  settings.trace = true;
  ownLink.followTrace();
  openOn(ownLink);
  click("optComPort5");
  click("cmdOK");
  QFile file(log.path());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray text = file.readAll();
  EXPECT_TRUE(text.contains("# Zentrale: TAMSMC an COM3,"));
  EXPECT_TRUE(text.contains("# Zentrale: TAMSMC an COM5,"));
}

TEST_F(DlgOptionsTraceTest, AFileThatCannotBeWrittenIsToldAndTheOptionsAreStored) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("TRACE.log")));
  openOn(ownLink);
  click("chkTrace");
  click("cmdOK");
  EXPECT_EQ(notes.size(), 1);
  EXPECT_TRUE(iniText().contains("Trace=1"));
  EXPECT_FALSE(dialog->isVisible());
}

}  // namespace
}  // namespace lokari
