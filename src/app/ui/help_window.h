// The manual: contents, full-text search and the pages.
#pragma once

#include <QPointer>
#include <QUrl>
#include <QWidget>

#include <memory>

#include "app/manual_search.h"

class QHelpEngine;
class QLabel;
class QLineEdit;
class QTabWidget;

namespace lokari {

class BesideModal;
class HelpPage;
class HitList;
struct HelpQuestion;

/// Stays usable while a modal window is open, and stands beside the window that was in front when
/// it came up.
class HelpWindow final : public QWidget {
 public:
  /// `helpFile` is a help collection (.qhc).
  explicit HelpWindow(const QString& helpFile);
  ~HelpWindow() override;

  /// Empty when the collection could be read, else a German message.
  QString fault() const;

  void showContents();
  void showSearch();
  /// Opens the page, or the explanation of the message where the manual has one.
  void answer(const HelpQuestion& question);

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void layOut(QWidget* contents);
  void connectContents();
  void search();
  void openHit(const ManualHit& hit);
  void openPlace(const QString& place);
  /// Opens the row of the messages' page that quotes `message`; false when there is none.
  bool openMessage(const QString& message);
  void showChapter(const QUrl& page);
  void bringUp(int tab);
  void standBeside(const QWidget& window);
  QByteArray file(const QString& name) const;
  const ManualSearch& manual();

  std::unique_ptr<QHelpEngine> engine_;
  std::unique_ptr<BesideModal> besideModal_;
  std::unique_ptr<ManualSearch> manual_;  ///< made by the first search
  QTabWidget* tabs_;
  HelpPage* page_;
  QLineEdit* query_;
  QLabel* found_;
  HitList* results_;
  QPointer<QWidget> asker_;  ///< the window that was in front
};

}  // namespace lokari
