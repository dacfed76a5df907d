#include "app/ui/help_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "app/help_places.h"
#include "app/manual_messages.h"
#include "app/ui/beside_modal.h"
#include "app/ui/help_page.h"
#include "app/ui/hit_list.h"
#include "base/desktop.h"
#include "base/ui/qt_prompt.h"

namespace lokari {
namespace {

constexpr int kContentsTab = 0;
constexpr int kSearchTab = 1;
constexpr QSize kSize(900, 620);
constexpr int kTabsWidth = 300;
/// Beside another window it may be this narrow.
constexpr int kNarrowest = 600;
const QString kBook = QStringLiteral("org.lokari.handbuch");

QUrl urlOf(const QString& place) {
  return QUrl(QStringLiteral("qthelp://%1/handbuch/%2").arg(kBook, place));
}

}  // namespace

HelpWindow::HelpWindow(const QString& helpFile)
    : engine_(std::make_unique<QHelpEngine>(helpFile)),
      besideModal_(std::make_unique<BesideModal>(*this)),
      tabs_(new QTabWidget),
      page_(new HelpPage(*engine_, this)),
      query_(new QLineEdit),
      found_(new QLabel),
      results_(new HitList) {
  setObjectName(QStringLiteral("frmHelp"));
  setWindowTitle(QStringLiteral("Lokari - Hilfe"));
  setProperty(kOnlyBeside, true);
  new QShortcut(Qt::Key_Escape, this, this, &QWidget::close);
  new QShortcut(QKeySequence::Back, this, page_, &QTextBrowser::backward);
  new QShortcut(QKeySequence::Find, this, this, &HelpWindow::showSearch);
  engine_->setupData();
  layOut(engine_->contentWidget());
  connectContents();
  query_->installEventFilter(this);
  connect(query_, &QLineEdit::returnPressed, this, &HelpWindow::search);
  results_->opened = [this](const ManualHit& hit) { openHit(hit); };
  openPlace(QStringLiteral("index.html"));
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::layOut(QWidget* contents) {
  page_->setObjectName(QStringLiteral("txtPage"));
  page_->setAccessibleName(QStringLiteral("Hilfeseite"));
  query_->setObjectName(QStringLiteral("txtQuery"));
  query_->setAccessibleName(QStringLiteral("Suchbegriff"));
  query_->setPlaceholderText(QStringLiteral("Suchbegriff"));
  query_->setClearButtonEnabled(true);
  found_->setObjectName(QStringLiteral("labFound"));
  found_->setWordWrap(true);
  found_->setText(QStringLiteral("Eingabe sucht; Pfeiltasten und Eingabe öffnen eine Fundstelle."));
  results_->setObjectName(QStringLiteral("lstResults"));
  results_->setAccessibleName(QStringLiteral("Fundstellen"));
  auto* start = new QPushButton(QStringLiteral("&Suchen"));
  start->setObjectName(QStringLiteral("cmdSearch"));
  connect(start, &QPushButton::clicked, this, &HelpWindow::search);

  auto* searchPage = new QWidget;
  auto* line = new QHBoxLayout;
  line->addWidget(query_);
  line->addWidget(start);
  auto* rows = new QVBoxLayout(searchPage);
  rows->addLayout(line);
  rows->addWidget(found_);
  rows->addWidget(results_, 1);

  contents->setObjectName(QStringLiteral("lstContents"));
  contents->setAccessibleName(QStringLiteral("Inhalt"));
  tabs_->setObjectName(QStringLiteral("tabHelp"));
  tabs_->addTab(contents, QStringLiteral("&Inhalt"));
  tabs_->addTab(searchPage, QStringLiteral("S&uche"));

  auto* halves = new QSplitter;
  halves->addWidget(tabs_);
  halves->addWidget(page_);
  halves->setStretchFactor(1, 1);
  halves->setSizes({kTabsWidth, kSize.width() - kTabsWidth});
  auto* whole = new QVBoxLayout(this);
  whole->addWidget(halves);
  resize(kSize);
}

void HelpWindow::connectContents() {
  auto* contents = engine_->contentWidget();
  connect(contents, &QHelpContentWidget::linkActivated, page_,
          [this](const QUrl& url) { page_->setSource(url); });
  connect(contents, &QHelpContentWidget::clicked, contents,
          [contents](const QModelIndex& index) { emit contents->activated(index); });
  connect(engine_->contentModel(), &QHelpContentModel::contentsCreated, this, [this, contents] {
    contents->expandAll();
    showChapter(page_->source());
  });
  connect(page_, &QTextBrowser::sourceChanged, this, &HelpWindow::showChapter);
}

/// The contents stand at the page that is open.
void HelpWindow::showChapter(const QUrl& page) {
  auto* contents = engine_->contentWidget();
  const QModelIndex chapter = contents->indexOf(page.adjusted(QUrl::RemoveFragment));
  if (chapter.isValid()) contents->setCurrentIndex(chapter);
}

QString HelpWindow::fault() const {
  if (!engine_->registeredDocumentations().isEmpty()) return {};
  return QStringLiteral("Hilfe-Datei kann nicht gelesen werden!");
}

void HelpWindow::bringUp(int tab) {
  tabs_->setCurrentIndex(tab);
  QWidget* front = QApplication::activeModalWidget();
  if (front == nullptr) front = QApplication::activeWindow();
  if (front != nullptr && front != this) {
    asker_ = front;
    if (!isVisible()) standBeside(*front);
  }
  if (isMinimized()) showNormal();
  show();
  raise();
  activateWindow();
}

/// Both are to be seen at once where the screen is wide enough.
void HelpWindow::standBeside(const QWidget& window) {
  const QRect screen = window.screen()->availableGeometry();
  const QRect other = window.frameGeometry();
  // Our own frame, which is not known yet, will be like the other window's.
  const QSize frame = other.size() - window.geometry().size();
  const int left = other.left() - screen.left();
  const int right = screen.right() - other.right();
  const QSize most = kSize.boundedTo(screen.size() - frame);
  const int room = std::max(left, right) - frame.width();
  const QSize size(std::clamp(room, std::min(kNarrowest, most.width()), most.width()),
                   most.height());
  const QSize whole = size + frame;
  const int x = right >= left ? std::min(other.right() + 1, screen.right() + 1 - whole.width())
                              : std::max(other.left() - whole.width(), screen.left());
  const int y = std::clamp(other.top(), screen.top(), screen.bottom() + 1 - whole.height());
  resize(size);
  move(x, y);
}

void HelpWindow::closeEvent(QCloseEvent* event) {
  QWidget::closeEvent(event);
  // A modal window may have come up since.
  QWidget* front = QApplication::activeModalWidget();
  if (front == nullptr) front = asker_;
  if (front != nullptr && front->isVisible()) front->activateWindow();
}

void HelpWindow::showContents() {
  bringUp(kContentsTab);
}

void HelpWindow::showSearch() {
  bringUp(kSearchTab);
  query_->setFocus();
  query_->selectAll();
}

void HelpWindow::answer(const HelpQuestion& question) {
  if (question.message.isEmpty() || !openMessage(question.message)) {
    openPlace(question.page.isEmpty() ? QStringLiteral("index.html") : question.page);
  }
  bringUp(kContentsTab);
  page_->setFocus();
}

void HelpWindow::openPlace(const QString& place) {
  page_->setSource(urlOf(place));
}

bool HelpWindow::openMessage(const QString& message) {
  const QString page = messagesPage();
  const QString quoted = quotedAs(quotedMessages(QString::fromUtf8(file(page))), message);
  if (!quoted.isEmpty()) page_->openText(urlOf(page), quoted);
  return !quoted.isEmpty();
}

void HelpWindow::openHit(const ManualHit& hit) {
  page_->openMarked(urlOf(hit.place), hit.stems);
}

void HelpWindow::search() {
  const QList<ManualHit> hits = manual().find(query_->text());
  results_->show(hits);
  found_->setText(hits.isEmpty()     ? QStringLiteral("Nichts gefunden")
                  : hits.size() == 1 ? QStringLiteral("1 Fundstelle")
                                     : QStringLiteral("%1 Fundstellen").arg(hits.size()));
  if (!hits.isEmpty()) results_->setFocus();
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == query_ && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down && results_->count() > 0) {
    results_->setFocus();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

QByteArray HelpWindow::file(const QString& name) const {
  return engine_->fileData(urlOf(name));
}

const ManualSearch& HelpWindow::manual() {
  if (manual_ == nullptr) {
    QList<ManualPage> pages;
    for (const QUrl& url : engine_->files(kBook, QString(), QStringLiteral("html"))) {
      pages.append({url.fileName(), QString::fromUtf8(engine_->fileData(url))});
    }
    manual_ = std::make_unique<ManualSearch>(
        pages, QString::fromUtf8(file(QStringLiteral("suchworte.txt"))));
  }
  return *manual_;
}

}  // namespace lokari
