// `dlg_wait`: says that a cab or a panel waits for the station, and lets the user give up. Other
// windows go on meanwhile.
#pragma once

#include <QPointer>
#include <QWidget>

#include <functional>

#include "app/opening.h"

class QPushButton;

namespace lokari {

class DlgWait final : public QWidget {
 public:
  DlgWait(const QString& text, std::function<void()> giveUp, QWidget* parent);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void cancel();

  std::function<void()> giveUp_;
};

/// Shows a `dlg_wait` over `parent`.
std::unique_ptr<WaitWindow> makeWaitWindow(const QString& text, std::function<void()> giveUp,
                                           QWidget* parent);

}  // namespace lokari
