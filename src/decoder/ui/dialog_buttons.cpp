#include "decoder/ui/dialog_buttons.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace lokari {

QString withoutMnemonics(QString text) {
  return text.replace(u'&', QStringLiteral("&&"));
}

QPushButton* addOkAndCancel(QDialog* dialog, QBoxLayout* rows, const QString& okName,
                            const QString& cancelName, std::function<void()> accepted,
                            QLabel* note) {
  auto* line = new QHBoxLayout;
  if (note != nullptr) {
    line->addWidget(note, 1);
  } else {
    line->addStretch();
  }
  auto* ok = new QPushButton(QStringLiteral("&OK"), dialog);
  ok->setObjectName(okName);
  ok->setDefault(true);
  QObject::connect(ok, &QPushButton::clicked, dialog, std::move(accepted));
  auto* cancel = new QPushButton(QStringLiteral("Abbruch"), dialog);
  cancel->setObjectName(cancelName);
  cancel->setAutoDefault(false);
  QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
  line->addWidget(ok);
  line->addWidget(cancel);
  rows->addLayout(line);
  return ok;
}

}  // namespace lokari
