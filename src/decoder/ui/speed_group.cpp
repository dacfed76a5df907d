#include "decoder/ui/speed_group.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "decoder/ui/control_binder.h"
#include "decoder/ui/speed_curve.h"

namespace lokari {
namespace {

constexpr int kSpacing = 8;

struct Button {
  const char16_t* name;
  const char16_t* caption;
};

constexpr Button kButtons[] = {
    {u"cmdSmooth", u"Glätten"},
    {u"cmdTblList", u"Liste ..."},
    {u"cmdLoadTable", u"Laden ..."},
    {u"cmdSaveTable", u"Speichern ..."},
};

QHBoxLayout* addLine(QBoxLayout* rows) {
  auto* line = new QHBoxLayout;
  line->setSpacing(kSpacing);
  rows->addLayout(line);
  return line;
}

}  // namespace

QWidget* makeSpeedGroup(DecoderBench& bench, ControlBinder& binder, QWidget* parent) {
  auto* box = new QGroupBox(parent);
  box->setObjectName(QStringLiteral("grpSpeed"));
  auto* rows = new QVBoxLayout(box);
  rows->setSpacing(6);

  QHBoxLayout* line = addLine(rows);
  auto* labTbl = new QLabel(box);
  labTbl->setObjectName(QStringLiteral("labTbl"));
  line->addWidget(labTbl);
  QCheckBox* read = binder.checkBox(box, QStringLiteral("chkRd_Tbl"), QStringLiteral("Lesen"));
  line->addWidget(read);
  QCheckBox* write =
      binder.checkBox(box, QStringLiteral("chkWrt_Tbl"), QStringLiteral("Schreiben"));
  line->addWidget(write);
  line->addStretch();
  line->addWidget(new QLabel(QStringLiteral("Höchster Tabellenwert:"), box));
  QLabel* lblDcDrvLeg2 = binder.label(box, QStringLiteral("lblDcDrvLeg2"), {});
  lblDcDrvLeg2->setWordWrap(false);
  line->addWidget(lblDcDrvLeg2);

  auto* picSpeedTable = new SpeedCurve(bench, box);
  picSpeedTable->setObjectName(QStringLiteral("picSpeedTable"));
  picSpeedTable->setAccessibleName(QStringLiteral("Geschwindigkeitskurve"));
  binder.bindState(picSpeedTable);
  rows->addWidget(picSpeedTable, 1);

  // The boxes stand for the table, also while the picture shows the curve of three other CVs.
  const auto showCvs = [=] {
    const SpeedTable& table = picSpeedTable->table();
    box->setTitle(QStringLiteral("Geschwindigkeitskurve (%1)").arg(table.shownCvs()));
    const QString cvs = table.tableCvs();
    labTbl->setText(QStringLiteral("%1:").arg(cvs));
    read->setAccessibleName(QStringLiteral("Geschwindigkeitstabelle (%1) lesen").arg(cvs));
    write->setAccessibleName(QStringLiteral("Geschwindigkeitstabelle (%1) schreiben").arg(cvs));
  };
  QObject::connect(picSpeedTable, &SpeedCurve::shown, box, showCvs);
  showCvs();

  line = addLine(rows);
  for (const Button& button : kButtons) {
    line->addWidget(
        binder.button(box, QString::fromUtf16(button.name), QString::fromUtf16(button.caption)));
  }
  line->addStretch();
  return box;
}

}  // namespace lokari
