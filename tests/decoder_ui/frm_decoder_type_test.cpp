// Another decoder type in the open window: what ends with the type before, and what reaches the
// decoder afterwards.
#include <QCheckBox>
#include <QHeaderView>

#include "choice_fixture.h"
#include "decoder/ui/speed_curve.h"

namespace lokari {
namespace {

class FrmDecoderType : public test::ChoiceFixture {
 protected:
  FrmDecoderType() {
    settings.addressCheckNow = false;
    settings.manufacturerCheckNow = false;
    describe("CV_33=Standard,0-255,9,3\n");
    describeType("Adler/Eins.dec",
                 "CV_2=Anfahren,0-100,1\nCV_3=Beschleunigung,0-255,2\nCV_5=Hoechst,0-255,3\n"
                 "CV_6=Mitte,0-200,4\nCV_9=Periode,0-99,5,2\nCV_50=Anderes,0-255,1,5\n" +
                     cvLines(100, 3, 3));
    describeType("Adler/Zwei.dec", "CV_3=Anlaufzeit,0-63,7\n" + cvLines(110, 4, 4));
    decoder.setAddress(3);
    decoder.store(8, 97);
  }

  void selectRows(int first, int last) {
    const auto cell = [this](int row) {
      return grid()->visualRect(grid()->model()->index(row - 1, 0)).center();
    };
    QTest::mouseClick(grid()->viewport(), Qt::LeftButton, Qt::NoModifier, cell(first));
    QTest::mouseClick(grid()->viewport(), Qt::LeftButton, Qt::ShiftModifier, cell(last));
  }

  sim::Decoder& decoder = layout.add({}).decoder;
};

// ---- Ticks ------------------------------------------------------------------------------------

TEST_F(FrmDecoderType, OnlyWhatIsTickedUnderTheNewTypeIsWritten) {
  edit([&] {
    click("cmdWriteAll");
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    click("chkWrt_3");
    click("cmdDcProg");
  });
  EXPECT_EQ(sent(), QStringList({"xPTWD 3, 7"}));
}

TEST_F(FrmDecoderType, OnlyWhatIsTickedUnderTheNewTypeIsRead) {
  edit([&] {
    click("cmdReadAll");
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    click("chkRd_3");
    click("cmdDcRead");
  });
  EXPECT_EQ(sent(), QStringList({"xPTRB 3"}));
}

TEST_F(FrmDecoderType, AnotherMakerClearsEveryTickToo) {
  edit([&] {
    click("cmdWriteAll");
    choose("cbDcManuf", QStringLiteral("Kessler"));
    click("cmdDcProg");
    EXPECT_EQ(prompt.shown, QStringList({"Keine Daten zum Schreiben ausgewählt!"}));
  });
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_F(FrmDecoderType, EveryBoxIsEmptyAfterwards) {
  edit([&] {
    click("cmdReadAll");
    click("cmdWriteAll");
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    const QSet<QString> checks = {QStringLiteral("chkDcAdrChk"), QStringLiteral("chkDcManufChk")};
    for (const auto* box : window.findChildren<QCheckBox*>()) {
      if (checks.contains(box->objectName())) continue;
      EXPECT_FALSE(box->isChecked()) << box->objectName().toStdString();
    }
    for (int i = 1; i <= 4864; ++i) {
      const CvDescriptor& entry = bench.description.info(CvIndex(i));
      ASSERT_FALSE(entry.cvRead || entry.cvWrite) << i;
    }
  });
}

TEST_F(FrmDecoderType, TheMakerFoundInAReadReadsNothingThatWasTickedBefore) {
  settings.manufacturerCheckNow = true;
  decoder.store(8, 60);
  prompt.answers = {Answer::Ok};
  edit([&] {
    click("cmdReadAll");
    click("chkDcAdrRead");  // off again: the address is read before the maker
    click("cmdDcRead");
    EXPECT_EQ(list("cbDcManuf")->currentText(), QStringLiteral("Kessler"));
    EXPECT_FALSE(button("chkRd_Tbl")->isChecked());
    EXPECT_FALSE(button("chkRd_29")->isChecked());
  });
  EXPECT_EQ(sent(), QStringList({"xPTRB 8", "xPTRB 7"}));
}

// ---- The grid ---------------------------------------------------------------------------------

TEST_F(FrmDecoderType, AHeadOfTheGridWorksOnNoRowsSelectedBefore) {
  edit([&] {
    tabs()->setCurrentIndex(kGridTab);
    QCoreApplication::processEvents();
    selectRows(2, 3);
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    tabs()->setCurrentIndex(kGridTab);
    QCoreApplication::processEvents();
    clickHead(GridColumn::Write);
    EXPECT_TRUE(bench.description.info(CvIndex(3)).cvWrite) << "without a selection it is all rows";
    EXPECT_TRUE(bench.description.info(CvIndex(113)).cvWrite);
  });
}

// ---- What is shown ----------------------------------------------------------------------------

TEST_F(FrmDecoderType, CurveLabelsAndFieldsShowNothingOfTheTypeBefore) {
  for (const int cv : {2, 5, 6, 9}) setValue(cv, 60 + cv, '1');
  edit([&] {
    EXPECT_EQ(label("labDcDrvMaxSpeed")->text(), QStringLiteral("Hoechst (0-255):"));
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    const struct {
      const char* label;
      const char* standard;
      const char* field;
    } lines[] = {{"labDcDrvMinVolt", "Minimalspannung:", "txtDcDrvMinVolt"},
                 {"labDcDrvMaxSpeed", "Maximalgeschwindigkeit:", "txtDcDrvMaxSpeed"},
                 {"labDcDrvMedSpeed", "Mittengeschwindigkeit:", "txtDcDrvMedSpeed"},
                 {"labDcDrvUser", "Motoransteuerung:", "txtDcDrvUser"}};
    for (const auto& each : lines) {
      EXPECT_EQ(label(each.label)->text().toStdString(), each.standard);
      EXPECT_EQ(field(each.field)->text(), QStringLiteral("0")) << each.field;
      EXPECT_NE(test::textColourOf(field(each.field)), QColor(0, 0, 255)) << each.field;
    }
    EXPECT_EQ(label("labDcComAccTime")->text(), QStringLiteral("Anlaufzeit (0-63):"));
    const SpeedTable& table = control<SpeedCurve>(QStringLiteral("picSpeedTable"))->table();
    ASSERT_EQ(table.view(), SpeedView::ThreePoints);
    for (const SpeedPoint& point : table.points()) {
      EXPECT_EQ(point.speed, 0.0);
      EXPECT_EQ(point.colour, TextColour::Normal);
    }
    EXPECT_EQ(table.pointText(3), QStringLiteral("Höchstwert (CV 5): fehlt diesem Decoder"));
    for (const int cv : {2, 5, 6, 9}) EXPECT_EQ(value(cv), 60 + cv) << "stored bytes stay";
  });
}

TEST_F(FrmDecoderType, TheVersionIsNotThatOfTheDecoderBefore) {
  setValue(7, 32);
  setValue(8, 145);
  setValue(65, 10);
  setValue(250, 211);
  edit([&] {
    EXPECT_EQ(field("txtDcComVersion")->text(), QStringLiteral("32.10"));
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    EXPECT_EQ(field("txtDcComVersion")->text(), QStringLiteral("0"));
    EXPECT_EQ(value(65), 10);
  });
}

}  // namespace
}  // namespace lokari
