// The program's button and lamp pictures.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace lokari {

/// Pictures beside the program's data files. A picture "name.bmp" may have a twin "name@2x.bmp" of
/// double size, which is used on screens of double resolution; without it the small one is
/// scaled. A missing or broken picture is an empty one, and the button shows its text alone.
class Pictures {
 public:
  /// `basePath` is the folder of the program's data files.
  explicit Pictures(QString basePath) : basePath_(std::move(basePath)) {}

  /// The picture in the resolution of a screen with that pixel ratio. Names are found in any case.
  QPixmap pixmap(const QString& name, double pixelRatio) const;

  /// The picture in both resolutions, for buttons.
  QIcon icon(const QString& name) const;

 private:
  QPixmap load(const QString& name, double pixelRatio) const;

  QString basePath_;
};

}  // namespace lokari
