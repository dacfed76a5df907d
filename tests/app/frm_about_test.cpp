#include "app/ui/frm_about.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>

#include "base/ui/pictures.h"

namespace lokari {
namespace {

TEST(FrmAbout, ShowsTheTitleAndIsClosedByItsButton) {
  const Pictures pictures{QString()};
  FrmAbout about(nullptr, pictures);
  EXPECT_EQ(about.findChild<QLabel*>(QStringLiteral("labTitle"))->text(),
            QStringLiteral("Lokari V4.11"));
  about.show();
  about.findChild<QPushButton*>(QStringLiteral("butOK"))->click();
  EXPECT_FALSE(about.isVisible());
}

}  // namespace
}  // namespace lokari
