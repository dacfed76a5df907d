// The options on small screens, and with the Tab key alone.
#include "options_fixture.h"
#include "support/small_screen.h"
#include "support/tab_walk.h"

namespace lokari {
namespace {

class DlgOptionsScreen : public test::OptionsFixture {};

TEST_F(DlgOptionsScreen, FitsWithItsButtonsInView) {
  for (const StationKind kind : {StationKind::TamsMc, StationKind::Z21Ip}) {
    settings.baseUnit = kind;
    open();
    test::expectFits(dialog.get(), {"cmdOK", "cmdCancel"});
  }
}

TEST_F(DlgOptionsScreen, TheTabKeyGoesThroughItAsTheEyeDoes) {
  for (const StationKind kind : {StationKind::TamsMc, StationKind::Z21Ip}) {
    settings.baseUnit = kind;
    open();
    dialog->resize(test::kSmallScreens[1]);
    const QStringList stops = test::walkWithTab(dialog.get());
    for (const char* name : {"txtComTimeout", "Command1", "txtDbPath", "cmdOK", "cmdCancel"})
      EXPECT_TRUE(stops.contains(QString::fromLatin1(name))) << name;
  }
}

TEST_F(DlgOptionsScreen, TheWordForGivingUpIsAbbruch) {
  open();
  EXPECT_EQ(control<QPushButton>(QStringLiteral("cmdCancel"))->text(), "Abbruch");
}

}  // namespace
}  // namespace lokari
