// Makes the bitmaps of an installation from drawings, at build time.
//
//   render_pictures --list LIST SVG_FOLDER TARGET_FOLDER
//     each line of LIST (name, drawing, width, height, state; tab-separated) becomes name.bmp and
//     its twin name@2x.bmp of double size
//   render_pictures DRAWING WIDTH HEIGHT PICTURE
//     one opaque picture in the format of its extension

#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QStringList>
#include <QSvgRenderer>

#include <cstdio>

#include "bitmap_file.h"

namespace lokari::tools {
namespace {

bool complain(const QString& text) {
  std::fprintf(stderr, "render_pictures: %s\n", qPrintable(text));
  return false;
}

/// A pressed button is its resting drawing, one pixel lower and to the right, in shadow.
void press(QImage& image, int scale) {
  const QImage resting = image;
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.drawImage(scale, scale, resting);
  painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
  painter.fillRect(image.rect(), QColor(0, 0, 0, 56));
}

QImage render(QSvgRenderer& drawing, QSize size, const QColor& ground) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(ground);
  QPainter painter(&image);
  drawing.render(&painter, QRectF(image.rect()));
  return image;
}

bool makeBitmaps(const QStringList& row, const QString& from, const QString& to) {
  const QString file = from + u'/' + row[1] + QStringLiteral(".svg");
  QSvgRenderer drawing(file);
  if (!drawing.isValid()) return complain(file + QStringLiteral(" is no drawing"));
  const QSize size(row[2].toInt(), row[3].toInt());
  if (size.isEmpty()) return complain(row[0] + QStringLiteral(" has no size"));
  for (const int scale : {1, 2}) {
    QImage image = render(drawing, size * scale, Qt::transparent);
    if (row[4] == u"pressed") press(image, scale);
    const QString twin = scale == 2 ? QStringLiteral("@2x") : QString();
    const QString target = to + u'/' + row[0] + twin + QStringLiteral(".bmp");
    if (!writeBitmap(image, target)) return complain(target + QStringLiteral(" cannot be written"));
  }
  return true;
}

bool makeList(const QString& list, const QString& from, const QString& to) {
  QFile file(list);
  if (!file.open(QIODevice::ReadOnly)) return complain(list + QStringLiteral(" cannot be read"));
  for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
    if (line.startsWith(u'#')) continue;
    const QStringList row = line.split(u'\t');
    if (row.size() != 5) return complain(QStringLiteral("five columns wanted: ") + line);
    if (!makeBitmaps(row, from, to)) return false;
  }
  return true;
}

bool makePicture(const QString& from, QSize size, const QString& to) {
  QSvgRenderer drawing(from);
  if (!drawing.isValid()) return complain(from + QStringLiteral(" is no drawing"));
  if (size.isEmpty()) return complain(to + QStringLiteral(" has no size"));
  QImageWriter writer(to);
  writer.setQuality(90);
  const QImage image = render(drawing, size, Qt::white).convertToFormat(QImage::Format_RGB32);
  return writer.write(image) || complain(to + u' ' + writer.errorString());
}

}  // namespace
}  // namespace lokari::tools

int main(int argc, char** argv) {
  using namespace lokari::tools;
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  bool done = false;
  if (arguments.size() == 4 && arguments[0] == u"--list") {
    done = makeList(arguments[1], arguments[2], arguments[3]);
  } else if (arguments.size() == 4) {
    done =
        makePicture(arguments[0], QSize(arguments[1].toInt(), arguments[2].toInt()), arguments[3]);
  } else {
    complain(QStringLiteral("wrong call"));
  }
  return done ? 0 : 1;
}
