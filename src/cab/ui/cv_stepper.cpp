#include "cab/ui/cv_stepper.h"

#include <QLineEdit>
#include <QWheelEvent>

namespace lokari {

CvStepper::CvStepper(QWidget* parent) : QAbstractSpinBox(parent) {
  setObjectName(QStringLiteral("udCV"));
  setAccessibleName(QStringLiteral("Wert der CV"));
  setFocusPolicy(Qt::StrongFocus);
  lineEdit()->setObjectName(QStringLiteral("txtCV"));
  lineEdit()->setAccessibleName(accessibleName());
  lineEdit()->setReadOnly(true);
  lineEdit()->setAlignment(Qt::AlignRight);
  const QFontMetrics metrics = fontMetrics();
  setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("0000")) + 2 * metrics.height() + 8);
}

void CvStepper::showValue(const QString& text) {
  lineEdit()->setText(text);
}

void CvStepper::stepBy(int steps) {
  if (steps > 0) {
    emit steppedUp();
  } else {
    emit steppedDown();
  }
}

void CvStepper::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace lokari
