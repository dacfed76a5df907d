// What the decoder window says about values that nobody has read, with the station in virtual time.
#include <QEnterEvent>

#include "job_fixture.h"

namespace lokari {
namespace {

class FrmDecoderKnown : public test::JobFixture {
 protected:
  FrmDecoderKnown() {
    describe("RAILCOM=J\nCV_3=Beschleunigung,0-255,5\nCV_33=Licht,0-255,1,3\n");
    settings.addressCheckNow = false;
    settings.manufacturerCheckNow = false;
    decoder.store(29, 10);
    decoder.store(33, 4);
  }

  int stored(int cv) const { return static_cast<quint8>(record.recCvValues[0][cv - 1]); }
};

TEST_F(FrmDecoderKnown, AConfigurationThatWasReadSavedAndReopenedIsWrittenAsItWas) {
  EXPECT_TRUE(edit([&] {
    click("chkRd_29");
    click("cmdDcRead");
    click("cmdOK");
  }));
  EXPECT_EQ(stored(29), 10);
  EXPECT_EQ(record.recCvMarks[0][28], '1');
  edit([&] {
    EXPECT_TRUE(button("optDcComRailComYes")->isChecked());
    line.writes.clear();
    click("chkWrt_29");
    click("cmdDcProg");
  });
  EXPECT_EQ(line.sent(), "xPTWD 29, 10\r");
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Decoderhersteller nicht gefunden!")})
      << "of OK, which finds none in the empty catalogue";
}

TEST_F(FrmDecoderKnown, AFailedReadNamesItsCvBelowTheTextAndTurnsItRed) {
  settings.continueOnError = false;
  setValue(33, 12, '1');
  decoder.present = {{1, 30}};
  confirmTheEnd();
  edit([&] {
    tabs()->setCurrentIndex(2);
    click("chkFuncRd_1");
    click("cmdDcRead");
    EXPECT_EQ(lastStatus, QStringLiteral("Kein ACK vom Decoder"));
    EXPECT_EQ(lastDetail, QStringLiteral("CV 33"));
    EXPECT_EQ(field("txtFunc_1")->text(), QStringLiteral("12"));
    EXPECT_EQ(test::textColourOf(field("txtFunc_1")), QColor(255, 0, 0));
  });
}

TEST_F(FrmDecoderKnown, OkAsksOnceWhatBecomesOfValuesThatFailedReadsTookThePlaceOf) {
  settings.continueOnError = true;
  setValue(33, 12, '1');
  decoder.present = {{1, 30}};
  EXPECT_TRUE(edit([&] {
    tabs()->setCurrentIndex(2);
    click("chkFuncRd_1");
    click("cmdDcRead");
    EXPECT_EQ(field("txtFunc_1")->text(), QStringLiteral("0"));
    click("cmdOK");
  }));
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(stored(33), 12);
  EXPECT_EQ(record.recCvMarks[0][32], '2');
}

TEST_F(FrmDecoderKnown, AWriteThatNobodyReadBackIsSaidInTheLegendAndTheToolTips) {
  edit([&] {
    EXPECT_EQ(label("lblLegend")->text(),
              QStringLiteral("Blau: gelesen oder geprüft. Rot: misslungen."));
    type(field("txtDcComAccTime"), QStringLiteral("50"));
    click("chkWrt_3");
    click("chkWrt_29");
    click("cmdDcProg");
    EXPECT_EQ(test::textColourOf(field("txtDcComAccTime")), QColor(0, 0, 255));
    EXPECT_TRUE(label("lblLegend")
                    ->text()
                    .contains(QStringLiteral("CV 3 und 29: geschrieben, nicht geprüft")));
    EXPECT_EQ(button("optDcComSteps28")->toolTip(), QStringLiteral("geschrieben, nicht geprüft"));
    QEnterEvent over({}, {}, {});
    QApplication::sendEvent(field("txtDcComAccTime"), &over);
    EXPECT_EQ(label("toolTip")->text().trimmed(), QStringLiteral("geschrieben, nicht geprüft"));
    type(field("txtDcComAccTime"), QStringLiteral("51"));
    EXPECT_FALSE(label("lblLegend")->text().contains(QStringLiteral("CV 3 und 29")));
    EXPECT_TRUE(label("lblLegend")->text().contains(QStringLiteral("(CV 29: ")));
  });
}

TEST_F(FrmDecoderKnown, TheLastJobsRemarksStandBelowTheTabs) {
  edit([&] {
    EXPECT_FALSE(label("lblReport")->isVisible());
    click("chkDcAdrWrite");
    click("cmdDcProg");
    EXPECT_TRUE(label("lblReport")->isVisible());
    EXPECT_TRUE(
        label("lblReport")
            ->text()
            .startsWith(QStringLiteral("Mit der Adresse ging auch CV 29 an den Decoder: 0")))
        << label("lblReport")->text().toStdString();
  });
  EXPECT_EQ(line.sent(), "xPTWD 1, 3\rxPTWD 29, 0\r");
}

TEST_F(FrmDecoderKnown, RailComThatNobodyClickedIsNotSentUnasked) {
  decoder.store(29, 2);
  edit([&] {
    click("chkRd_29");
    click("cmdDcRead");
    line.writes.clear();
    click("chkWrt_29");
    click("cmdDcProg");
  });
  EXPECT_EQ(prompt.shown.size(), 1);
  EXPECT_TRUE(line.writes.isEmpty());
}

}  // namespace
}  // namespace lokari
