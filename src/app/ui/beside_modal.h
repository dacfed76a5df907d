// A window that can be used while a modal one is open.
#pragma once

#include <QObject>

class QWidget;

namespace lokari {

/// A modal window blocks every other one but those that stand over it. So the kept window stands
/// over the modal window in front, whichever that is; it closes nothing and nothing closes it.
class BesideModal final : public QObject {
 public:
  /// `kept` is a window of its own and must outlive this.
  explicit BesideModal(QWidget& kept);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void follow();

  QWidget& kept_;
};

}  // namespace lokari
