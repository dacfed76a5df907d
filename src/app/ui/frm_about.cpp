#include "app/ui/frm_about.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/settings.h"
#include "base/ui/pictures.h"

namespace lokari {

FrmAbout::FrmAbout(QWidget* parent, const Pictures& pictures) : QDialog(parent) {
  setObjectName(QStringLiteral("frmAbout"));
  setWindowTitle(QStringLiteral("Info zu Lokari"));

  auto* picture = new QLabel(this);
  picture->setObjectName(QStringLiteral("imgAbout"));
  picture->setPixmap(pictures.pixmap(QStringLiteral("entry.bmp"), devicePixelRatioF()));
  picture->setAlignment(Qt::AlignCenter);

  auto* title = new QLabel(QString::fromUtf16(kTitle), this);
  title->setObjectName(QStringLiteral("labTitle"));
  title->setAlignment(Qt::AlignHCenter);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  large.setBold(true);
  title->setFont(large);

  auto* text = new QLabel(QStringLiteral("Programmieren, Fahren und Schalten\n"
                                         "für die digitale Modellbahn"),
                          this);
  text->setObjectName(QStringLiteral("labText"));
  text->setAlignment(Qt::AlignHCenter);

  auto* ok = new QPushButton(QStringLiteral("OK"), this);
  ok->setObjectName(QStringLiteral("butOK"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addStretch();

  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(32, 24, 32, 20);
  rows->setSpacing(12);
  rows->addStretch();
  rows->addWidget(picture);
  rows->addWidget(title);
  rows->addWidget(text);
  rows->addSpacing(8);
  rows->addLayout(buttons);
  rows->addStretch();
}

}  // namespace lokari
