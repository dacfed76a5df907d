#include "decoder/ui/dlg_manuf_sel.h"

#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

#include "decoder/dec_header.h"
#include "decoder/ui/dialog_buttons.h"

namespace lokari {
namespace {

constexpr int kLinesShown = 12;
constexpr int kCharactersShown = 32;

/// Between the longest name and the numbers.
constexpr int kColumnGap = 16;

QString lineOf(const Maker& maker) {
  return QStringLiteral("%1\t(%2)").arg(maker.name).arg(maker.number);
}

/// Draws what stands behind the tab in a column of its own, whatever the length of the names.
class TwoColumns final : public QStyledItemDelegate {
 public:
  TwoColumns(int column, QObject* parent) : QStyledItemDelegate(parent), column_(column) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    QStyleOptionViewItem number = option;
    initStyleOption(&number, index);
    const bool selected = number.state.testFlag(QStyle::State_Selected);
    const QRect place = option.rect.adjusted(column_, 0, 0, 0);
    number.widget->style()->drawItemText(painter, place, Qt::AlignLeft | Qt::AlignVCenter,
                                         number.palette, true,
                                         index.data().toString().section(u'\t', 1),
                                         selected ? QPalette::HighlightedText : QPalette::Text);
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = option->text.section(u'\t', 0, 0);
  }

 private:
  int column_;
};

}  // namespace

DlgManufSel::DlgManufSel(const QList<Maker>& makers, QWidget* parent)
    : QDialog(parent), lstManSel_(new QListWidget(this)) {
  setObjectName(QStringLiteral("dlgManufSel"));
  setWindowTitle(QStringLiteral("Decoder-Hersteller"));
  setModal(true);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(kDialogMargin, kDialogMargin, kDialogMargin, kDialogMargin);
  auto* label = new QLabel(QStringLiteral("&Hersteller des Decoders:"), this);
  label->setBuddy(lstManSel_);
  rows->addWidget(label);

  lstManSel_->setObjectName(QStringLiteral("lstManSel"));
  lstManSel_->setAccessibleName(QStringLiteral("Hersteller des Decoders"));
  lstManSel_->setUniformItemSizes(true);
  const QFontMetrics metrics(lstManSel_->font());
  lstManSel_->setMinimumSize(metrics.averageCharWidth() * kCharactersShown,
                             metrics.lineSpacing() * kLinesShown);
  int longest = 0;
  for (const Maker& maker : makers) {
    lstManSel_->addItem(lineOf(maker));
    longest = std::max(longest, metrics.horizontalAdvance(maker.name));
  }
  lstManSel_->setItemDelegate(new TwoColumns(longest + kColumnGap, lstManSel_));
  rows->addWidget(lstManSel_, 1);

  QPushButton* cmdOK = addOkAndCancel(this, rows, QStringLiteral("cmdOK"),
                                      QStringLiteral("cmdCancel"), [this] { accept(); });
  // No maker is the right one more than others: the user points at one.
  cmdOK->setEnabled(false);
  connect(lstManSel_, &QListWidget::itemSelectionChanged, cmdOK,
          [this, cmdOK] { cmdOK->setEnabled(!lstManSel_->selectedItems().isEmpty()); });
  connect(lstManSel_, &QListWidget::itemDoubleClicked, this, &DlgManufSel::accept);
  lstManSel_->setFocus();
}

std::optional<int> DlgManufSel::choose() {
  if (exec() != Accepted) return std::nullopt;
  return chosenNumber();
}

int DlgManufSel::chosenNumber() const {
  const QListWidgetItem* line = lstManSel_->currentItem();
  if (line == nullptr) return 0;
  QString text = line->text();
  text.chop(1);
  return digitsAtEnd(text).toInt();
}

}  // namespace lokari
