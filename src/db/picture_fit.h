// Where a vehicle's picture lies in its frame.
#pragma once

#include <QRectF>
#include <QSizeF>

namespace lokari {

/// The picture scaled to fill the frame in one direction, its proportions kept: as wide as the
/// frame when it is the wider of the two, else as high as the frame; 1 is added to its size in each
/// axis, and it is centred. An empty picture or frame gives an empty rectangle.
QRectF fitPicture(QSizeF picture, QSizeF frame);

}  // namespace lokari
