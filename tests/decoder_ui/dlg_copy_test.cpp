// Copying CVs in the decoder window: from the first set, and onto other vehicles.
#include "decoder/ui/dlg_copy.h"

#include <QProgressBar>
#include <QPushButton>
#include <QSqlQuery>

#include "base/ini_file.h"
#include "db/record_form.h"
#include "db/reference_lists.h"
#include "dialog_script.h"
#include "support/ini_text.h"
#include "support/recording_desktop.h"
#include "support/test_database.h"
#include "window_fixture.h"

namespace lokari {
namespace {

using test::in;
using test::inDialog;

class DlgCopyTest : public test::WindowFixture {
 protected:
  DlgCopyTest() {
    describe("SPEEDTABLE=N\nCV_30=a,0-255,0,3\nCV_31=b,0-255,0,3\n");
    setValue(30, 130, '1');
    setValue(31, 131, '1');
    setValue(30, 30, '2', 1);
    record.recSetName = QStringLiteral("Set 2");
  }

  void answer(const char* with) {
    inDialog("dlgCopy", [with](QDialog& dlgCopy) {
      QStringList texts;
      for (const QLabel* label : dlgCopy.findChildren<QLabel*>()) texts << label->text();
      EXPECT_EQ(texts.first(), "CVs von Set 1 nach Set 2 kopieren?");
      in<QPushButton>(dlgCopy, with)->click();
    });
    button("cmdCopy")->click();
  }
};

TEST_F(DlgCopyTest, OkButtonCopiesAll) {
  edit([&] {
    answer("OKButton");
    EXPECT_EQ(value(30), 130);
    EXPECT_EQ(value(31), 131);
  });
}

TEST_F(DlgCopyTest, SelectedButtonCopiesWhatIsMarkedForWriting) {
  edit([&] {
    tabs()->setCurrentIndex(2);
    button("chkFuncWrt_2")->click();
    answer("SelectedButton");
    EXPECT_EQ(value(30), 30);
    EXPECT_EQ(value(31), 131);
    EXPECT_EQ(field("txtFunc_2")->text(), "131");
  });
}

TEST_F(DlgCopyTest, CancelButtonAndEscapeCopyNothing) {
  edit([&] {
    answer("CancelButton");
    inDialog("dlgCopy", [](QDialog& dlgCopy) { QTest::keyClick(&dlgCopy, Qt::Key_Escape); });
    button("cmdCopy")->click();
    EXPECT_EQ(value(30), 30);
    EXPECT_EQ(value(31), 0);
  });
}

TEST_F(DlgCopyTest, IsDisabledInTheFirstSet) {
  record.recSetName = QStringLiteral("Set 1");
  edit([&] { EXPECT_FALSE(button("cmdCopy")->isEnabled()); });
}

/// A decoder window above a form, as the program opens it.
class CopyToVehicles : public test::WindowFixture {
 protected:
  explicit CopyToVehicles(int vehicles = 3) {
    describe("SPEEDTABLE=N\nCV_30=a,0-255,0,3\nCV_31=b,0-255,0,3\n");
    setValue(30, 130);
    base_.open().transaction([&] {
      for (int i = 1; i <= vehicles; ++i)
        base_.addVehicle(i, QStringLiteral("A"), QStringLiteral("x"));
    });
    RecordSet records;
    records.open(base_.open(), QString::fromUtf16(kDefaultQuery));
    form.bind(base_.open(), std::move(records));
  }

  void editAbove(const std::function<void()>& script) {
    test::ActivationHook hook([&] {
      script();
      if (above.isVisible()) above.reject();
    });
    above.installEventFilter(&hook);
    above.edit(record, QStringLiteral("3"));
  }

  QAbstractButton* aboves(const char* name) { return in<QAbstractButton>(above, name); }
  int changed() {
    int count = 0;
    base_.open().read(QStringLiteral("SELECT DC_CV FROM LOCO_DAT"), {}, [&](const QSqlQuery& row) {
      const QByteArray values = row.value(0).toByteArray();
      if (values.size() == kCvArraySize && static_cast<quint8>(values[29]) == 130) ++count;
    });
    return count;
  }

  test::TestDatabase base_;
  test::RecordingDesktop desktop;
  test::IniText iniText{"[LOKARI]\r\n"};
  IniFile ini{iniText.path()};
  RecordForm form{{prompt, desktop, ini, base.path()}};
  DecoderBench full{
      {settings, clock, prompt, link, catalogue, base.path(), QStringList(256), &form}};
  FrmDecoder above{full, link, clock, Pictures(base.path()), scale};
};

TEST_F(CopyToVehicles, TheTabsButtonCopiesItsMarkedCvs) {
  editAbove([&] {
    in<QTabWidget>(above, "ssDecoder")->setCurrentIndex(2);
    EXPECT_TRUE(aboves("cmdCopyGen")->isEnabled());
    aboves("chkFuncWrt_1")->click();
    prompt.answers = {Answer::Ok};
    aboves("cmdCopyFunc_1")->click();
    EXPECT_EQ(prompt.shown, QStringList({"1 CV-Wert(e) auf andere Fahrzeuge kopieren?",
                                         "1 CV-Wert(e) auf 3 Fahrzeug(e) kopiert."}));
    EXPECT_EQ(changed(), 3);
  });
}

class CopyToManyVehicles : public CopyToVehicles {
 protected:
  CopyToManyVehicles() : CopyToVehicles(150) {}
};

TEST_F(CopyToManyVehicles, ShowsItsProgressAndCloses) {
  editAbove([&] {
    in<QTabWidget>(above, "ssDecoder")->setCurrentIndex(2);
    aboves("chkFuncWrt_1")->click();
    prompt.answers = {Answer::Ok};
    aboves("cmdCopyFunc_1")->click();
    EXPECT_EQ(changed(), 150);
    EXPECT_EQ(prompt.shown.last(), "1 CV-Wert(e) auf 150 Fahrzeug(e) kopiert.");
    EXPECT_EQ(QApplication::activeModalWidget(), &above);
  });
}

TEST_F(CopyToManyVehicles, AbbruchTakesEverythingBack) {
  editAbove([&] {
    in<QTabWidget>(above, "ssDecoder")->setCurrentIndex(2);
    aboves("chkFuncWrt_1")->click();
    prompt.answers = {Answer::Ok};
    // The work lets events run between its reports; the click comes with the first of them.
    const auto alarm = clock.after(0, [this] {
      auto* dlg_comm = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_EQ(dlg_comm->objectName(), "dlg_comm");
      EXPECT_EQ(in<QLabel>(*dlg_comm, "lblCommStatus")->text(),
                QStringLiteral("Kopiere CV-Werte auf andere Fahrzeuge ..."));
      in<QPushButton>(*dlg_comm, "cmdCancel")->click();
    });
    aboves("cmdCopyFunc_1")->click();
    EXPECT_EQ(changed(), 0);
    EXPECT_EQ(prompt.shown.last(),
              QStringLiteral("Kopieren abgebrochen, kein Fahrzeug wurde geändert."));
    EXPECT_FALSE(link.cancelRequested);
  });
}

}  // namespace
}  // namespace lokari
