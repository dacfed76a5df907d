// The key Pause stops the layout, whichever window of the program is in front.
#pragma once

#include <QObject>

namespace lokari {

class TrackStop;

class StopKey final : public QObject {
 public:
  /// Listens to all windows of the running application. `stop` must outlive it.
  explicit StopKey(TrackStop& stop);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  TrackStop& stop_;
};

}  // namespace lokari
