#include "decoder/ui/dlg_copy.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace lokari {
namespace {

struct CopyButton {
  const char16_t* name;
  const char16_t* text;
  CopyAnswer answer;
};

/// Added to the width of a button with a long text.
constexpr int kButtonAir = 16;

constexpr CopyButton kButtons[] = {
    {u"OKButton", u"&Alle CVs", CopyAnswer::All},
    {u"SelectedButton", u"Nur &markierte", CopyAnswer::Selected},
    {u"CancelButton", u"Abbruch", CopyAnswer::None},
};

}  // namespace

DlgCopy::DlgCopy(const QString& text, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("dlgCopy"));
  setWindowTitle(QStringLiteral("CVs kopieren"));
  setModal(true);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(16, 16, 16, 16);
  rows->setSpacing(12);
  // Names of sets are the user's own texts: never markup.
  for (const QString& line :
       {text, QStringLiteral("Markiert sind die CVs, die unter \"Schreiben\" angekreuzt sind.")}) {
    auto* label = new QLabel(line, this);
    label->setTextFormat(Qt::PlainText);
    rows->addWidget(label);
  }
  rows->addStretch();
  auto* line = new QHBoxLayout;
  line->addStretch();
  for (const CopyButton& look : kButtons) {
    auto* button = new QPushButton(QString::fromUtf16(look.text), this);
    button->setObjectName(QString::fromUtf16(look.name));
    button->setMinimumWidth(button->sizeHint().width() + kButtonAir);
    connect(button, &QPushButton::clicked, this, [this, answer = look.answer] {
      answer_ = answer;
      accept();
    });
    line->addWidget(button);
  }
  rows->addLayout(line);
}

}  // namespace lokari
