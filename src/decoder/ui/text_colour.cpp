#include "decoder/ui/text_colour.h"

#include <QPalette>

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

void colourText(QWidget* control, TextColour colour) {
  const QColor value = colourValue(colour);
  if (!value.isValid() && !control->testAttribute(Qt::WA_SetPalette)) return;
  QPalette palette;  // inherits everything that is not set here
  if (value.isValid()) {
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
      palette.setColor(group, QPalette::Text, value);
      palette.setColor(group, QPalette::WindowText, value);
    }
  }
  control->setPalette(palette);
}

}  // namespace lokari
