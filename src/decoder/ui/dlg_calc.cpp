#include "decoder/ui/dlg_calc.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include <algorithm>

#include "base/prompt.h"
#include "decoder/ui/dialog_buttons.h"

namespace lokari {
namespace {

struct BoxLook {
  Calculator::Box box;
  const char16_t* name;
  const char16_t* label;
  const char16_t* keys;  ///< what can be typed, as an expression
};

constexpr BoxLook kBoxes[] = {
    {Calculator::Box::Bin, u"txtBin", u"&Binär:", u"[01]{0,8}"},
    {Calculator::Box::Dec, u"txtDec", u"&Dezimal:", u"[0-9]*"},
    {Calculator::Box::Hex, u"txtHex", u"&Hexadezimal:", u"[0-9A-Fa-f]*"},
};

}  // namespace

DlgCalc::DlgCalc(const QString& text, Prompt& prompt, QWidget* parent)
    : QDialog(parent), calculator_(text), prompt_(prompt) {
  setObjectName(QStringLiteral("dlgCalc"));
  setWindowTitle(QStringLiteral("Umrechnen"));
  setModal(true);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(16, 16, 16, 16);
  rows->setSpacing(12);
  auto* form = new QFormLayout;
  rows->addLayout(form);
  for (const BoxLook& look : kBoxes) {
    auto* edit = new QLineEdit(this);
    edits_[static_cast<size_t>(look.box)] = edit;
    edit->setObjectName(QString::fromUtf16(look.name));
    edit->setAlignment(Qt::AlignRight);
    edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("00000000")) + 32);
    edit->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QString::fromUtf16(look.keys)), edit));
    form->addRow(QString::fromUtf16(look.label), edit);
    edit->setAccessibleName(QString::fromUtf16(look.label).remove(u'&').remove(u':'));
    show(look.box);
    connect(edit, &QLineEdit::textEdited, this, [this, box = look.box] { typed(box); });
  }
  rows->addStretch();
  addOkAndCancel(this, rows, QStringLiteral("butOK"), QStringLiteral("butCancel"),
                 [this] { accept(); });
  edit(Calculator::Box::Dec)->setFocus();
  edit(Calculator::Box::Dec)->selectAll();
}

QString DlgCalc::decimalText() const {
  return calculator_.text(Calculator::Box::Dec).isEmpty() ? QStringLiteral("")
                                                          : calculator_.text(Calculator::Box::Dec);
}

void DlgCalc::show(Calculator::Box box) {
  if (edit(box)->text() == calculator_.text(box)) return;
  const int cursor = edit(box)->cursorPosition();
  edit(box)->setText(calculator_.text(box));
  edit(box)->setCursorPosition(cursor);
}

void DlgCalc::typed(Calculator::Box box) {
  const Calculator::Typed result = calculator_.type(box, edit(box)->text());
  for (const BoxLook& look : kBoxes) show(look.box);
  if (result == Calculator::Typed::OutOfRange) {
    prompt_.message(QStringLiteral("Nur Eingaben von 0 bis 255 sind zulässig!"));
  }
}

}  // namespace lokari
