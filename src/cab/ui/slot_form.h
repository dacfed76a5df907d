// What the windows of cabs and panels have in common: where they stand, how they come and go.
#pragma once

#include <QWidget>

#include <memory>

#include "cab/slot_window.h"

namespace lokari {

class NoticeLine;
class SlotUnit;
class WindowScale;

/// A modeless window that keeps its unit for as long as it lives. Closing it by its frame ends the
/// unit; so nothing of the window goes before the unit says so.
class SlotForm : public QWidget, public SlotWindow {
 public:
  /// `scale` must outlive the window.
  SlotForm(std::shared_ptr<SlotUnit> unit, const WindowScale& scale);
  ~SlotForm() override;

  void setTag(int slot) override;
  void moveTo(QPoint place) override;
  QPointF mainScale() const override;
  void ResizeWindow() override;
  void bringUp() override;
  void putAway() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  /// What has to be on the screen whatever place the window has; the rest may hang over its edge.
  virtual QWidget* keptInView() const = 0;

  const WindowScale& scale() const { return scale_; }
  /// The parent of all controls.
  QWidget* contents() const { return contents_; }
  /// What the unit has to tell of the line; goes below all controls.
  NoticeLine* makeNotice();

 private:
  void bringIntoView();

  std::shared_ptr<SlotUnit> unit_;
  const WindowScale& scale_;
  QWidget* contents_;
};

}  // namespace lokari
