// The window of a cab or a panel, as its fleet sees it. The fleet decides where it stands and when
// it comes and goes; the window does the rest with its own logic object.
#pragma once

#include <QPoint>
#include <QPointF>

namespace lokari {

class SlotWindow {
 public:
  virtual ~SlotWindow() = default;

  /// `Tag`: the number of its slot.
  virtual void setTag(int slot) = 0;
  /// Where the first window of its kind stands, in pixels.
  virtual QPoint designPlace() const = 0;
  virtual void moveTo(QPoint place) = 0;
  /// The factors of the main window, (1, 1) while it has its design size.
  virtual QPointF mainScale() const = 0;
  /// Scales the window as the main window is scaled. Once, ahead of its first showing.
  virtual void ResizeWindow() = 0;
  /// Not modally; a minimised window comes back to normal, and every one comes to the front.
  virtual void bringUp() = 0;
  /// Disappears from the screen at once. It may still stand on the stack.
  virtual void putAway() = 0;
};

}  // namespace lokari
