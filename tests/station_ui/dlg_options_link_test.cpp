// The communication test out of the options dialog.
#include <QCheckBox>
#include <QTimer>

#include "options_fixture.h"

namespace lokari {
namespace {

class DlgOptionsLinkTest : public test::OptionsFixture {
 protected:
  DlgOptionsLinkTest() : OptionsFixture(StationKind::Mx1) {}

  QDialog* dlgComm() const { return dialog->findChild<QDialog*>("dlg_comm"); }

  /// Presses Command1; looks at the result when the test has ended, and closes it.
  void test(std::function<void()> look = {}) {
    QTimer watch;
    const int users = link.commUseCount;
    watch.callOnTimeout([&, users] {
      QDialog* comm = dlgComm();
      auto* button = comm != nullptr ? comm->findChild<QPushButton*>("cmdCancel") : nullptr;
      if (button == nullptr || !button->isVisible() || link.commUseCount > users) return;
      if (button->text() != "OK") return;
      watch.stop();
      shown = comm->findChild<QLabel*>("lblCommStatus")->text();
      if (look) look();
      button->click();
    });
    watch.start(0);
    click("Command1");
  }

  QString shown;
};

TEST_F(DlgOptionsLinkTest, TestsTheDialogsChoiceAndGivesStationAndPortBack) {
  open();
  click("optComTypeTams");
  click("optComPort5");
  control<QComboBox>("lstBaudrate")->setCurrentText("9600");
  line.expect("x\xA0").answer(QByteArray::fromHex("04020104610001E24000"));
  line.expect("x\xA2").answer("\x08");
  test([&] {
    EXPECT_EQ(settings.baseUnit, StationKind::TamsMc);
    EXPECT_TRUE(dlgComm()->isModal());
    EXPECT_EQ(link.commJob, CommJob::TestComm);
  });
  EXPECT_EQ(shown, "Tams MC SPU Version 2.14a\nMC Serien-#: 0001E240\nPower On ");
  EXPECT_EQ(line.opened.comPort, 5);
  EXPECT_EQ(line.opened.baudrate, 9600);
  EXPECT_EQ(settings.baseUnit, StationKind::Mx1);
  EXPECT_EQ(settings.comPort, 3);
  EXPECT_EQ(settings.ipAddr, "000.000.000.000");
  EXPECT_EQ(settings.baudrate, 9600);
  EXPECT_TRUE(radio("optComTypeTams")->isChecked());
  EXPECT_EQ(iniText(), "");
}

TEST_F(DlgOptionsLinkTest, AUsbInterfaceTestedAsLi100LivesOnInTheRadioAndOkKeepsIt) {
  open();
  click("optComTypeLenzV2");
  line.expect(QByteArray::fromHex("212100")).answer(QByteArray::fromHex("FFFE6321360074"));
  line.expect(QByteArray::fromHex("FFFE212405")).answer(QByteArray::fromHex("FFFE62220444"));
  line.expect(QByteArray::fromHex("FFFE2181A0")).answer(QByteArray::fromHex("FFFE610160"));
  test();
  EXPECT_TRUE(radio("optComTypeLenzV36")->isChecked());
  EXPECT_FALSE(radio("optComTypeLenzV2")->isChecked());
  EXPECT_EQ(settings.baseUnit, StationKind::Mx1);
  click("cmdOK");
  EXPECT_EQ(settings.baseUnit, StationKind::LiUsb);
  EXPECT_TRUE(settings.lenzV36);
  EXPECT_TRUE(iniText().contains("BaseUnit=LIUSB\r\nLenzV36=1\r\n"));
}

TEST_F(DlgOptionsLinkTest, ALowerVersionSelectsTheOtherUsbRadio) {
  open();
  click("optComTypeLenzV36");
  line.expect(QByteArray::fromHex("FFFE212100")).answer(QByteArray::fromHex("FFFE6321300072"));
  line.expect(QByteArray::fromHex("FFFE212405")).answer(QByteArray::fromHex("FFFE62220444"));
  line.expect(QByteArray::fromHex("FFFE2181A0")).answer(QByteArray::fromHex("FFFE610160"));
  test();
  EXPECT_TRUE(radio("optComTypeLenzUSB")->isChecked());
}

TEST_F(DlgOptionsLinkTest, ACorrectionIsForgottenWithCancel) {
  open();
  click("optComTypeLenzV2");
  line.expect(QByteArray::fromHex("212100")).answer(QByteArray::fromHex("6321360074"));
  line.expect(QByteArray::fromHex("212405")).answer(QByteArray::fromHex("62220444"));
  line.expect(QByteArray::fromHex("2181A0")).answer(QByteArray::fromHex("610160"));
  test();
  EXPECT_TRUE(radio("optComTypeLenzV3")->isChecked());
  click("cmdCancel");
  EXPECT_EQ(settings.baseUnit, StationKind::Mx1);
  EXPECT_EQ(iniText(), "");
}

TEST_F(DlgOptionsLinkTest, APortThatDoesNotOpenIsExplainedInTheDialog) {
  line.failsToOpen = true;
  open();
  test();
  EXPECT_TRUE(shown.startsWith("Kann Kommunikationsschnittstelle nicht öffnen (0)!\n"));
  EXPECT_TRUE(shown.endsWith("prüfen."));
}

TEST_F(DlgOptionsLinkTest, TheDialogWaitsForATestThatStillSaysGoodbye) {
  open();
  click("optComTypeLenzV3");
  line.expect(QByteArray::fromHex("212100"));
  line.expect(QByteArray::fromHex("212100"));
  bool pressed = false;
  // The farewell is not answered either; the user ends its waiting, and nothing is repeated then.
  line.expect(QByteArray::fromHex("2181A0")).then([&] {
    dlgComm()->findChild<QPushButton*>("cmdCancel")->click();
    pressed = true;
    EXPECT_FALSE(dlgComm()->isVisible());
    EXPECT_FALSE(control<QPushButton>("Command1")->isEnabled());
    dialog->reject();
    dialog->accept();
    EXPECT_TRUE(dialog->isVisible());
  });
  click("Command1");
  EXPECT_TRUE(pressed);
  EXPECT_EQ(link.commUseCount, 0);
  EXPECT_TRUE(control<QPushButton>("Command1")->isEnabled());
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(DlgOptionsLinkTest, AnotherLineIsNotTestedWhileACabHoldsTheConfiguredOne) {
  line.expect("\r");
  EXPECT_EQ(link.initComm(true, false, false), "");
  open();
  click("optComPort5");
  click("Command1");
  EXPECT_EQ(prompt.shown,
            QStringList{"Ein Fahrpult oder Schaltpult hält die eingestellte Verbindung offen.\n"
                        "Bitte alle schließen, dann kann eine andere getestet werden!"});
  EXPECT_EQ(line.opened.comPort, 3);
  click("optComPort3");
  line.expect("Z\r").answer("Z82\r");
  test();
  EXPECT_TRUE(shown.startsWith("MX1 neue Generation"));
  EXPECT_EQ(link.commUseCount, 1);
  link.FinishComm();
}

TEST_F(DlgOptionsLinkTest, OkRefusesAnotherStationOrPortWhileACabIsOpenAndWritesNothing) {
  line.expect("\r");
  EXPECT_EQ(link.initComm(true, false, false), "");
  open();
  const QString refusal = QStringLiteral(
      "Ein Fahrpult oder Schaltpult hält die eingestellte Verbindung offen.\n"
      "Bitte alle schließen, dann kann eine andere getestet werden!");
  click("optComPort5");
  click("cmdOK");
  EXPECT_EQ(prompt.shown, QStringList{refusal});
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(settings.comPort, 3);
  click("optComPort3");
  click("optComTypeTams");
  click("cmdOK");
  EXPECT_EQ(prompt.shown, (QStringList{refusal, refusal}));
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(settings.baseUnit, StationKind::Mx1);
  EXPECT_EQ(iniText(), "");
  click("optComTypeZimo");
  click("cmdOK");
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_TRUE(iniText().contains("BaseUnit=MX1\r\n"));
}

TEST_F(DlgOptionsLinkTest, AWrongEntryIsNotTested) {
  open();
  line_("txtComTimeout")->setText("");
  click("Command1");
  EXPECT_EQ(prompt.shown.size(), 1);
  EXPECT_EQ(line.opens, 0);
}

TEST_F(DlgOptionsLinkTest, AStationThatWantsItsMakersFormGetsItOffered) {
  for (const bool agreed : {false, true}) {
    open();
    click("optComTypeTams");
    line.expect("x\xA0").answer(QByteArray::fromHex("03020104040001E24000"));
    line.expect("x\xA2").answer("\x08");
    prompt.shown.clear();
    if (agreed) prompt.answers.push_back(Answer::Yes);
    test();
    ASSERT_EQ(prompt.shown.size(), 1);
    EXPECT_TRUE(prompt.shown[0].startsWith("Mit Nachrichten nach den Unterlagen"))
        << qPrintable(prompt.shown[0]);
    EXPECT_TRUE(prompt.below.last().contains("(D - 1) x 4 + 1 bis 4"));
    EXPECT_EQ(control<QCheckBox>("chkMakerForm")->isChecked(), agreed);
    EXPECT_FALSE(settings.makerForm) << "only OK takes it";
  }
  line.expect("x\xA0").answer(QByteArray::fromHex("03020104040001E24000"));
  line.expect("x\xA2").answer("\x08");
  test([this] { EXPECT_TRUE(settings.makerForm) << "the next test speaks so"; });
  EXPECT_EQ(prompt.shown.size(), 1) << "nothing is offered that is ticked";
}

TEST_F(DlgOptionsLinkTest, WithoutTheChosenPortTabReachesThoseThatAreThere) {
  plugIn("usb-Adapter-port0");
  settings.comPort = 3;
  open();
  ASSERT_FALSE(port(3)->isVisible());
  ASSERT_TRUE(port(1)->isVisible());
  EXPECT_TRUE(port(1)->focusPolicy() & Qt::TabFocus);
}

}  // namespace
}  // namespace lokari
