// The function lamps of a cab: `cmdFunc_0` to `cmdFunc_28`, each with its number `labFunc_n`.
#pragma once

#include <QWidget>

#include <array>

#include "cab/cab_state.h"

class QLabel;

namespace lokari {

class PictureButton;
class Pictures;

class FunctionLamps final : public QWidget {
  Q_OBJECT

 public:
  static constexpr int kCount = CabState::kHighestFunction + 1;

  FunctionLamps(const Pictures& pictures, QWidget* parent);

  /// Lamps 0 to `highest` can be switched; the others are hidden with their numbers.
  void setHighest(int highest);
  void showOn(int n, bool on);

  PictureButton* lamp(int n) const { return lamps_[static_cast<size_t>(n)]; }

 signals:
  void pressed(int n);

 private:
  std::array<PictureButton*, kCount> lamps_{};
  std::array<QLabel*, kCount> numbers_{};
};

}  // namespace lokari
