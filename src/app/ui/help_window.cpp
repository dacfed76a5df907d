#include "app/ui/help_window.h"

#include <QFileInfo>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpSearchEngine>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace lokari {

/// A browser that takes its pages from the help collection.
class HelpWindow::Page final : public QTextBrowser {
 public:
  Page(const QHelpEngine& engine, QWidget* parent) : QTextBrowser(parent), engine_(engine) {}

  QVariant loadResource(int type, const QUrl& name) override {
    const QUrl url = source().isEmpty() ? name : source().resolved(name);
    if (url.scheme() == QStringLiteral("qthelp")) return engine_.fileData(url);
    return QTextBrowser::loadResource(type, name);
  }

 private:
  const QHelpEngine& engine_;
};

namespace {

constexpr int kContentsTab = 0;
constexpr int kSearchTab = 1;
const QUrl kFirstPage(QStringLiteral("qthelp://org.lokari.handbuch/handbuch/index.html"));

}  // namespace

HelpWindow::HelpWindow(const QString& helpFile)
    : engine_(std::make_unique<QHelpEngine>(helpFile)),
      tabs_(new QTabWidget),
      page_(new Page(*engine_, this)),
      query_(new QLineEdit),
      found_(new QLabel),
      results_(new QListWidget) {
  setObjectName(QStringLiteral("frmHelp"));
  setWindowTitle(QStringLiteral("Lokari - Hilfe"));
  new QShortcut(Qt::Key_Escape, this, this, &QWidget::close);
  engine_->setReadOnly(false);
  engine_->setupData();

  page_->setObjectName(QStringLiteral("txtPage"));
  page_->setAccessibleName(QStringLiteral("Hilfeseite"));
  query_->setObjectName(QStringLiteral("txtQuery"));
  query_->setAccessibleName(QStringLiteral("Suchbegriff"));
  query_->setPlaceholderText(QStringLiteral("Suchbegriff"));
  found_->setObjectName(QStringLiteral("labFound"));
  results_->setObjectName(QStringLiteral("lstResults"));
  results_->setAccessibleName(QStringLiteral("Fundstellen"));
  auto* start = new QPushButton(QStringLiteral("&Suchen"));
  start->setObjectName(QStringLiteral("cmdSearch"));

  auto* searchPage = new QWidget;
  auto* line = new QHBoxLayout;
  line->addWidget(query_);
  line->addWidget(start);
  auto* rows = new QVBoxLayout(searchPage);
  rows->addLayout(line);
  rows->addWidget(found_);
  rows->addWidget(results_);

  auto* contents = engine_->contentWidget();
  contents->setObjectName(QStringLiteral("lstContents"));
  contents->setAccessibleName(QStringLiteral("Inhalt"));
  tabs_->setObjectName(QStringLiteral("tabHelp"));
  tabs_->addTab(contents, QStringLiteral("&Inhalt"));
  tabs_->addTab(searchPage, QStringLiteral("S&uche"));

  auto* halves = new QSplitter;
  halves->addWidget(tabs_);
  halves->addWidget(page_);
  halves->setStretchFactor(1, 1);
  halves->setSizes({280, 600});
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(halves);
  resize(900, 620);

  connect(contents, &QHelpContentWidget::linkActivated, page_,
          [this](const QUrl& url) { page_->setSource(url); });
  connect(contents, &QHelpContentWidget::clicked, contents,
          [contents](const QModelIndex& index) { emit contents->activated(index); });
  connect(engine_->contentModel(), &QHelpContentModel::contentsCreated, contents,
          [contents] { contents->expandAll(); });
  connect(start, &QPushButton::clicked, this, [this] { search(); });
  connect(query_, &QLineEdit::returnPressed, this, [this] { search(); });
  connect(results_, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) {
    page_->setSource(item->data(Qt::UserRole).toUrl());
  });
  QHelpSearchEngine* finder = engine_->searchEngine();
  connect(finder, &QHelpSearchEngine::searchingFinished, this, [this] { listResults(); });
  connect(finder, &QHelpSearchEngine::indexingFinished, this, [this] {
    indexed_ = true;
    if (searchWaits_) search();
  });
  finder->reindexDocumentation();
  page_->setSource(kFirstPage);
}

HelpWindow::~HelpWindow() = default;

QString HelpWindow::fault() const {
  if (!engine_->registeredDocumentations().isEmpty()) return {};
  return QStringLiteral("Hilfe-Datei kann nicht gelesen werden!");
}

void HelpWindow::bringUp(int tab) {
  tabs_->setCurrentIndex(tab);
  show();
  raise();
  activateWindow();
}

void HelpWindow::showContents() {
  bringUp(kContentsTab);
}

void HelpWindow::showSearch() {
  bringUp(kSearchTab);
  query_->setFocus();
  query_->selectAll();
}

void HelpWindow::search() {
  searchWaits_ = !indexed_;
  if (searchWaits_) {
    found_->setText(QStringLiteral("Das Verzeichnis wird angelegt ..."));
    return;
  }
  engine_->searchEngine()->search(query_->text());
}

void HelpWindow::listResults() {
  results_->clear();
  const QHelpSearchEngine* finder = engine_->searchEngine();
  const auto hits = finder->searchResults(0, finder->searchResultCount());
  for (const QHelpSearchResult& hit : hits) {
    auto* item = new QListWidgetItem(hit.title(), results_);
    item->setData(Qt::UserRole, hit.url());
  }
  found_->setText(hits.isEmpty() ? QStringLiteral("Nichts gefunden")
                                 : QStringLiteral("%1 Fundstellen").arg(hits.size()));
}

}  // namespace lokari
