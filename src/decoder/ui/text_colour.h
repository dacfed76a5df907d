// The colours that tell what is known about a value.
#pragma once

#include <QColor>
#include <QWidget>

#include "decoder/bench_controls.h"

namespace lokari {

/// An invalid colour for TextColour::Normal: the system's own.
QColor colourValue(TextColour colour);

/// Colours a control's text. A disabled control keeps the system's colour, so that it looks
/// disabled.
void colourText(QWidget* control, TextColour colour);

}  // namespace lokari
