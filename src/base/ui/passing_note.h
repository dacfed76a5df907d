// A note that nobody has to answer.
#pragma once

#include <QString>

class QWidget;

namespace lokari {

/// Shows the note beside the work as soon as the events run next. It holds nothing up: it is asked
/// for in the middle of other work, waits for nobody, and goes with its button or with `parent`.
void showPassingNote(const QString& text, QWidget* parent);

}  // namespace lokari
