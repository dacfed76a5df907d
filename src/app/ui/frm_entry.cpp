#include "app/ui/frm_entry.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "base/settings.h"
#include "base/ui/pictures.h"

namespace lokari {
namespace {

constexpr int kMargin = 28;
constexpr int kGap = 6;
/// 10 twips.
constexpr int kFrame = 1;
const QColor kPaper(0xFB, 0xFC, 0xFD);
const QColor kInk(0x1F, 0x4E, 0x79);

/// A line of the splash; `scale` is in proportion to the window's font.
QLabel* line(const QString& name, const QString& text, double scale, bool bold, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  QFont font = label->font();
  font.setPointSizeF(font.pointSizeF() * scale);
  font.setBold(bold);
  label->setFont(font);
  label->setAlignment(Qt::AlignHCenter);
  return label;
}

}  // namespace

FrmEntry::FrmEntry(QWidget* mainWindow, const Pictures& pictures, Clock& clock)
    : QWidget(mainWindow, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName(QStringLiteral("frmEntry"));
  setAccessibleName(QStringLiteral("Lokari startet"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  QPalette colours = palette();
  colours.setColor(QPalette::Window, kPaper);
  colours.setColor(QPalette::WindowText, kInk);
  setPalette(colours);

  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  auto* picture = new QLabel(this);
  picture->setObjectName(QStringLiteral("imgEntry"));
  picture->setPixmap(pictures.pixmap(QStringLiteral("entry.bmp"), devicePixelRatioF()));
  picture->setAlignment(Qt::AlignCenter);
  rows->addWidget(picture);
  rows->addSpacing(kGap);
  rows->addWidget(
      line(QStringLiteral("labProgram"), QStringLiteral("Programmieren,"), 1.3, false, this));
  rows->addWidget(line(QStringLiteral("labDrive"), QStringLiteral("Fahren"), 1.3, false, this));
  rows->addWidget(
      line(QStringLiteral("labSwitch"), QStringLiteral("und Schalten"), 1.3, false, this));
  rows->addSpacing(kGap);
  rows->addWidget(line(QStringLiteral("lblTitle"), QString::fromUtf16(kTitle), 2.0, true, this));
  setMinimumWidth(360);
  adjustSize();

  timEntry_ = clock.after(kShown, [this] { close(); });
}

void FrmEntry::centre() {
  const QRect around = parentWidget()->frameGeometry();
  move(around.x() + around.width() / 2 - width() / 2,
       around.y() + around.height() / 2 - height() / 2);
}

void FrmEntry::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  QPainter painter(this);
  painter.fillRect(rect(), palette().window());
  painter.setPen(QPen(kInk, 1));
  painter.drawRect(rect().adjusted(kFrame, kFrame, -kFrame - 1, -kFrame - 1));
}

void FrmEntry::mousePressEvent(QMouseEvent*) {
  close();
}

void FrmEntry::closeEvent(QCloseEvent* event) {
  timEntry_.reset();
  QWidget::closeEvent(event);
}

}  // namespace lokari
