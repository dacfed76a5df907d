// A page of the manual.
#pragma once

#include <QTextBrowser>

class QHelpEngineCore;

namespace lokari {

/// A browser that takes its pages from the help collection and marks what was looked for.
class HelpPage final : public QTextBrowser {
 public:
  explicit HelpPage(const QHelpEngineCore& engine, QWidget* parent = nullptr);

  QVariant loadResource(int type, const QUrl& name) override;

  /// Opens a place and marks the words of `stems` on its page; the first behind the place is in
  /// view.
  void openMarked(const QUrl& place, const QStringList& stems);
  /// Opens a page and marks the first place that has `text`.
  void openText(const QUrl& page, const QString& text);

 private:
  void mark(const QList<QTextCursor>& words);
  int positionOf(const QString& anchor) const;

  const QHelpEngineCore& engine_;
};

}  // namespace lokari
