#include "app/ui/hit_list.h"

#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextDocument>

namespace lokari {
namespace {

enum Role { kTitle = Qt::UserRole, kExcerpt, kStems };

constexpr int kMargin = 6;
/// Before the list has been laid out.
constexpr int kNarrow = 120;

/// The text with the words that were found in bold.
QString withFoundWords(const QString& text, const QStringList& stems) {
  QString result;
  qsizetype from = 0;
  for (const WordAt& word : foundWords(text, stems)) {
    result += text.mid(from, word.start - from).toHtmlEscaped() + QStringLiteral("<b>") +
              text.mid(word.start, word.length).toHtmlEscaped() + QStringLiteral("</b>");
    from = word.start + word.length;
  }
  return result + text.mid(from).toHtmlEscaped();
}

/// Draws title and excerpt, as wide as the list.
class HitDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    item.text.clear();
    const QWidget* view = option.widget;
    view->style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, view);
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const auto role = selected ? QPalette::HighlightedText : QPalette::Text;
    QTextDocument text;
    fill(text, option, index, option.palette.color(role));
    painter->save();
    painter->translate(option.rect.topLeft());
    text.drawContents(painter);
    painter->restore();
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QTextDocument text;
    fill(text, option, index, {});
    return {kNarrow, static_cast<int>(text.size().height())};
  }

 private:
  static void fill(QTextDocument& text, const QStyleOptionViewItem& option,
                   const QModelIndex& index, const QColor& colour) {
    const auto* view = static_cast<const QAbstractItemView*>(option.widget);
    text.setDefaultFont(option.font);
    text.setDocumentMargin(kMargin);
    text.setTextWidth(std::max(view->viewport()->width(), kNarrow));
    text.setHtml(QStringLiteral("<div style=\"color:%1\"><b><u>%2</u></b><br>%3</div>")
                     .arg(colour.name(), index.data(kTitle).toString().toHtmlEscaped(),
                          withFoundWords(index.data(kExcerpt).toString(),
                                         index.data(kStems).toStringList())));
  }
};

}  // namespace

HitList::HitList(QWidget* parent) : QListWidget(parent) {
  setItemDelegate(new HitDelegate(this));
  setResizeMode(QListView::Adjust);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  connect(this, &QListWidget::itemActivated, this,
          [this](const QListWidgetItem* item) { open(row(item)); });
  connect(this, &QListWidget::itemClicked, this,
          [this](const QListWidgetItem* item) { open(row(item)); });
}

void HitList::show(const QList<ManualHit>& hits) {
  clear();
  hits_ = hits;
  for (const ManualHit& hit : hits) {
    // The text is what a screen reader tells.
    auto* item = new QListWidgetItem(hit.title + u'\n' + hit.excerpt, this);
    item->setData(kTitle, hit.title);
    item->setData(kExcerpt, hit.excerpt);
    item->setData(kStems, hit.stems);
  }
  if (!hits.isEmpty()) setCurrentRow(0);
}

void HitList::open(int row) {
  if (opened && row >= 0 && row < hits_.size()) opened(hits_[row]);
}

}  // namespace lokari
