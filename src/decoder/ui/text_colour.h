// The colours that tell what is known about a value, and the grounds that tell what can be done
// with it. They stand here and nowhere else.
#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

#include "decoder/bench_controls.h"

namespace lokari {

/// An invalid colour for TextColour::Normal: the system's own.
QColor colourValue(TextColour colour);

/// Plain is the system's own; NotTaken lies below a text that is not the value; ReadOnly below a
/// value that cannot be edited.
enum class Ground { Plain, NotTaken, ReadOnly };

/// An invalid colour for Ground::Plain.
QColor groundValue(Ground ground, const QPalette& palette);

/// Colours a control's text and what it stands on. A disabled control keeps the system's colours,
/// so that it looks disabled.
void colourText(QWidget* control, TextColour colour, Ground ground = Ground::Plain);

/// How much of a tick is seen that no job acts upon.
inline constexpr double kIdleOpacity = 0.4;

}  // namespace lokari
