// A button that is nothing but its picture: lamps, arrows, the stop.
#pragma once

#include <QAbstractButton>
#include <QPixmap>

#include "base/ui/pictures.h"

namespace lokari {

/// Whoever owns the button says which picture stands for which state. The picture fills the button
/// with its proportions kept, up to the resolution that the file has. A button without a picture
/// file shows its text.
class PictureButton final : public QAbstractButton {
 public:
  /// `accessibleName` is the tool tip as well.
  PictureButton(const Pictures& pictures, const QString& name, const QString& accessibleName,
                QWidget* parent);

  /// File names of the pictures, such as "go_n.bmp", at rest and while it is held down; without
  /// the second one the first stands for both.
  void showPicture(const QString& resting, const QString& pressed = {});
  /// The file whose picture is on show.
  const QString& picture() const { return face().file; }

  /// Lets the button tell assistive programs that it is on or off; a click alone changes nothing.
  void showOn(bool on);

  /// A button that acts when it goes down must not act again while the mouse, still held, leaves it
  /// and comes back.
  void setActsOnPress() { actsOnPress_ = true; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  /// Enter presses it.
  void keyPressEvent(QKeyEvent* event) override;
  void nextCheckState() override {}

 private:
  /// One picture in both resolutions.
  struct Face {
    QString file;
    QPixmap small;
    QPixmap large;
  };

  Face load(const QString& file) const;
  const Face& face() const { return isDown() && !pressed_.file.isEmpty() ? pressed_ : resting_; }
  QSize naturalSize() const;
  QRectF pictureRect() const;

  Pictures pictures_;
  Face resting_;
  Face pressed_;
  bool actsOnPress_ = false;
};

}  // namespace lokari
