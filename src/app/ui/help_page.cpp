#include "app/ui/help_page.h"

#include <QHelpEngineCore>
#include <QTextBlock>

#include "app/manual_search.h"

namespace lokari {
namespace {

// The same on every palette: black letters on a marker's yellow.
const QColor kMarker(255, 236, 130);

}  // namespace

HelpPage::HelpPage(const QHelpEngineCore& engine, QWidget* parent)
    : QTextBrowser(parent), engine_(engine) {
  // Marks belong to the page that was looked for.
  connect(this, &QTextBrowser::sourceChanged, this, [this] { setExtraSelections({}); });
}

QVariant HelpPage::loadResource(int type, const QUrl& name) {
  const QUrl url = source().isEmpty() ? name : source().resolved(name);
  if (url.scheme() == QStringLiteral("qthelp")) return engine_.fileData(url);
  return QTextBrowser::loadResource(type, name);
}

void HelpPage::openMarked(const QUrl& place, const QStringList& stems) {
  setSource(place);
  QList<QTextCursor> words;
  const int from = positionOf(place.fragment());
  int first = -1;
  // The plain text has a letter for each position of the document.
  for (const WordAt& word : foundWords(toPlainText(), stems)) {
    QTextCursor cursor(document());
    cursor.setPosition(word.start);
    cursor.setPosition(word.start + word.length, QTextCursor::KeepAnchor);
    words << cursor;
    if (first < 0 && word.start >= from) first = word.start;
  }
  mark(words);
  if (first < 0) return;
  QTextCursor cursor(document());
  cursor.setPosition(first);
  setTextCursor(cursor);
  ensureCursorVisible();
}

void HelpPage::openText(const QUrl& page, const QString& text) {
  setSource(page);
  const QTextCursor found = document()->find(text);
  if (found.isNull()) return;
  mark({found});
  QTextCursor start(found);
  start.setPosition(found.selectionStart());
  // At the end first, so that what follows the text is in view as well.
  moveCursor(QTextCursor::End);
  setTextCursor(start);
  ensureCursorVisible();
}

void HelpPage::mark(const QList<QTextCursor>& words) {
  QList<ExtraSelection> marks;
  for (const QTextCursor& word : words) {
    ExtraSelection each;
    each.cursor = word;
    each.format.setBackground(kMarker);
    each.format.setForeground(Qt::black);
    marks << each;
  }
  setExtraSelections(marks);
}

int HelpPage::positionOf(const QString& anchor) const {
  if (anchor.isEmpty()) return 0;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    for (auto each = block.begin(); !each.atEnd(); ++each) {
      if (each.fragment().charFormat().anchorNames().contains(anchor)) {
        return each.fragment().position();
      }
    }
  }
  return 0;
}

}  // namespace lokari
