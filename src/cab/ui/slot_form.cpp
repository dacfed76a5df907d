#include "cab/ui/slot_form.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QScreen>

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
  raise();
  activateWindow();
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
