#include "app/ui/tool_row.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QToolButton>

#include <array>
#include <stdexcept>

#include "base/ui/pictures.h"

namespace lokari {
namespace {

constexpr QSize kPicture(32, 32);

struct Tool {
  const char16_t* name;
  const char16_t* caption;
  const char16_t* picture;
  const char16_t* tip;
  const char16_t* key = u"";  ///< beside the underlined letter of the caption
};

/// Left of the gap the work on records, right of it the work on the layout.
constexpr std::array<Tool, 12> kTools{{
    {u"butTable", u"&Liste", u"tab_n.bmp", u"Fahrzeugliste"},
    {u"butFind", u"&Suchen", u"such_n.bmp", u"Fahrzeuge suchen"},
    {u"butNew", u"&Neu", u"neu_n.bmp", u"Neuer Datensatz"},
    {u"butDelete", u"Lös&chen", u"loesch_n.bmp", u"Datensatz löschen"},
    {u"butOK", u"Suchen", u"ok_n.bmp", u"Eingabe bestätigen", u"Ctrl+Return"},
    {u"butFilter", u"Fil&tern", u"filter_n.bmp", u"Nur passende Fahrzeuge zeigen"},
    {u"butCancel", u"Abbruch", u"abbr_n.bmp", u"Eingabe verwerfen", u"Esc"},
    {u"butUndo", u"&Rückgängig", u"rueck_n.bmp", u"Gelöschten Datensatz zurückholen"},
    {u"butProg", u"Pro&grammieren", u"prog_n.bmp", u"Decoder lesen und schreiben"},
    {u"butDrive", u"F&ahren", u"fahr_n.bmp", u"Fahrpult öffnen"},
    {u"butSwitch", u"Sc&halten", u"schalt_n.bmp", u"Schaltpult öffnen"},
    {u"butStop", u"Halt", u"stop_n.bmp", u"Ganze Anlage anhalten, Taste Pause"},
}};
constexpr QStringView kFirstOnTheRight = u"butProg";

QString tipOf(const Tool& tool, const QKeySequence& key) {
  const QString tip = QString::fromUtf16(tool.tip);
  return key.isEmpty() ? tip
                       : QStringLiteral("%1 (%2)").arg(tip, key.toString(QKeySequence::NativeText));
}

}  // namespace

ToolRow::ToolRow(const Pictures& pictures, QWidget* parent)
    : QWidget(parent), lblUnsaved_(new QLabel(QStringLiteral("Nicht gespeichert"), this)) {
  setObjectName(QStringLiteral("toolRow"));
  lblUnsaved_->setObjectName(QStringLiteral("lblUnsaved"));
  lblUnsaved_->setToolTip(
      QStringLiteral("Wird gespeichert, sobald der Satz verlassen wird. Esc "
                     "verwirft die Eingaben."));
  showUnsaved(false);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(4);
  for (const Tool& tool : kTools) {
    if (tool.name == kFirstOnTheRight) {
      line->addStretch();
      line->addWidget(lblUnsaved_);
      line->addStretch();
    }
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromUtf16(tool.name));
    button->setText(QString::fromUtf16(tool.caption));
    const QKeySequence key(QString::fromUtf16(tool.key));
    // Not the button's own shortcut: that one goes with each new caption.
    if (!key.isEmpty()) new QShortcut(key, button, button, &QToolButton::click);
    button->setToolTip(tipOf(tool, key));
    button->setAccessibleName(QString::fromUtf16(tool.tip));
    button->setIcon(pictures.icon(QString::fromUtf16(tool.picture)));
    button->setIconSize(kPicture);
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    button->setMinimumWidth(72);
    button->setEnabled(false);
    buttons_.insert(button->objectName(), button);
    line->addWidget(button);
  }
}

void ToolRow::showUnsaved(bool unsaved) {
  lblUnsaved_->setVisible(unsaved);
}

QToolButton* ToolRow::button(const QString& name) const {
  QToolButton* button = buttons_.value(name);
  if (button == nullptr) throw std::logic_error("no button " + name.toStdString());
  return button;
}

}  // namespace lokari
