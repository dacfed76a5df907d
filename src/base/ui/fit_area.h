// Contents that fill their place and scroll before they are cut.
#pragma once

#include <QScrollArea>

namespace lokari {

/// As large as its contents where there is room. A screen that is too small gets scroll bars here;
/// what must stay in view, such as a row of buttons, stands beside it.
class FitArea final : public QScrollArea {
 public:
  explicit FitArea(QWidget* parent = nullptr);

  /// Takes the contents, whose layout must be complete.
  void take(QWidget* contents);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// With the bar that a lack of height would bring: it must not make the width too small as well.
  QSize withBar(QSize size) const;
};

}  // namespace lokari
