#include "app/ui/navigator.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "base/ui/pictures.h"

namespace lokari {
namespace {

struct Mover {
  const char16_t* name;
  const char16_t* picture;
  const char16_t* tip;
  const char16_t* shortcut;
  void (Navigator::*signal)();
};

const std::array<Mover, 4> kMovers{{
    {u"Data1_First", u"erster.bmp", u"Erster Satz", u"Ctrl+Shift+PgUp", &Navigator::first},
    {u"Data1_Previous", u"voriger.bmp", u"Voriger Satz", u"Ctrl+PgUp", &Navigator::previous},
    {u"Data1_Next", u"naechster.bmp", u"Nächster Satz", u"Ctrl+PgDown", &Navigator::next},
    {u"Data1_Last", u"letzter.bmp", u"Letzter Satz", u"Ctrl+Shift+PgDown", &Navigator::last},
}};

constexpr QSize kPicture(20, 20);

}  // namespace

Navigator::Navigator(const Pictures& pictures, QWidget* parent)
    : QFrame(parent), caption_(new QLabel(this)) {
  setObjectName(QStringLiteral("Data1"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  // The search hides it; what stands beside and below keeps its place.
  QSizePolicy policy = sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  setSizePolicy(policy);
  setFiltered(false);
  caption_->setObjectName(QStringLiteral("Data1_Caption"));
  caption_->setAlignment(Qt::AlignCenter);
  // "neuer Satz" is to be read while the navigator is disabled. The label would else take the role
  // that goes with the navigator's background.
  caption_->setForegroundRole(QPalette::WindowText);
  QPalette readable = caption_->palette();
  readable.setColor(QPalette::Disabled, QPalette::WindowText,
                    readable.color(QPalette::Active, QPalette::WindowText));
  caption_->setPalette(readable);
  caption_->setMinimumWidth(
      fontMetrics().horizontalAdvance(QStringLiteral("Satz  00000 von  00000")));

  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(2, 2, 2, 2);
  line->setSpacing(2);
  for (const Mover& mover : kMovers) {
    if (mover.signal == &Navigator::next) line->addWidget(caption_, 1);
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromUtf16(mover.name));
    button->setAccessibleName(QString::fromUtf16(mover.tip));
    button->setShortcut(QKeySequence(QString::fromUtf16(mover.shortcut)));
    button->setToolTip(QStringLiteral("%1 (%2)").arg(
        QString::fromUtf16(mover.tip), button->shortcut().toString(QKeySequence::NativeText)));
    button->setIcon(pictures.icon(QString::fromUtf16(mover.picture)));
    button->setIconSize(kPicture);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, mover.signal);
    line->addWidget(button);
  }
}

QString Navigator::caption() const {
  return caption_->text();
}

void Navigator::setCaption(const QString& caption) {
  caption_->setText(caption);
}

void Navigator::setFiltered(bool on) {
  setBackgroundRole(on ? QPalette::ToolTipBase : QPalette::Base);
}

}  // namespace lokari
