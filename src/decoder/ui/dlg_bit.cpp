#include "decoder/ui/dlg_bit.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include <algorithm>

#include "base/ui/fit_area.h"
#include "base/ui/option_group.h"
#include "decoder/ui/dialog_buttons.h"

namespace lokari {
namespace {

/// More rows than these make two columns.
constexpr int kRowsOfOneColumn = 11;
/// Two options stand side by side, more of them one below the other.
constexpr qsizetype kOptionsOfOneRow = 2;
constexpr int kColumnGap = 16;
/// Flat frames: eight of them are to fit below each other.
constexpr QMargins kFrameMargins(10, 3, 10, 3);
/// Beside the caption stand the buttons of the window frame.
constexpr int kCaptionAir = 150;
/// Room of the note beside OK: it appears while the user types, and nothing is to jump.
constexpr int kNoteCharacters = 34;
constexpr int kNoteLines = 3;

int rowsOf(const BitGroup& group) {
  const qsizetype choices = group.choices.size();
  return choices <= kOptionsOfOneRow ? 1 : static_cast<int>(choices);
}

int rowsOf(const std::vector<BitGroup>& groups) {
  int rows = 0;
  for (const BitGroup& group : groups) rows += rowsOf(group);
  return rows;
}

/// "2, 3" for 12.
QString bitNumbers(int value) {
  QStringList numbers;
  for (int bit = 0; value >> bit != 0; ++bit)
    if ((value >> bit & 1) != 0) numbers << QString::number(bit);
  return numbers.join(QStringLiteral(", "));
}

bool fits(const BitGroup& group, int shown) {
  return shown >= group.lowest() && shown <= group.highest();
}

QString numbered(const char* array, int number) {
  return QString::fromLatin1(array) + u'_' + QString::number(number);
}

}  // namespace

DlgBit::DlgBit(int cvValue, const QString& bitText, const QString& caption, QWidget* parent)
    : QDialog(parent), description_(bitText), before_(cvValue), value_(cvValue) {
  setObjectName(QStringLiteral("dlgBit"));
  setWindowTitle(caption);
  setModal(true);
  auto* rows = new QVBoxLayout(this);
  // A minimum of the dialog's own would let it be narrower than its contents.
  rows->addStrut(fontMetrics().horizontalAdvance(caption) + kCaptionAir);
  rows->setContentsMargins(kDialogMargin, kDialogMargin, kDialogMargin, kDialogMargin);
  rows->setSpacing(12);
  QWidget* groups = makeGroups();
  auto* area = new FitArea(this);
  area->take(groups);
  rows->addWidget(area, 1);
  QPushButton* ok = addOkAndCancel(
      this, rows, QStringLiteral("cmdOK"), QStringLiteral("cmdCancel"),
      [this] {
        if (exitBitDlg()) accept();
      },
      makeNote());
  // Nothing was shown, so nothing can be accepted: the value would become 0.
  ok->setEnabled(!entries_.empty());
  if (!entries_.empty()) focusOn(entries_.front());
}

QLabel* DlgBit::makeNote() {
  lblNote_ = new QLabel(this);
  lblNote_->setObjectName(QStringLiteral("lblNote"));
  lblNote_->setTextFormat(Qt::PlainText);
  lblNote_->setWordWrap(true);
  const std::vector<BitGroup>& groups = description_.groups();
  const bool mayWait = std::any_of(groups.begin(), groups.end(), [this](const BitGroup& group) {
    return !fits(group, group.shown(before_));
  });
  if (mayWait || (!groups.empty() && description_.passedOver(before_) > 0)) {
    lblNote_->setMinimumWidth(kNoteCharacters * fontMetrics().averageCharWidth());
    lblNote_->setMinimumHeight(kNoteLines * fontMetrics().lineSpacing());
  }
  return lblNote_;
}

QWidget* DlgBit::makeGroups() {
  auto* contents = new QWidget(this);
  auto* columns = new QHBoxLayout(contents);
  columns->setContentsMargins(0, 0, 0, 0);
  columns->setSpacing(kColumnGap);
  const std::vector<BitGroup>& groups = description_.groups();
  if (groups.empty()) {
    columns->addWidget(
        new QLabel(QStringLiteral("Die Beschreibung dieser CV nennt keine Einzelheiten."), this));
    return contents;
  }
  const int rows = rowsOf(groups);
  const int rowsOfColumn = rows > kRowsOfOneColumn ? (rows + 1) / 2 : rows;
  QGridLayout* grid = nullptr;
  int done = 0;
  for (const BitGroup& group : groups) {
    if (grid == nullptr || (columns->count() == 1 && done >= rowsOfColumn)) {
      auto* column = new QVBoxLayout;
      columns->addLayout(column, 1);
      grid = new QGridLayout;
      grid->setColumnStretch(0, 1);
      column->addLayout(grid);
      column->addStretch(1);
    }
    const int shown = group.shown(before_);
    if (group.hasOptions()) {
      makeOptions(group, shown, grid, grid->rowCount());
    } else {
      makeNumber(group, shown, grid, grid->rowCount());
    }
    done += rowsOf(group);
  }
  return contents;
}

void DlgBit::makeOptions(const BitGroup& group, int shown, QGridLayout* grid, int row) {
  auto* frame = new QGroupBox(withoutMnemonics(group.title), this);
  frame->setObjectName(numbered("bitFrm", ++frames_));
  auto* line = new QBoxLayout(
      group.choices.size() <= kOptionsOfOneRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom,
      frame);
  line->setContentsMargins(kFrameMargins);
  auto* options = new OptionGroup(frame);
  for (int k = 0; k < group.choices.size(); ++k) {
    // A choice without a name is still one.
    const QString name = group.choices[k].isEmpty() ? QString::number(k) : group.choices[k];
    auto* option = new QRadioButton(withoutMnemonics(name), frame);
    option->setObjectName(numbered("bitOpt", ++options_));
    option->setAccessibleName(group.title + QStringLiteral(": ") + name);
    options->add(option, k);
    option->setChecked(k == shown);
    line->addWidget(option, 1);
  }
  grid->addWidget(frame, row, 0, 1, 2);
  if (!fits(group, shown)) {
    QLabel* hint =
        makeHint(QStringLiteral("Zum Wert %1 passt keine Auswahl: bitte eine treffen.").arg(shown));
    grid->addWidget(hint, row + 1, 0, 1, 2);
    connect(options, &QButtonGroup::idToggled, hint, [hint] { hint->clear(); });
  }
  connect(options, &QButtonGroup::idToggled, this, [this] { showNote(); });
  entries_.push_back({options, nullptr});
}

void DlgBit::makeNumber(const BitGroup& group, int shown, QGridLayout* grid, int row) {
  const QString text =
      QStringLiteral("%1 (%2-%3)").arg(group.title).arg(group.lowest()).arg(group.highest());
  ++numbers_;
  auto* label = new QLabel(withoutMnemonics(text) + u':', this);
  label->setObjectName(numbered("bitLab", numbers_));
  label->setTextFormat(Qt::PlainText);
  auto* number = new QLineEdit(QString::number(shown), this);
  number->setObjectName(numbered("bitTxt", numbers_));
  number->setAccessibleName(text);
  number->setAlignment(Qt::AlignRight);
  number->setFixedWidth(number->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 16);
  number->setValidator(
      new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,5}")), number));
  label->setBuddy(number);
  grid->addWidget(label, row, 0);
  grid->addWidget(number, row, 1);
  if (!fits(group, shown)) {
    QLabel* hint = makeHint(QStringLiteral("%1 geht hier nicht: bitte %2 bis %3 eingeben.")
                                .arg(shown)
                                .arg(group.lowest())
                                .arg(group.highest()));
    grid->addWidget(hint, row + 1, 0, 1, 2);
    connect(number, &QLineEdit::textChanged, hint, [hint, group](const QString& typed) {
      bool isNumber = false;
      const int entry = typed.toInt(&isNumber);
      if (isNumber && fits(group, entry)) hint->clear();
    });
  }
  connect(number, &QLineEdit::textChanged, this, [this] { showNote(); });
  entries_.push_back({nullptr, number});
}

QLabel* DlgBit::makeHint(const QString& text) {
  auto* hint = new QLabel(text, this);
  hint->setObjectName(numbered("bitHint", ++hints_));
  hint->setTextFormat(Qt::PlainText);
  hint->setWordWrap(true);
  // What stands below keeps its place when the hint has gone.
  hint->setMinimumHeight(hint->sizeHint().height());
  return hint;
}

std::vector<std::optional<int>> DlgBit::given() const {
  std::vector<std::optional<int>> given;
  given.reserve(entries_.size());
  for (const Entry& entry : entries_) {
    bool isNumber = true;
    const int value =
        entry.options ? entry.options->checkedId() : entry.number->text().toInt(&isNumber);
    given.push_back(isNumber ? std::optional(value) : std::nullopt);
  }
  return given;
}

QString DlgBit::waitsFor(size_t group) const {
  const BitGroup& refused = description_.groups()[group];
  const QString title =
      refused.title.isEmpty() ? QStringLiteral("Gruppe %1").arg(group + 1) : refused.title;
  if (refused.hasOptions()) return QStringLiteral("%1: bitte eine Auswahl treffen.").arg(title);
  return QStringLiteral("%1: bitte %2 bis %3 eingeben.")
      .arg(title)
      .arg(refused.lowest())
      .arg(refused.highest());
}

void DlgBit::showNote(const QString& refused) {
  QString note = refused;
  const int lost = description_.passedOver(before_);
  const BitEntry entry = description_.accept(given(), before_);
  if (note.isEmpty() && lost > 0 && entry.value != before_) {
    const QString part = description_.isDecimal()
                             ? QString::number(lost)
                             : QStringLiteral("Bit %1 (Wert %2)").arg(bitNumbers(lost)).arg(lost);
    note = QStringLiteral("OK löscht auch, was hier nicht steht: %1.").arg(part);
  }
  lblNote_->setText(note);
}

bool DlgBit::exitBitDlg() {
  const BitEntry result = description_.accept(given(), before_);
  if (!result.value) {
    showNote(waitsFor(result.refused));
    focusOn(entries_[result.refused]);
    return false;
  }
  value_ = *result.value;
  return true;
}

void DlgBit::focusOn(const Entry& entry) {
  if (entry.number) {
    entry.number->setFocus();
    entry.number->selectAll();
    return;
  }
  QAbstractButton* chosen = entry.options->checkedButton();
  (chosen ? chosen : entry.options->buttons().front())->setFocus();
}

}  // namespace lokari
