// `dlgPreview`: pages on the screen.
#include "reports/ui/dlg_preview.h"

#include <QProgressDialog>

#include "print_fixture.h"
#include "reports/ui/page_view.h"

namespace lokari {
namespace {

/// A document whose user loses patience after the first of three pages.
class Endless final : public PrintDocument {
 public:
  QString title() const override { return QStringLiteral("Fahrzeugliste"); }
  bool paint(QPagedPaintDevice& paper, Progress& progress) override {
    QPainter painter(&paper);
    for (int page = 1; page <= 3; ++page) {
      if (progress.cancelled()) return false;
      if (page > 1) paper.newPage();
      progress.setPercent(page * 30);
      for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QProgressDialog*>(window)) dialog->cancel();
      }
    }
    return true;
  }
};

class DlgPreviewTest : public ::testing::Test {
 protected:
  void open(int pages) {
    document = std::make_unique<test::OneLine>(QStringLiteral("Text"), pages);
    preview = std::make_unique<DlgPreview>(*document, printLayout(QPageSize(QPageSize::A4)), scale,
                                           nullptr);
    preview->load();
    preview->show();
    QApplication::processEvents();
  }
  QString page() const { return preview->findChild<QLabel*>(QStringLiteral("labPage"))->text(); }
  QPushButton* button(const char* name) const {
    return preview->findChild<QPushButton*>(QString::fromUtf8(name));
  }

  WindowScale scale{QDir::tempPath() + QStringLiteral("/gibt-es-nicht/WINDOW.INI")};
  std::unique_ptr<test::OneLine> document;
  std::unique_ptr<DlgPreview> preview;
};

TEST_F(DlgPreviewTest, TellsWhatItShows) {
  open(1);
  EXPECT_EQ(preview->windowTitle(), QStringLiteral("Vorschau: Fahrzeugliste"));
  EXPECT_EQ(page(), QStringLiteral("Seite 1 von 1"));
  EXPECT_FALSE(button("cmdPrevious")->isEnabled());
  EXPECT_FALSE(button("cmdNext")->isEnabled());
}

TEST_F(DlgPreviewTest, TurnsPages) {
  open(3);
  button("cmdNext")->click();
  EXPECT_EQ(page(), QStringLiteral("Seite 2 von 3"));
  QTest::keyClick(preview.get(), Qt::Key_PageDown);
  EXPECT_EQ(page(), QStringLiteral("Seite 3 von 3"));
  EXPECT_FALSE(button("cmdNext")->isEnabled());
  QTest::keyClick(preview.get(), Qt::Key_PageDown);
  EXPECT_EQ(page(), QStringLiteral("Seite 3 von 3"));
  QTest::keyClick(preview.get(), Qt::Key_PageUp);
  button("cmdPrevious")->click();
  EXPECT_EQ(page(), QStringLiteral("Seite 1 von 3"));
}

TEST_F(DlgPreviewTest, CancelledWorkShowsThePagesSoFar) {
  Endless endless;
  DlgPreview cancelled(endless, printLayout(QPageSize(QPageSize::A4)), scale, nullptr);
  cancelled.load();
  EXPECT_EQ(cancelled.findChild<QLabel*>(QStringLiteral("labPage"))->text(),
            QStringLiteral("Seite 1 von 1 (abgebrochen)"));
}

TEST_F(DlgPreviewTest, Zooms) {
  open(1);
  const auto* pages = preview->findChild<PageView*>(QStringLiteral("picPages"));
  const double whole = pages->zoomFactor();
  button("cmdPageWidth")->click();
  EXPECT_GT(pages->zoomFactor(), whole);
  button("cmdWholePage")->click();
  EXPECT_DOUBLE_EQ(pages->zoomFactor(), whole);
  button("cmdLarger")->click();
  EXPECT_GT(pages->zoomFactor(), whole);
  button("cmdSmaller")->click();
  EXPECT_NEAR(pages->zoomFactor(), whole, whole / 100);
}

TEST_F(DlgPreviewTest, ShowsWhatIsPaintedOnThePage) {
  open(2);
  const auto darkest = [this] {
    const QImage shown = preview->findChild<PageView*>()->grab().toImage().convertToFormat(
        QImage::Format_Grayscale8);
    int dark = 255;
    for (int y = 0; y < shown.height() / 4; ++y) {
      for (int x = shown.width() / 3; x < shown.width() * 2 / 3; ++x) {
        dark = std::min(dark, qGray(shown.pixel(x, y)));
      }
    }
    return dark;
  };
  EXPECT_LT(darkest(), 160) << "the line of text";
  button("cmdNext")->click();
  EXPECT_LT(darkest(), 160) << "the second page has one, too";
}

TEST_F(DlgPreviewTest, EveryControlIsNamedAndReached) {
  open(2);
  for (const char* name : {"cmdPrevious", "cmdNext", "cmdSmaller", "cmdLarger", "cmdWholePage",
                           "cmdPageWidth", "cmdPrint", "cmdClose"}) {
    ASSERT_NE(button(name), nullptr) << name;
    EXPECT_FALSE(button(name)->accessibleName().isEmpty()) << name;
    EXPECT_TRUE(button(name)->focusPolicy() & Qt::TabFocus) << name;
  }
}

}  // namespace
}  // namespace lokari
