#include "decoder/ui/rows_page.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

#include "base/ui/fit_area.h"
#include "decoder/ui/control_binder.h"
#include "decoder/ui/value_edit.h"

namespace lokari {
namespace {

/// Columns of one half of the page; the right half lies kHalf columns further.
enum Column { kLabel, kField, kRead, kWrite, kBit, kGap, kHalf };

constexpr int kHeadRow = 0;
constexpr int kSpacing = 8;
/// In characters: on the smallest screens two columns fit beside each other, their names on more
/// lines.
constexpr int kLeastLabel = 27;
constexpr int kStretchRow = kRowsPerColumn + 1;

QString member(const PageRow& row, const QString& prefix, const QString& suffix = {}) {
  return prefix + pageName(row.page) + suffix + u'_' + QString::number(row.number);
}

}  // namespace

RowsPage::RowsPage(DecoderBench& bench, ControlBinder& binder, int tab, QIcon bitIcon,
                   QWidget* parent)
    : QWidget(parent), bench_(bench), binder_(binder), tab_(tab), bitIcon_(std::move(bitIcon)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
}

void RowsPage::clear() {
  // A field that goes with the focus must not tell that it was left: its row is another one now.
  for (const RowControls& controls : std::as_const(controls_)) controls.field->blockSignals(true);
  controls_.clear();
  buttons_.clear();
  delete std::exchange(content_, nullptr);
}

void RowsPage::makeHeads(QGridLayout* grid, int column) {
  const auto head = [&](int at, const QString& text) {
    grid->addWidget(new QLabel(text, scrolled_), kHeadRow, column + at, Qt::AlignCenter);
  };
  head(kField, QStringLiteral("Wert"));
  head(kRead, QStringLiteral("Lesen"));
  head(kWrite, QStringLiteral("Schreiben"));
}

RowsPage::RowControls RowsPage::makeRow(int row) {
  const PageRow& state = bench_.rows()[static_cast<size_t>(row)];
  const QString cvTag = QString::number(state.cv.value());

  auto* label = new QLabel(scrolled_);
  label->setObjectName(member(state, QStringLiteral("lab")));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);

  auto* field = new ValueEdit(scrolled_);
  field->setObjectName(state.fieldName());
  connect(field, &ValueEdit::textEdited, this,
          [this, row](const QString& text) { bench_.rowEdited(row, text); });
  connect(field, &ValueEdit::calculatorWanted, this, [this, row] { bench_.rowF2(row); });
  binder_.onLeft(field, [this, row] { bench_.rowLeft(row); });
  binder_.tips(field, [cvTag] { return cvTag; });

  auto* read = new QCheckBox(scrolled_);
  read->setObjectName(member(state, QStringLiteral("chk"), QStringLiteral("Rd")));
  connect(read, &QCheckBox::clicked, this,
          [this, row](bool checked) { bench_.rowReadToggled(row, checked); });

  auto* write = new QCheckBox(scrolled_);
  write->setObjectName(member(state, QStringLiteral("chk"), QStringLiteral("Wrt")));
  connect(write, &QCheckBox::clicked, this,
          [this, row](bool checked) { bench_.rowWriteToggled(row, checked); });

  auto* bit = new QToolButton(scrolled_);
  bit->setObjectName(member(state, QStringLiteral("bit")));
  bit->setFocusPolicy(Qt::StrongFocus);
  if (bitIcon_.isNull()) {
    bit->setText(QStringLiteral("…"));
  } else {
    bit->setIcon(bitIcon_);
  }
  connect(bit, &QToolButton::clicked, this,
          [this, row] { binder_.act([this, row] { bench_.rowBitClicked(row); }); });
  return {label, holdsLabel(scrolled_, state.fieldName()), field, read, write, bit};
}

void RowsPage::makeButtons(QBoxLayout* rows) {
  const BenchTab& tab = bench_.tabs()[static_cast<size_t>(tab_)];
  const QString suffix = pageName(tab.page) + u'_' + QString::number(tab.ordinal);
  auto* line = new QHBoxLayout;
  line->setSpacing(kSpacing);
  const auto add = [&](const QString& prefix, const QString& text) {
    auto* button = binder_.button(content_, prefix + suffix, text);
    line->addWidget(button);
    buttons_ << button;
  };
  add(QStringLiteral("cmdRead"), QStringLiteral("Lesen markieren"));
  add(QStringLiteral("cmdWrite"), QStringLiteral("Schreiben markieren"));
  line->addStretch();
  if (tab.page == page::kFirstRows) {
    // Not by the binder: every function tab has one of this name.
    auto* cmdFuncMap = new QPushButton(QStringLiteral("Funktionszuordnung ..."), content_);
    cmdFuncMap->setObjectName(QStringLiteral("cmdFuncMap"));
    cmdFuncMap->setAutoDefault(false);
    cmdFuncMap->setEnabled(tab.funcMapEnabled);
    connect(cmdFuncMap, &QPushButton::clicked, this,
            [this] { binder_.act([this] { bench_.cmdFuncMap(); }); });
    line->addWidget(cmdFuncMap);
    buttons_ << cmdFuncMap;
  }
  QPushButton* copy = binder_.copyButton(content_, suffix);
  line->addWidget(copy);
  buttons_ << copy;
  rows->addLayout(line);
}

