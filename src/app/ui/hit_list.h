// What the manual's search found: a title and an excerpt for each place.
#pragma once

#include <QListWidget>

#include "app/manual_search.h"

namespace lokari {

class HitList final : public QListWidget {
 public:
  explicit HitList(QWidget* parent = nullptr);

  void show(const QList<ManualHit>& hits);

  /// Called for a hit that was clicked or chosen with Enter.
  std::function<void(const ManualHit&)> opened;

 private:
  void open(int row);

  QList<ManualHit> hits_;
};

}  // namespace lokari
