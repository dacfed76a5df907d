#include "base/ui/window_scale.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QScreen>
#include <QSettings>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace lokari {
namespace {

/// In pixels: wider than any screen, narrow enough to be painted.
constexpr int kWidestColumn = 10'000;

QString sizeKey(const QString& name) {
  return QStringLiteral("Size/") + name;
}

/// About what the frame of a window takes at its sides and above, which nobody knows before it is
/// shown.
constexpr QSize kFrame(8, 32);

/// What a window may take of its screen.
QSize roomFor(const QWidget* window) {
  return window->screen()->availableSize() - kFrame;
}

void keepOnScreen(QWidget* window) {
  const QRect room = window->screen()->availableGeometry();
  const QSize taken = window->size() + kFrame;
  window->move(std::max(room.left(), std::min(window->x(), room.right() + 1 - taken.width())),
               std::max(room.top(), std::min(window->y(), room.bottom() + 1 - taken.height())));
}

QString columnsKey(const QString& name) {
  return QStringLiteral("Columns/") + name;
}

}  // namespace

void WindowScale::begin(QSize designSize) {
  scaleX = 1.0;
  scaleY = 1.0;
  lastWidth = designSize.width();
  lastHeight = designSize.height();
}

void WindowScale::mainResized(QSize size) {
  if (resizeMode_ == 0 || size.isEmpty() || lastWidth <= 0 || lastHeight <= 0) return;
  scaleX = size.width() * scaleX / lastWidth;
  lastWidth = size.width();
  scaleY = size.height() * scaleY / lastHeight;
  lastHeight = size.height();
}

void WindowScale::ResizeWindow(QWidget* form) const {
  form->ensurePolished();
  const QSize natural =
      form->testAttribute(Qt::WA_Resized) ? form->size() : form->sizeHint().expandedTo({1, 1});
  const QSize scaled(static_cast<int>(std::lround(natural.width() * scaleX)),
                     static_cast<int>(std::lround(natural.height() * scaleY)));
  form->resize(scaled.boundedTo(roomFor(form)).expandedTo(form->minimumSizeHint()));
  if (form->testAttribute(Qt::WA_Moved)) keepOnScreen(form);
}

void WindowScale::arrange(QWidget* window, QWidget* contents) const {
  auto* layout = new QGridLayout(window);
  layout->setContentsMargins(0, 0, 0, 0);
  if (resizeMode_ == 0) {
    // A small screen may still make them smaller.
    contents->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);
    layout->addWidget(contents, 0, 0, Qt::AlignLeft | Qt::AlignTop);
  } else {
    layout->addWidget(contents, 0, 0);
  }
}

QVariant WindowScale::stored(const QString& key) const {
  if (!QFileInfo(stateFile_).isFile()) return {};
  return QSettings(stateFile_, QSettings::IniFormat).value(key);
}

void WindowScale::store(const QString& key, const QVariant& value) const {
  if (QFileInfo::exists(stateFile_) && !QFileInfo(stateFile_).isFile()) return;
  QSettings(stateFile_, QSettings::IniFormat).setValue(key, value);
}

QSize WindowScale::storedSize(const QString& name) const {
  return stored(sizeKey(name)).toSize();
}

void WindowScale::restoreSize(const QString& name, QWidget* window) const {
  const QSize size = storedSize(name);
  if (resizeMode_ == 0 || !size.isValid()) return;
  window->resize(size.boundedTo(roomFor(window)).expandedTo(window->minimumSizeHint()));
  if (window->testAttribute(Qt::WA_Moved)) keepOnScreen(window);
}

void WindowScale::comeUp(QWidget* window, QPoint place, QSize size) {
  window->resize(size.boundedTo(roomFor(window)));
  window->move(window->screen()->availableGeometry().topLeft() + place);
  keepOnScreen(window);
}

QList<int> WindowScale::storedColumns(const QString& name) const {
  QList<int> widths;
  const QStringList texts = stored(columnsKey(name)).toStringList();
  for (const QString& width : texts) widths << std::clamp(width.toInt(), 0, kWidestColumn);
  return widths;
}

void WindowScale::storeColumns(const QString& name, const QList<int>& widths) const {
  QStringList texts;
  for (const int width : widths) texts << QString::number(width);
  store(columnsKey(name), texts);
}

void WindowScale::storeSize(const QString& name, QSize size) const {
  if (resizeMode_ != 0) store(sizeKey(name), size);
}

}  // namespace lokari