void RowsPage::make(QWidget* before) {
  if (made() || bench_.tabs()[static_cast<size_t>(tab_)].page == 0) return;
  content_ = new QWidget(this);
  auto* parts = new QVBoxLayout(content_);
  auto* area = new FitArea(content_);
  parts->addWidget(area, 1);
  scrolled_ = new QWidget(area);
  auto* grid = new QGridLayout(scrolled_);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(kSpacing);
  grid->setVerticalSpacing(4);

  const int fieldWidth = fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 16;
  for (int column : {0, static_cast<int>(kHalf)}) {
    grid->setColumnStretch(column + kLabel, 1);
    // A name of 32 characters on the first line, a range of 24 in brackets on the second.
    grid->setColumnMinimumWidth(column + kLabel, kLeastLabel * fontMetrics().averageCharWidth());
    makeHeads(grid, column);
  }
  grid->setColumnMinimumWidth(kGap, 24);
  for (int row = 1; row <= kRowsPerColumn; ++row)
    grid->setRowMinimumHeight(row, 2 * fontMetrics().lineSpacing() + 2);
  grid->setRowStretch(kStretchRow, 1);

  QWidget* last = before;
  const auto follow = [&last](QWidget* control) {
    QWidget::setTabOrder(last, control);
    last = control;
  };
  const std::vector<PageRow>& rows = bench_.rows();
  for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
    const PageRow& state = rows[static_cast<size_t>(row)];
    if (state.tab != tab_) continue;
    const RowControls controls = makeRow(row);
    const int line = 1 + state.rowOnTab % kRowsPerColumn;
    const int column = state.rowOnTab < kRowsPerColumn ? 0 : static_cast<int>(kHalf);
    controls.field->setFixedWidth(fieldWidth);
    auto* words = new QHBoxLayout;
    words->addWidget(controls.label, 1);
    words->addWidget(controls.holds);
    grid->addLayout(words, line, column + kLabel);
    grid->addWidget(controls.field, line, column + kField);
    grid->addWidget(controls.read, line, column + kRead, Qt::AlignCenter);
    grid->addWidget(controls.write, line, column + kWrite, Qt::AlignCenter);
    grid->addWidget(controls.bit, line, column + kBit);
    controls_.insert(row, controls);
    showRow(row);
    for (QWidget* control : std::initializer_list<QWidget*>{controls.field, controls.read,
                                                            controls.write, controls.bit})
      follow(control);
  }
  area->take(scrolled_);
  makeButtons(parts);
  for (QPushButton* button : std::as_const(buttons_)) follow(button);
  layout()->addWidget(content_);
  content_->show();
}

void RowsPage::showRow(int row) {
  const auto found = controls_.constFind(row);
  if (found == controls_.cend()) return;
  const PageRow& state = bench_.rows()[static_cast<size_t>(row)];
  found->label->setText(state.label);
  found->label->setToolTip(state.labelTip);
  if (found->field->text() != state.text) found->field->setText(state.text);
  found->field->setAccessibleName(state.label);
  showValueState(found->field, state.colour, state.locked, state.holds);
  showHolds(found->holds, state.holds);
  found->read->setChecked(state.read);
  found->read->setEnabled(state.readEnabled);
  found->read->setAccessibleName(state.labelTip + QStringLiteral(" lesen"));
  showIdle(found->read, state.idle);
  showIdle(found->write, state.idle);
  found->write->setChecked(state.write);
  found->write->setEnabled(state.writeEnabled);
  found->write->setAccessibleName(state.labelTip + QStringLiteral(" schreiben"));
  found->bit->setEnabled(state.bitEnabled && bench_.bitDialogBox);
  found->bit->setAccessibleName(state.labelTip + QStringLiteral(" im Einzelnen"));
}

}  // namespace lokari
