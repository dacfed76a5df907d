#include "cab/ui/slot_form.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>

#include <algorithm>

#include "base/ui/window_scale.h"
#include "cab/slot_unit.h"
#include "cab/ui/notice_line.h"

namespace lokari {

SlotForm::SlotForm(std::shared_ptr<SlotUnit> unit, const WindowScale& scale)
    : unit_(std::move(unit)), scale_(scale), contents_(new QWidget(this)) {
  scale.arrange(this, contents_);
  auto* dc_adr = new QLineEdit(QString::number(unit_->address()), contents_);
  dc_adr->setObjectName(QStringLiteral("dc_adr"));
  dc_adr->setAccessibleName(QStringLiteral("Adresse"));
  dc_adr->hide();
}

NoticeLine* SlotForm::makeNotice() {
  auto* notice = new NoticeLine(contents_);
  const auto show = [this, notice] { notice->showText(unit_->notice()); };
  connect(unit_.get(), &SlotUnit::noticeChanged, notice, show);
  connect(unit_.get(), &SlotUnit::loaded, notice, show);
  return notice;
}

SlotForm::~SlotForm() = default;

void SlotForm::setTag(int slot) {
  setProperty("Tag", QString::number(slot));
}

void SlotForm::moveTo(QPoint place) {
  move(place);
}

QPointF SlotForm::mainScale() const {
  return {scale_.scaleX, scale_.scaleY};
}

void SlotForm::ResizeWindow() {
  ensurePolished();
  resize(sizeHint().boundedTo(screen()->availableSize()));
  scale_.ResizeWindow(this);
}

void SlotForm::bringUp() {
  if (isMinimized()) {
    showNormal();
  } else {
    show();
  }
  // Its controls have their places by now.
  bringIntoView();
  raise();
  activateWindow();
}

void SlotForm::bringIntoView() {
  const QWidget* kept = keptInView();
  const QRect seen(kept->mapToGlobal(QPoint(0, 0)), kept->size());
  const QScreen* there = QGuiApplication::screenAt(seen.center());
  const QRect room = (there != nullptr ? there : screen())->availableGeometry();
  const auto shift = [](int first, int last, int lowest, int highest) {
    return std::max(lowest - first, std::min(0, highest - last));
  };
  move(pos() + QPoint(shift(seen.left(), seen.right(), room.left(), room.right()),
                      shift(seen.top(), seen.bottom(), room.top(), room.bottom())));
}

void SlotForm::putAway() {
  hide();
}

void SlotForm::closeEvent(QCloseEvent* event) {
  // Whether and when the window goes is the unit's to say; it puts the window away.
  event->ignore();
  unit_->leave();
}

}  // namespace lokari
