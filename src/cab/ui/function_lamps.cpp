#include "cab/ui/function_lamps.h"

#include <QGridLayout>
#include <QLabel>

#include "cab/ui/picture_button.h"

namespace lokari {
namespace {

/// The first row holds just the functions that have a key.
constexpr int kColumns = 8;

QString lampName(int n) {
  const QString name = QStringLiteral("Funktion F%1").arg(n);
  const QString named = n == 0 ? QStringLiteral("Licht (F0)") : name;
  return n < kColumns ? named + QStringLiteral(", Taste %1").arg(n) : named;
}

}  // namespace

FunctionLamps::FunctionLamps(const Pictures& pictures, QWidget* parent) : QWidget(parent) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(4);
  grid->setVerticalSpacing(0);
  for (int n = 0; n < kCount; ++n) {
    auto* lamp =
        new PictureButton(pictures, QStringLiteral("cmdFunc_%1").arg(n), lampName(n), this);
    lamp->setText(QStringLiteral("F%1").arg(n));
    connect(lamp, &PictureButton::clicked, this, [this, n] { emit pressed(n); });
    auto* number = new QLabel(lamp->text(), this);
    number->setObjectName(QStringLiteral("labFunc_%1").arg(n));
    number->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    lamps_[static_cast<size_t>(n)] = lamp;
    numbers_[static_cast<size_t>(n)] = number;
    const int row = 2 * (n / kColumns);
    grid->addWidget(lamp, row, n % kColumns);
    grid->addWidget(number, row + 1, n % kColumns);
  }
}

void FunctionLamps::setHighest(int highest) {
  for (int n = 0; n < kCount; ++n) {
    const bool there = n <= highest;
    lamp(n)->setVisible(there);
    lamp(n)->setEnabled(there);
    numbers_[static_cast<size_t>(n)]->setVisible(there);
    if (!there) lamp(n)->showPicture(QStringLiteral("lmpgrey.bmp"));
  }
}

void FunctionLamps::showOn(int n, bool on) {
  lamp(n)->showPicture(on ? QStringLiteral("lmpon_n.bmp") : QStringLiteral("lmpoff_n.bmp"));
  lamp(n)->showOn(on);
}

}  // namespace lokari
