#include "cab/ui/main_cv_box.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

#include "cab/cab.h"
#include "cab/ui/cv_stepper.h"

namespace lokari {

MainCvBox::MainCvBox(Cab& cab, QWidget* parent)
    : QWidget(parent), cab_(cab), cbCV_(new QComboBox(this)), udCV_(new CvStepper(this)) {
  auto* caption = new QLabel(QStringLiteral("Am &Hauptgleis programmieren:"), this);
  caption->setBuddy(cbCV_);
  cbCV_->setObjectName(QStringLiteral("cbCV"));
  cbCV_->setAccessibleName(QStringLiteral("CV am Hauptgleis"));
  cbCV_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  cbCV_->setMinimumContentsLength(18);
  // What it shows, with the CV's number, is not what its entries are called. It is no field to type
  // in for that.
  cbCV_->setEditable(true);
  cbCV_->setInsertPolicy(QComboBox::NoInsert);
  cbCV_->setCompleter(nullptr);
  cbCV_->lineEdit()->setReadOnly(true);
  cbCV_->setFocusPolicy(Qt::StrongFocus);
  cbCV_->installEventFilter(this);
  cbCV_->lineEdit()->installEventFilter(this);

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(2);
  grid->addWidget(caption, 0, 0, 1, 2);
  grid->addWidget(cbCV_, 1, 0);
  grid->addWidget(udCV_, 1, 1);
  grid->setColumnStretch(0, 1);

  connect(cbCV_, &QComboBox::activated, this, [this](int index) {
    cab_.chooseCV(cbCV_->itemText(index));
    showEntry();
  });
  connect(udCV_, &CvStepper::steppedUp, this, [this] { cab_.stepCVUp(); });
  connect(udCV_, &CvStepper::steppedDown, this, [this] { cab_.stepCVDown(); });
  connect(&cab_, &Cab::programmingChanged, this, &MainCvBox::showEntry);
}

void MainCvBox::showList() {
  const MainProgramming& programming = cab_.programming();
  cbCV_->clear();
  cbCV_->addItems(programming.names());
  showEntry();
  cbCV_->setEnabled(programming.isAvailable());
  udCV_->setEnabled(programming.isAvailable());
}

void MainCvBox::showEntry() {
  const MainProgramming& programming = cab_.programming();
  cbCV_->setEditText(programming.shownName());
  cbCV_->lineEdit()->setCursorPosition(0);
  cbCV_->setToolTip(programming.shownName());
  udCV_->showValue(programming.shownValue());
  udCV_->setToolTip(programming.shownHint());
}

bool MainCvBox::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel) {
    event->ignore();
    return true;
  }
  if (watched == cbCV_->lineEdit() && event->type() == QEvent::MouseButtonPress &&
      cbCV_->isEnabled()) {
    cbCV_->showPopup();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace lokari
