#include "cab/ui/notice_line.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

#include <algorithm>

namespace lokari {
namespace {

// What stands for a stopped track also stands for one that cannot be stopped.
constexpr QRgb kOnLight = 0xFFC62828;
constexpr QRgb kOnDark = 0xFFEF5350;
constexpr int kHalfWay = 128;
constexpr int kGap = 8;

}  // namespace

NoticeLine::NoticeLine(QWidget* parent)
    : QWidget(parent), sign_(new QLabel(this)), labNotice_(new QLabel(this)) {
  setObjectName(QStringLiteral("notice"));
  labNotice_->setObjectName(QStringLiteral("labNotice"));
  labNotice_->setAccessibleName(QStringLiteral("Meldung"));
  labNotice_->setTextFormat(Qt::PlainText);
  labNotice_->setWordWrap(true);
  QFont font = labNotice_->font();
  font.setBold(true);
  labNotice_->setFont(font);
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
  sign_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(kGap);
  line->addWidget(sign_, 0, Qt::AlignTop);
  line->addWidget(labNotice_, 1);
  takeColour();
  hide();
}

void NoticeLine::showText(const QString& text) {
  if (text == labNotice_->text()) return;
  QWidget* const window = this->window();
  const int before = isHidden() ? 0 : height() + kGap;
  labNotice_->setText(text);
  setVisible(!text.isEmpty());
  keepWhole();
  // Ahead of its first showing the window takes its size from its contents.
  if (!window->isVisible() || window->isMaximized()) return;
  const int after = isHidden() ? 0 : minimumHeight() + kGap;
  window->resize(window->width(), window->height() + after - before);
}

void NoticeLine::keepWhole() {
  if (isHidden()) return;
  const int width = this->width() - sign_->sizeHint().width() - kGap;
  setMinimumHeight(std::max(labNotice_->heightForWidth(width), sign_->sizeHint().height()));
}

void NoticeLine::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  keepWhole();
}

void NoticeLine::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && labNotice_ != nullptr) takeColour();
}

void NoticeLine::takeColour() {
  const bool light = palette().color(QPalette::Window).lightness() > kHalfWay;
  QPalette colours = labNotice_->palette();
  const QColor colour(light ? kOnLight : kOnDark);
  if (colours.color(QPalette::WindowText) == colour) return;
  colours.setColor(QPalette::WindowText, colour);
  labNotice_->setPalette(colours);
}

}  // namespace lokari
