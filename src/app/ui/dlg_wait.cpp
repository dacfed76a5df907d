#include "app/ui/dlg_wait.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace lokari {
namespace {

constexpr int kLetters = 44;

/// The window goes from the event loop: its own button may stand on the stack.
class Shown final : public WaitWindow {
 public:
  explicit Shown(DlgWait* window) : window_(window) {}
  ~Shown() override {
    if (!window_) return;
    window_->hide();
    window_->deleteLater();
  }
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;

 private:
  QPointer<DlgWait> window_;
};

}  // namespace

DlgWait::DlgWait(const QString& text, std::function<void()> giveUp, QWidget* parent)
    : QWidget(parent, Qt::Dialog), giveUp_(std::move(giveUp)) {
  setObjectName(QStringLiteral("dlg_wait"));
  setWindowTitle(QStringLiteral("Verbindung"));
  auto* lblWait = new QLabel(text, this);
  lblWait->setObjectName(QStringLiteral("lblWait"));
  lblWait->setTextFormat(Qt::PlainText);
  lblWait->setWordWrap(true);
  lblWait->setMinimumWidth(fontMetrics().averageCharWidth() * kLetters);
  // Nobody knows how long: the bar only moves.
  auto* panWait = new QProgressBar(this);
  panWait->setObjectName(QStringLiteral("panWait"));
  panWait->setAccessibleName(QStringLiteral("Warten"));
  panWait->setRange(0, 0);
  panWait->setTextVisible(false);
  auto* cmdCancel = new QPushButton(QStringLiteral("Abbruch"), this);
  cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
  cmdCancel->setAccessibleName(QStringLiteral("Nicht weiter warten"));
  connect(cmdCancel, &QPushButton::clicked, this, [this] { cancel(); });
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(16, 16, 16, 16);
  rows->setSpacing(12);
  rows->addWidget(lblWait);
  rows->addWidget(panWait);
  rows->addWidget(cmdCancel, 0, Qt::AlignHCenter);
  cmdCancel->setFocus();
}

void DlgWait::cancel() {
  if (const auto act = std::exchange(giveUp_, nullptr)) act();
}

void DlgWait::closeEvent(QCloseEvent* event) {
  event->ignore();
  cancel();
}

void DlgWait::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Enter:
    case Qt::Key_Return:
      return cancel();
    default:
      QWidget::keyPressEvent(event);
  }
}

std::unique_ptr<WaitWindow> makeWaitWindow(const QString& text, std::function<void()> giveUp,
                                           QWidget* parent) {
  auto* window = new DlgWait(text, std::move(giveUp), parent);
  window->adjustSize();
  window->move(parent->mapToGlobal(parent->rect().center()) - window->rect().center());
  window->show();
  return std::make_unique<Shown>(window);
}

}  // namespace lokari
