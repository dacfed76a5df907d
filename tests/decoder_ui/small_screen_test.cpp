// The decoder window and its dialogs on small screens, and with the Tab key alone.
#include "support/small_screen.h"

#include "decoder/ui/dlg_bit.h"
#include "decoder/ui/dlg_calc.h"
#include "decoder/ui/dlg_copy.h"
#include "decoder/ui/dlg_func_map.h"
#include "decoder/ui/dlg_manuf_sel.h"
#include "decoder/ui/dlg_spd_tab.h"
#include "support/tab_walk.h"
#include "window_fixture.h"

namespace lokari {
namespace {

class DecoderOnSmallScreen : public test::WindowFixture {
 protected:
  DecoderOnSmallScreen() {
    describe(
        "RAILCOM=J\nDETECTPULSE=J\nMANBIT=J\nPROGMAIN=J\nFUNCMAP=J\nFUNCTIONS=12\n"
        "CV_2=Anfahrspannung,0-255,1\nCV_3=Beschleunigung,0-255,5\nCV_4=Bremszeit,0-255,5\n"
        "CV_5=Hoechstgeschwindigkeit,0-255,5\nCV_6=Mitte,0-255,5\nCV_9=Periode,0-255,5,2\n" +
        cvLines(100, 24, 3) + cvLines(130, 20, 4));
  }
  /// Everything that is shown below the pages in the worst case.
  void saySomething() {
    bench.controls.setCaption(
        QStringLiteral("lblReport"),
        QStringLiteral("Mit der Adresse ging auch CV 29 an den Decoder: 6, vorher 34. Der Decoder "
                       "hat CV 29 nicht bestätigt."));
  }
};

TEST_F(DecoderOnSmallScreen, EveryPageFitsWithItsButtonsInView) {
  setValue(29, 16);
  edit([&] {
    saySomething();
    for (int tab = 0; tab < tabs()->count(); ++tab) {
      if (!tabs()->isTabVisible(tab)) continue;
      tabs()->setCurrentIndex(tab);
      SCOPED_TRACE(tabs()->tabText(tab).toStdString());
      test::expectFits(&window, {"cmdOK", "cmdCancel", "cmdDcRead", "cmdDcProg", "cmdDcReadMain",
                                 "cmdDcProgMain", "cmdReadAll", "cmdWriteNone", "chkDcAdrChk",
                                 "lblReport", "cbDcManuf", "cbDcVer", "cmdReadGen", "cmdCopyGen",
                                 "cmdReadDrv", "cmdCopyDrv", "cmdReadFunc_1", "cmdFuncMap"});
    }
  });
}

TEST_F(DecoderOnSmallScreen, AFieldBelowTheEdgeComesIntoViewWithTheFocus) {
  edit([&] {
    tabs()->setCurrentIndex(2);
    window.resize(test::kSmallScreens[1]);
    QCoreApplication::processEvents();
    ASSERT_TRUE(field("txtFunc_10")->visibleRegion().isEmpty()) << "there is too little room";
    field("txtFunc_1")->setFocus();
    while (window.focusWidget() != field("txtFunc_10")) {
      QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
      QCoreApplication::processEvents();
    }
    test::expectWholeInView(&window, QStringLiteral("txtFunc_10"));
  });
}

TEST_F(DecoderOnSmallScreen, TheTabKeyGoesThroughEveryPageAsTheEyeDoes) {
  setValue(29, 16);
  edit([&] {
    for (int tab = 0; tab < tabs()->count(); ++tab) {
      if (!tabs()->isTabVisible(tab)) continue;
      tabs()->setCurrentIndex(tab);
      SCOPED_TRACE(tabs()->tabText(tab).toStdString());
      list("cbDcManuf")->setFocus();
      const QStringList stops = test::walkWithTab(&window);
      EXPECT_TRUE(stops.contains(QStringLiteral("cmdOK")));
      EXPECT_TRUE(stops.contains(QStringLiteral("cmdDcProg")));
      EXPECT_LT(stops.indexOf(QStringLiteral("cmdDcRead")), stops.indexOf(QStringLiteral("cmdOK")));
    }
  });
}

// ---- Dialogs ----------------------------------------------------------------------------------

void expectGood(QDialog& dialog, std::initializer_list<const char*> inView) {
  SCOPED_TRACE(dialog.objectName().toStdString());
  dialog.show();
  QApplication::setActiveWindow(&dialog);
  QApplication::processEvents();
  test::expectFits(&dialog, inView);
  dialog.resize(dialog.sizeHint());
  QWidget* first = dialog.focusWidget();
  if (first == nullptr) dialog.setFocus();
  test::walkWithTab(&dialog);
}

TEST_F(DecoderOnSmallScreen, TheBitDialogWithManyGroupsFits) {
  QString bits;
  for (int bit = 0; bit < 8; ++bit)
    bits += QStringLiteral("1,Ein recht langer Titel %1,Aus,Ein,Noch eins,Und noch eins|").arg(bit);
  DlgBit many(0, bits, QStringLiteral("Detaileingabe CV 29"));
  expectGood(many, {"cmdOK", "cmdCancel"});
  DlgBit few(5, QStringLiteral("1,Licht,Aus,Ein|3,Zahl|4,Modus,A,B,C"), QStringLiteral("CV 30"));
  expectGood(few, {"cmdOK", "cmdCancel"});
}

TEST_F(DecoderOnSmallScreen, TheOtherDialogsFit) {
  edit([&] {
    DlgFuncMap funcMap(funcMapRows(bench.description, bench.sets.cvValues), &window);
    expectGood(funcMap, {"cmdOK", "cmdCancel"});
    DlgCopy copy(QStringLiteral("CVs von WWWWWWWW nach MMMMMMMM kopieren?"), &window);
    expectGood(copy, {"OKButton", "SelectedButton", "CancelButton"});
    SpeedTableList list(bench, prompt);
    DlgSpdTab speeds(list, &window);
    expectGood(speeds, {"cmdOK", "cmdCancel"});
    DlgCalc calc(QStringLiteral("7"), prompt, &window);
    expectGood(calc, {"butOK", "butCancel"});
    DlgManufSel makers({{145, QStringLiteral("Zimo")}}, &window);
    expectGood(makers, {});
  });
}

}  // namespace
}  // namespace lokari
