// `picContainer` with the vehicle's picture `md_pic` in it.
#pragma once

#include <QFrame>
#include <QPixmap>

class QLabel;

namespace lokari {

class PictureFrame final : public QFrame {
 public:
  explicit PictureFrame(QWidget* parent);

  /// Shows an encoded picture (BMP, JPEG, PNG); nothing for empty or broken data.
  void showPicture(const QByteArray& encoded);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fit();

  QLabel* md_pic_;
  QPixmap picture_;
};

}  // namespace lokari
