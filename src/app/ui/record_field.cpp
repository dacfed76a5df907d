#include "app/ui/record_field.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>
#include <QTextCursor>

#include <algorithm>

#include "db/form_fields.h"

namespace lokari {
namespace {

/// Keys go through takesKey(); this keeps the clipboard to the same characters.
const char16_t* pastedCharacters(KeyFilter keys) {
  switch (keys) {
    case KeyFilter::Digits:
      return u"[0-9]*";
    case KeyFilter::Price:
      return u"[0-9.,]*";
    case KeyFilter::All:
    case KeyFilter::Collection:
      break;
  }
  return nullptr;
}

bool isPlainReturn(const QKeyEvent& key) {
  return (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) &&
         (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

/// Focus that goes to a box, a menu or another program comes back by itself.
bool goesToAnotherControl(Qt::FocusReason reason) {
  return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
         reason != Qt::MenuBarFocusReason;
}

}  // namespace

RecordField::RecordField(const FormPlace& place, QWidget* parent) : QObject(parent), place_(place) {
  if (const FormField* field = formField(place.control)) most_ = field->maxLength;
  if (place.widget == FormWidget::Lines) {
    lines_ = new QPlainTextEdit(parent);
    buildLines();
  } else if (place.widget == FormWidget::List) {
    list_ = new QComboBox(parent);
    buildList();
  } else {
    line_ = new QLineEdit(parent);
    widget_ = line_;
  }
  if (line_ != nullptr) buildLine();
  widget_->setObjectName(name());
  widget_->installEventFilter(this);
  QString spoken = label();
  spoken.chop(1);
  widget_->setAccessibleName(spoken);
}

QString RecordField::label() const {
  const FormField* field = formField(place_.control);
  const QString caption = field == nullptr ? QString() : QString::fromUtf16(field->label);
  return caption.isEmpty() ? QString::fromUtf16(place_.label) : caption;
}

void RecordField::buildLine() {
  line_->installEventFilter(this);
  const FormField* field = formField(place_.control);
  if (const char16_t* allowed = field == nullptr ? nullptr : pastedCharacters(field->keys)) {
    const QRegularExpression pattern(QString::fromUtf16(allowed));
    line_->setValidator(new QRegularExpressionValidator(pattern, line_));
  }
  if (place_.widget == FormWidget::Shown) {
    line_->setReadOnly(true);
    line_->setFocusPolicy(Qt::ClickFocus);
    QPalette quiet = line_->palette();
    quiet.setColor(QPalette::Base, quiet.color(QPalette::Window));
    line_->setPalette(quiet);
  }
  connect(line_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (!showing_) emit edited(text);
  });
}

void RecordField::buildList() {
  list_->setEditable(true);
  list_->setInsertPolicy(QComboBox::NoInsert);
  // A completed text would be stored before the user has finished his own.
  list_->setCompleter(nullptr);
  list_->setFocusPolicy(Qt::StrongFocus);
  list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list_->setMinimumContentsLength(8);
  list_->setMaxVisibleItems(20);
  line_ = list_->lineEdit();
  widget_ = list_;
}

void RecordField::buildLines() {
  widget_ = lines_;
  linesMost_ = most_;
  lines_->setTabChangesFocus(true);
  lines_->setMinimumSize(120, 60);
  connect(lines_, &QPlainTextEdit::textChanged, this, [this] {
    if (showing_) return;
    limitLines();
    emit edited(text());
  });
}

void RecordField::limitLines() {
  const qsizetype excess = lines_->toPlainText().size() - linesMost_;
  if (linesMost_ == 0 || excess <= 0) return;
  // What was typed or pasted too much stands in front of the cursor.
  const QScopedValueRollback quiet(showing_, true);
  QTextCursor cursor = lines_->textCursor();
  cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, static_cast<int>(excess));
  cursor.removeSelectedText();
}

QString RecordField::text() const {
  return lines_ != nullptr ? lines_->toPlainText() : line_->text();
}

void RecordField::setText(const QString& text) {
  const QScopedValueRollback quiet(showing_, true);
  if (lines_ != nullptr) {
    linesMost_ = most_ == 0 ? 0 : std::max(most_, static_cast<int>(text.size()));
    if (text != lines_->toPlainText()) lines_->setPlainText(text);
    return;
  }
  if (most_ > 0 && list_ == nullptr) {
    line_->setMaxLength(std::max(most_, static_cast<int>(text.size())));
  }
  if (list_ != nullptr) list_->setCurrentIndex(list_->findText(text));
  if (text == line_->text()) return;
  line_->setText(text);
  line_->setCursorPosition(0);
}

void RecordField::setItems(const QStringList& items) {
  if (list_ == nullptr) return;
  const QScopedValueRollback quiet(showing_, true);
  const QString kept = line_->text();
  const int cursor = line_->cursorPosition();
  list_->clear();
  list_->addItems(items);
  list_->setCurrentIndex(list_->findText(kept));
  line_->setText(kept);
  line_->setCursorPosition(cursor);
}

void RecordField::focus(bool selected) {
  widget_->setFocus();
  if (selected) selectAll();
}

void RecordField::selectAll() {
  if (lines_ != nullptr) {
    lines_->selectAll();
  } else {
    line_->selectAll();
  }
}

bool RecordField::throwsAway(const QString& typed) const {
  // Keys without a character, and the control keys but backspace, pass.
  if (typed.isEmpty() || !takesKey) return false;
  const QChar key = typed.front();
  const qsizetype replaced =
      lines_ != nullptr ? lines_->textCursor().selectedText().size() : line_->selectedText().size();
  return (key.isPrint() || key == u'\b') && !takesKey(key, replaced);
}

bool RecordField::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
      // Focus that comes back is no entering: it would select what was just typed.
      if (watched == widget_ && goesToAnotherControl(static_cast<QFocusEvent*>(event)->reason())) {
        emit entered();
      }
      break;
    case QEvent::FocusOut:
      if (watched == widget_ && goesToAnotherControl(static_cast<QFocusEvent*>(event)->reason())) {
        QMetaObject::invokeMethod(this, &RecordField::left, Qt::QueuedConnection);
      }
      break;
    case QEvent::Wheel:
      // A list under the pointer would take an entry, and with it store the record, unasked.
      if (list_ != nullptr) {
        event->ignore();
        return true;
      }
      break;
    case QEvent::KeyPress:
      // A drop-down hands its keys on to its line: asked once, at the outer one.
      if (watched != widget_) break;
      if (throwsAway(static_cast<QKeyEvent*>(event)->text())) return true;
      if (isPlainReturn(*static_cast<QKeyEvent*>(event)) && takesReturn && takesReturn()) {
        return true;
      }
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace lokari
