// How windows follow the main window's size.
#pragma once

#include <QList>
#include <QSize>
#include <QString>
#include <QVariant>

class QWidget;

namespace lokari {

/// With `resizeMode` 1 the layouts scale with their windows, every window is opened at the main
/// window's scale, and the main window's size is kept from run to run. With 0 the layouts are
/// fixed and the factors stay 1.
///
/// Sizes are kept in a state file of their own, WINDOW.INI in the data folder, section [Size], and
/// widths of columns in section [Columns] there: the settings file belongs to the user and the
/// options dialog alone.
class WindowScale {
 public:
  /// `stateFile` is the full path of the state file; it need not exist.
  explicit WindowScale(QString stateFile) : stateFile_(std::move(stateFile)) {}

  /// Takes the main window's design size and, later, the setting. Factors are 1 after it.
  void begin(QSize designSize);
  void setResizeMode(int resizeMode) { resizeMode_ = resizeMode; }
  int resizeMode() const { return resizeMode_; }

  /// The main window has a new size: the factors follow in proportion. Nothing with `resizeMode` 0.
  void mainResized(QSize size);

  /// Scales a window that is about to be shown, within the screen it comes up on and never below
  /// its smallest size.
  void ResizeWindow(QWidget* form) const;

  /// Where a window comes up, counted from its screen's upper left corner, and how large. Both give
  /// way where the screen has no room.
  static void comeUp(QWidget* window, QPoint place, QSize size);

  /// How a window's contents follow its size: with `resizeMode` 1 they fill the window, with 0
  /// they keep their own size in its upper left corner. Called once, when the window is built.
  void arrange(QWidget* window, QWidget* contents) const;

  /// The size stored under a name, or an invalid one.
  QSize storedSize(const QString& name) const;
  /// Gives a window the size stored under its name, within its screen and never below its smallest
  /// size; one that has been placed gives way. Nothing where none is stored, and with `resizeMode`
  /// 0.
  void restoreSize(const QString& name, QWidget* window) const;
  /// Nothing with `resizeMode` 0.
  void storeSize(const QString& name, QSize size) const;

  /// The widths of a grid's columns, stored under the name of its window, or an empty list. They
  /// are the user's own choice and do not depend on `resizeMode`.
  QList<int> storedColumns(const QString& name) const;
  void storeColumns(const QString& name, const QList<int>& widths) const;

  double scaleX = 1.0;
  double scaleY = 1.0;
  double lastWidth = 0;
  double lastHeight = 0;

 private:
  /// A value of the state file; none where a pipe or a device is in its place.
  QVariant stored(const QString& key) const;
  void store(const QString& key, const QVariant& value) const;

  QString stateFile_;
  int resizeMode_ = 1;
};

}  // namespace lokari
