#include "bitmap_file.h"

#include <QByteArray>
#include <QSaveFile>

#include <cstdint>

namespace lokari::tools {
namespace {

constexpr std::uint32_t kFileHead = 14;
constexpr std::uint32_t kInfoHead = 108;  // version 4
constexpr std::uint32_t kBitFields = 3;
constexpr std::uint32_t kSrgb = 0x73524742;

void put16(QByteArray& out, std::uint32_t value) {
  out.append(static_cast<char>(value & 0xFF));
  out.append(static_cast<char>(value >> 8 & 0xFF));
}

void put32(QByteArray& out, std::uint32_t value) {
  put16(out, value & 0xFFFF);
  put16(out, value >> 16);
}

}  // namespace

bool writeBitmap(const QImage& image, const QString& path) {
  const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
  const auto width = static_cast<std::uint32_t>(pixels.width());
  const auto height = static_cast<std::uint32_t>(pixels.height());
  const std::uint32_t size = width * height * 4;

  QByteArray out;
  out.append("BM");
  put32(out, kFileHead + kInfoHead + size);
  put32(out, 0);
  put32(out, kFileHead + kInfoHead);

  put32(out, kInfoHead);
  put32(out, width);
  put32(out, height);  // positive: the lowest row comes first
  put16(out, 1);
  put16(out, 32);
  put32(out, kBitFields);
  put32(out, size);
  put32(out, 3780);  // pixels a metre: 96 dpi
  put32(out, 3780);
  put32(out, 0);
  put32(out, 0);
  put32(out, 0x00FF0000);
  put32(out, 0x0000FF00);
  put32(out, 0x000000FF);
  put32(out, 0xFF000000);
  put32(out, kSrgb);
  out.append(36 + 12, '\0');  // end points and gamma: unused with sRGB

  for (int y = pixels.height() - 1; y >= 0; --y) {
    const auto* row = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
    for (int x = 0; x < pixels.width(); ++x) put32(out, row[x]);
  }

  QSaveFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(out) == out.size() && file.commit();
}

}  // namespace lokari::tools
