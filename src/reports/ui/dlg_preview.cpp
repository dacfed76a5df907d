#include "reports/ui/dlg_preview.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "base/progress.h"
#include "base/ui/window_scale.h"
#include "reports/print_document.h"
#include "reports/ui/page_pictures.h"
#include "reports/ui/page_view.h"

namespace lokari {
namespace {

constexpr QSize kDesignSize(760, 680);
/// Shorter work shows no progress. In milliseconds.
constexpr int kPatience = 500;

/// Comes up by itself when the work is long, and goes with it.
class PreviewProgress final : public Progress {
 public:
  explicit PreviewProgress(QWidget* parent)
      : dialog_(QStringLiteral("Die Seiten werden aufgebaut..."), QStringLiteral("Abbruch"), 0, 100,
                parent) {
    dialog_.setWindowTitle(QStringLiteral("Vorschau"));
    dialog_.setWindowModality(Qt::ApplicationModal);
    dialog_.setMinimumDuration(kPatience);
  }

  void setStatus(const QString& text) override { dialog_.setLabelText(text); }
  void setPercent(double percent) override {
    // At 100 it would hide itself, and come up anew with the next words.
    dialog_.setValue(qBound(0, static_cast<int>(percent), 99));
  }
  bool cancelled() override { return dialog_.wasCanceled(); }

 private:
  QProgressDialog dialog_;
};

}  // namespace

DlgPreview::DlgPreview(PrintDocument& document, const QPageLayout& layout, const WindowScale& scale,
                       QWidget* parent)
    : QDialog(parent), document_(document), paper_(std::make_unique<PagePictures>(layout)) {
  setObjectName(QStringLiteral("dlgPreview"));
  setWindowTitle(QStringLiteral("Vorschau: %1").arg(document.title()));
  setModal(true);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* contents = new QWidget(this);
  auto* rows = new QVBoxLayout(contents);
  rows->setContentsMargins(12, 12, 12, 12);
  rows->setSpacing(10);
  pages_ = new PageView(contents);
  pages_->setObjectName(QStringLiteral("picPages"));
  pages_->setAccessibleName(QStringLiteral("Seiten"));
  addTools(rows);
  rows->addWidget(pages_, 1);
  scale.arrange(this, contents);
  resize(kDesignSize);
}

DlgPreview::~DlgPreview() = default;

QPushButton* DlgPreview::addButton(QBoxLayout* row, const char16_t* name, const QString& text,
                                   const QString& tip) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::fromUtf16(name));
  button->setAccessibleName(tip);
  button->setToolTip(tip);
  button->setAutoDefault(false);
  row->addWidget(button);
  return button;
}

void DlgPreview::addTools(QBoxLayout* rows) {
  auto* row = new QHBoxLayout;
  rows->addLayout(row);
  cmdPrevious_ = addButton(row, u"cmdPrevious", QStringLiteral("‹"),
                           QStringLiteral("Vorige Seite (Bild auf)"));
  labPage_ = new QLabel(this);
  labPage_->setObjectName(QStringLiteral("labPage"));
  labPage_->setAlignment(Qt::AlignCenter);
  labPage_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("Seite 9999 von 9999")));
  row->addWidget(labPage_);
  cmdNext_ =
      addButton(row, u"cmdNext", QStringLiteral("›"), QStringLiteral("Nächste Seite (Bild ab)"));
  row->addSpacing(16);
  auto* smaller = addButton(row, u"cmdSmaller", QStringLiteral("−"), QStringLiteral("Kleiner"));
  auto* larger = addButton(row, u"cmdLarger", QStringLiteral("+"), QStringLiteral("Größer"));
  for (QPushButton* narrow : {cmdPrevious_, cmdNext_, smaller, larger}) {
    narrow->setFixedWidth(narrow->sizeHint().height() + 8);
  }
  auto* page = addButton(row, u"cmdWholePage", QStringLiteral("&Ganze Seite"),
                         QStringLiteral("Die ganze Seite zeigen"));
  auto* width = addButton(row, u"cmdPageWidth", QStringLiteral("Seiten&breite"),
                          QStringLiteral("Die Seite so breit wie das Fenster zeigen"));
  row->addStretch();
  auto* print =
      addButton(row, u"cmdPrint", QStringLiteral("&Drucken"), QStringLiteral("Die Seiten drucken"));
  print->setDefault(true);
  auto* close = addButton(row, u"cmdClose", QStringLiteral("Schließen"),
                          QStringLiteral("Zurück, ohne zu drucken"));
  connect(cmdPrevious_, &QPushButton::clicked, this, [this] { turn(-1); });
  connect(cmdNext_, &QPushButton::clicked, this, [this] { turn(1); });
  connect(new QShortcut(QKeySequence(Qt::Key_PageUp), this), &QShortcut::activated, this,
          [this] { turn(-1); });
  connect(new QShortcut(QKeySequence(Qt::Key_PageDown), this), &QShortcut::activated, this,
          [this] { turn(1); });
  connect(smaller, &QPushButton::clicked, pages_, [this] { pages_->zoomOut(); });
  connect(larger, &QPushButton::clicked, pages_, [this] { pages_->zoomIn(); });
  connect(page, &QPushButton::clicked, pages_, &PageView::fitInView);
  connect(width, &QPushButton::clicked, pages_, &PageView::fitToWidth);
  connect(print, &QPushButton::clicked, this, &DlgPreview::accept);
  connect(close, &QPushButton::clicked, this, &DlgPreview::reject);
}

void DlgPreview::load() {
  paper_->clear();
  {
    PreviewProgress progress(this);
    whole_ = document_.paint(*paper_, progress);
  }
  paper_->finish();
  page_ = 1;
  showPage();
}

void DlgPreview::turn(int pages) {
  page_ = qBound(1, page_ + pages, static_cast<int>(paper_->count()));
  showPage();
}

void DlgPreview::showPage() {
  const auto count = static_cast<int>(paper_->count());
  pages_->setPage(paper_->page(page_ - 1), paper_->pageSize());
  labPage_->setText(QStringLiteral("Seite %1 von %2%3")
                        .arg(page_)
                        .arg(count)
                        .arg(whole_ ? QString() : QStringLiteral(" (abgebrochen)")));
  cmdPrevious_->setEnabled(page_ > 1);
  cmdNext_->setEnabled(page_ < count);
}

}  // namespace lokari
