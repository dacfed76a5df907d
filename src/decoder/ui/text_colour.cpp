#include "decoder/ui/text_colour.h"

#include <QApplication>

namespace lokari {

QColor colourValue(TextColour colour) {
  switch (colour) {
    case TextColour::Blue:
      return {0, 0, 255};
    case TextColour::Red:
      return {255, 0, 0};
    case TextColour::Normal:
      break;
  }
  return {};
}

QColor groundValue(Ground ground, const QPalette& palette) {
  constexpr int kDark = 128;
  switch (ground) {
    case Ground::NotTaken:
      return palette.color(QPalette::Base).lightness() < kDark ? QColor(0x4A, 0x3B, 0x00)
                                                               : QColor(0xFF, 0xF3, 0xCD);
    case Ground::ReadOnly:
      return palette.color(QPalette::Window);
    case Ground::Plain:
      break;
  }
  return {};
}

void colourText(QWidget* control, TextColour colour, Ground ground) {
  const QColor text = colourValue(colour);
  const QColor below = groundValue(ground, QApplication::palette());
  if (!text.isValid() && !below.isValid() && !control->testAttribute(Qt::WA_SetPalette)) return;
  QPalette palette;  // inherits everything that is not set here
  const auto set = [&palette](QPalette::ColorRole role, const QColor& value) {
    if (!value.isValid()) return;
    for (const auto group : {QPalette::Active, QPalette::Inactive})
      palette.setColor(group, role, value);
  };
  for (const auto role : {QPalette::Text, QPalette::WindowText}) set(role, text);
  for (const auto role : {QPalette::Base, QPalette::Window}) set(role, below);
  control->setPalette(palette);
}

}  // namespace lokari
