// Windows bitmaps that keep their transparency.
#pragma once

#include <QImage>
#include <QString>

namespace lokari::tools {

/// Writes `image` as a bitmap of 32 bits a pixel with a version 4 head, whose alpha mask tells a
/// reader (QImage is one) that the fourth byte is the opacity. Qt's own writer drops it.
/// False when the file cannot be written whole.
bool writeBitmap(const QImage& image, const QString& path);

}  // namespace lokari::tools
