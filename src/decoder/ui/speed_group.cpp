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
  auto* box = new QGroupBox(QStringLiteral("Geschwindigkeitskurve (CV 67 bis 94)"), parent);
  auto* rows = new QVBoxLayout(box);
  rows->setSpacing(6);

  QHBoxLayout* line = addLine(rows);
  line->addWidget(binder.checkBox(box, QStringLiteral("chkRd_Tbl"), QStringLiteral("Lesen"),
                                  QStringLiteral("Geschwindigkeitstabelle lesen")));
  line->addWidget(binder.checkBox(box, QStringLiteral("chkWrt_Tbl"), QStringLiteral("Schreiben"),
                                  QStringLiteral("Geschwindigkeitstabelle schreiben")));
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

  line = addLine(rows);
  for (const Button& button : kButtons) {
    line->addWidget(
        binder.button(box, QString::fromUtf16(button.name), QString::fromUtf16(button.caption)));
  }
  line->addStretch();
  return box;
}

}  // namespace lokari
