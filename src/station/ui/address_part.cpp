#include "station/ui/address_part.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QRegularExpressionValidator>

#include <algorithm>
#include <memory>

#include "station/options.h"

namespace lokari {
namespace {

constexpr int kDigits = 3;

/// Reasons of a loss that is not a step to another field.
bool isTemporary(Qt::FocusReason reason) {
  return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
         reason == Qt::MenuBarFocusReason;
}

/// The parts of the first address in a text; none without one.
QStringList addressIn(const QString& text) {
  static const QRegularExpression pattern(
      QStringLiteral(R"((?<![\d.])(\d{1,3})\.(\d{1,3})\.(\d{1,3})\.(\d{1,3})(?![\d.]))"));
  const QRegularExpressionMatch match = pattern.match(text);
  if (!match.hasMatch()) return {};
  const QStringList parts = match.capturedTexts().mid(1);
  return std::all_of(parts.begin(), parts.end(), isAddressPart) ? parts : QStringList();
}

}  // namespace

AddressPart::AddressPart(QWidget* parent) : QLineEdit(parent) {
  setValidator(
      new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,3}")), this));
  setMaxLength(kDigits);
  setAlignment(Qt::AlignHCenter);
  setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 24);
}

void AddressPart::join(const All& parts) {
  for (AddressPart* part : parts) part->parts_ = parts;
}

AddressPart* AddressPart::neighbour(int step) const {
  const auto* const self = std::find(parts_.begin(), parts_.end(), this);
  const auto place = (self - parts_.begin()) + step;
  const bool exists = self != parts_.end() && place >= 0 && place < std::ssize(parts_);
  return exists ? parts_[static_cast<size_t>(place)] : nullptr;
}

// What stands in a field is replaced by typing, also behind a click: three zeros take no digit.
void AddressPart::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  // The press that gave the focus would set the cursor behind this.
  if (event->reason() == Qt::MouseFocusReason) {
    QMetaObject::invokeMethod(this, &AddressPart::selectAll, Qt::QueuedConnection);
  }
}

void AddressPart::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (isTemporary(event->reason()) || !isVisible() || isAddressPart(text())) return;
  // The other field gets the focus first; it is taken back once that is over.
  const auto takeBack = [this] {
    if (!isVisible()) return;
    setFocus();
    selectAll();
  };
  QMetaObject::invokeMethod(this, takeBack, Qt::QueuedConnection);
}

void AddressPart::keyPressEvent(QKeyEvent* event) {
  const QString typed = event->text();
  if (event->matches(QKeySequence::Paste)) {
    pasteText();
  } else if (typed == QStringLiteral(".") || typed == QStringLiteral(",")) {
    // The decimal key of a German keyboard types a comma.
    goOn();
  } else if (typed.size() == 1 && typed.front().isDigit()) {
    typeDigit(event);
  } else if (event->key() == Qt::Key_Backspace && text().isEmpty() && neighbour(-1) != nullptr) {
    setText(QStringLiteral("0"));
    neighbour(-1)->setFocus(Qt::BacktabFocusReason);
    neighbour(-1)->end(false);
  } else {
    QLineEdit::keyPressEvent(event);
  }
}

void AddressPart::goOn() {
  if (neighbour(1) == nullptr || !isAddressPart(text())) return;
  neighbour(1)->setFocus(Qt::TabFocusReason);
  neighbour(1)->selectAll();
}

void AddressPart::typeDigit(QKeyEvent* event) {
  const bool full = text().size() == kDigits && !hasSelectedText();
  if (full && cursorPosition() < kDigits) {
    // In the middle of three digits it takes the place of the one behind the cursor.
    setSelection(cursorPosition(), 1);
  } else if (full && neighbour(1) != nullptr && isAddressPart(text())) {
    goOn();
    neighbour(1)->insert(event->text());
    return;
  }
  QLineEdit::keyPressEvent(event);
}

void AddressPart::pasteText() {
  const QString text = QGuiApplication::clipboard()->text();
  const QStringList address = addressIn(text);
  if (address.isEmpty() || parts_.front() == nullptr) {
    // What is neither an address nor a part of one would only empty the field.
    if (isAddressPart(text.trimmed())) insert(text.trimmed());
    return;
  }
  for (size_t i = 0; i < parts_.size(); ++i) {
    parts_[i]->setText(address[static_cast<qsizetype>(i)]);
  }
  parts_.back()->setFocus(Qt::TabFocusReason);
  parts_.back()->selectAll();
}

void AddressPart::contextMenuEvent(QContextMenuEvent* event) {
  const std::unique_ptr<QMenu> menu(createStandardContextMenu());
  if (auto* paste = menu->findChild<QAction*>(QStringLiteral("edit-paste"))) {
    paste->disconnect();
    connect(paste, &QAction::triggered, this, &AddressPart::pasteText);
    paste->setEnabled(!QGuiApplication::clipboard()->text().isEmpty());
  }
  menu->exec(event->globalPos());
}

}  // namespace lokari
