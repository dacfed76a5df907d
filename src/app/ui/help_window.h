// The manual: contents, full-text search and the pages.
#pragma once

#include <QWidget>

#include <memory>

class QHelpEngine;
class QLabel;
class QLineEdit;
class QListWidget;
class QTabWidget;
class QTextBrowser;

namespace lokari {

class HelpWindow final : public QWidget {
 public:
  /// `helpFile` is a help collection (.qhc). The search index is made beside it at the first use.
  explicit HelpWindow(const QString& helpFile);
  ~HelpWindow() override;

  /// Empty when the collection could be read, else a German message.
  QString fault() const;

  void showContents();
  void showSearch();

 private:
  class Page;

  void search();
  void listResults();
  void bringUp(int tab);

  std::unique_ptr<QHelpEngine> engine_;
  QTabWidget* tabs_;
  QTextBrowser* page_;
  QLineEdit* query_;
  QLabel* found_;
  QListWidget* results_;
  bool indexed_ = false;
  bool searchWaits_ = false;  ///< asked for before the index was ready
};

}  // namespace lokari
