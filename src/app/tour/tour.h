// Drives the real windows like a person: each step waits until the window it needs is there, acts
// on a control by its name, and says what it did.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <functional>
#include <vector>

class QWidget;

namespace lokari {

class Tour final : public QObject {
 public:
  /// Pictures go into `pictures`, which is made when it is missing.
  explicit Tour(QString pictures);

  /// `ready` is asked over and over until it is true; then `act` runs, once. It may open a modal
  /// window: the steps go on inside it.
  void step(const QString& title, std::function<bool()> ready, std::function<void()> act);

  /// Runs the steps in their order. 0 when each came out, 1 after one that failed or was not ready
  /// in time.
  int run();

  /// The step in hand has failed: the tour ends.
  void fail(const QString& why);

  /// Keeps a picture of a window under a number of its own and this name.
  void picture(QWidget* window, const QString& name);

 private:
  struct Step {
    QString title;
    std::function<bool()> ready;
    std::function<void()> act;
  };

  void tickLater();
  void tick();
  /// Sees to it that the window in front has the keyboard; false when it has not yet.
  bool inFront();
  void finish(int status);

  QString pictures_;
  std::vector<Step> steps_;
  size_t next_ = 0;
  size_t current_ = 0;
  int pictureNumber_ = 0;
  bool failing_ = false;
  bool ended_ = false;
  QElapsedTimer waiting_;
};

/// The visible control of that name, in the window that has the focus of the user if it stands
/// there; null when there is none.
QWidget* shownControl(const QString& name);

/// The text of a label, field or button by its name; empty when it is not on show.
QString shownText(const QString& name);

/// Acts on a control like a mouse or a keyboard does. False when it is not on show or disabled.
bool click(const QString& name);
bool type(const QString& name, const QString& text);

}  // namespace lokari
