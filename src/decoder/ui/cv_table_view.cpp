#include "decoder/ui/cv_table_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>
#include <numeric>

#include "base/ui/pictures.h"
#include "decoder/ui/control_binder.h"
#include "decoder/ui/text_colour.h"
#include "decoder/ui/value_edit.h"

namespace lokari {
namespace {

/// Draws the three columns of pictures.
class PictureDelegate final : public QStyledItemDelegate {
 public:
  PictureDelegate(const CvTableModel& model, const Pictures& pictures, QObject* parent)
      : QStyledItemDelegate(parent), model_(model), pictures_(pictures) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    const auto mark = model_.mark(index);
    if (mark == CvTableModel::Mark::None) return;
    painter->save();
    if (!model_.limit(index).isEmpty()) painter->setOpacity(kIdleOpacity);
    draw(painter, option, mark);
    painter->restore();
  }

 private:
  void draw(QPainter* painter, const QStyleOptionViewItem& option, CvTableModel::Mark mark) const {
    const QPixmap& picture = pictureOf(mark, option.widget->devicePixelRatioF());
    if (picture.isNull()) {
      painter->drawText(option.rect, Qt::AlignCenter, signOf(mark));
      return;
    }
    const QSizeF size = picture.deviceIndependentSize();
    const QPointF middle = QRectF(option.rect).center();
    painter->drawPixmap(middle - QPointF(size.width() / 2, size.height() / 2), picture);
  }

  /// Without its picture the mark can still be seen.
  static QString signOf(CvTableModel::Mark mark) {
    if (mark == CvTableModel::Mark::Bits) return QStringLiteral("...");
    return mark == CvTableModel::Mark::Crossed ? QStringLiteral("X") : QStringLiteral("-");
  }

  const QPixmap& pictureOf(CvTableModel::Mark mark, double pixelRatio) const {
    if (loadedFor_ != pixelRatio) {
      loadedFor_ = pixelRatio;
      empty_ = pictures_.pixmap(QStringLiteral("chkbox.bmp"), pixelRatio);
      crossed_ = pictures_.pixmap(QStringLiteral("chkbox_x.bmp"), pixelRatio);
      bits_ = pictures_.pixmap(QStringLiteral("bitbut.bmp"), pixelRatio);
    }
    if (mark == CvTableModel::Mark::Bits) return bits_;
    return mark == CvTableModel::Mark::Crossed ? crossed_ : empty_;
  }

  const CvTableModel& model_;
  const Pictures pictures_;
  mutable double loadedFor_ = 0;
  mutable QPixmap empty_, crossed_, bits_;
};

/// Twips to pixels at 96 dpi.
constexpr double kTwipsPerPixel = 15.0;

}  // namespace

CvTableView::CvTableView(DecoderBench& bench, ControlBinder& binder, const Pictures& pictures,
                         QWidget* parent)
    : QTableView(parent), bench_(bench), binder_(binder), model_(new CvTableModel(bench, this)) {
  // A head works on the rows that were selected last; they stay in view as long as it does.
  connect(&bench, &DecoderBench::gridReset, this, &CvTableView::showSelection);
  setObjectName(QStringLiteral("cvTable"));
  setAccessibleName(QStringLiteral("Alle CVs"));
  setModel(model_);
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setAlternatingRowColors(true);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  for (const GridColumn column : {GridColumn::Read, GridColumn::Write, GridColumn::Details})
    setItemDelegateForColumn(static_cast<int>(column),
                             new PictureDelegate(*model_, pictures, this));

  // A click on a head works on the selected rows; it must not select the column.
  QHeaderView* heads = horizontalHeader();
  heads->setHighlightSections(false);
  disconnect(heads, &QHeaderView::sectionPressed, this, nullptr);
  disconnect(heads, &QHeaderView::sectionEntered, this, nullptr);
  heads->setSectionsClickable(true);
  connect(heads, &QHeaderView::sectionClicked, this, [this](int section) {
    binder_.act([this, section] { bench_.gridHeaderClicked(static_cast<GridColumn>(section)); });
  });
  makeEditor();
  binder.bindState(this);
}

void CvTableView::makeEditor() {
  const QString name = QStringLiteral("tabText");
  tabText_ = new ValueEdit(viewport());
  tabText_->setObjectName(name);
  tabText_->setAccessibleName(QStringLiteral("Wert"));
  binder_.bind(name, [this](const Control& control) {
    if (tabText_->text() != control.text) tabText_->setText(control.text);
    showValueState(tabText_, control.colour, false, control.holds);
  });
  connect(tabText_, &ValueEdit::textEdited, this,
          [this, name](const QString& text) { bench_.fieldEdited(name, text); });
  connect(tabText_, &ValueEdit::calculatorWanted, this, [this, name] { bench_.fieldF2(name); });
  binder_.onLeft(tabText_, [this, name] { bench_.fieldLeft(name); });
  tabText_->setAlignment(Qt::AlignRight);
  tabText_->setFrame(false);
  tabText_->hide();
  tabText_->installEventFilter(this);
  connect(&bench_, &DecoderBench::gridEditOpened, this, &CvTableView::openEditor);
  connect(&bench_, &DecoderBench::gridEditClosed, this, [this] {
    const bool hadFocus = tabText_->hasFocus();
    editedRow_ = 0;
    tabText_->hide();
    if (hadFocus) setFocus();
  });
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &CvTableView::placeEditor);
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &CvTableView::placeEditor);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, &CvTableView::placeEditor);
}

void CvTableView::press(const QModelIndex& index) {
  if (!index.isValid()) return;
  const int row = CvTableModel::gridRow(index);
  const auto column = static_cast<GridColumn>(index.column());
  binder_.act([this, row, column] { bench_.gridClicked(row, column); });
}

void CvTableView::mouseReleaseEvent(QMouseEvent* event) {
  const QModelIndex pressed = currentIndex();
  QTableView::mouseReleaseEvent(event);
  // A drag or a click with Shift or Ctrl selects rows and changes none of them.
  if (event->button() != Qt::LeftButton || event->modifiers() != Qt::NoModifier) return;
  if (indexAt(event->pos()) == pressed && selectionModel()->selectedRows().size() == 1)
    press(pressed);
}

void CvTableView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
      press(currentIndex());
      return;
    default:
      QTableView::keyPressEvent(event);
  }
}

void CvTableView::selectionChanged(const QItemSelection& selected,
                                   const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  const QModelIndexList rows = selectionModel()->selectedRows();
  if (rows.isEmpty()) return;
  const auto [first, last] = std::minmax_element(
      rows.begin(), rows.end(),
      [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
  bench_.gridSelected(CvTableModel::gridRow(*first), CvTableModel::gridRow(*last));
}

void CvTableView::showSelection() {
  const CvGrid& grid = bench_.grid();
  if (!grid.hasSelection()) return;
  selectionModel()->select({model_->indexOf(grid.selFirst(), GridColumn::Cv),
                            model_->indexOf(grid.selLast(), GridColumn::Details)},
                           QItemSelectionModel::ClearAndSelect);
}

void CvTableView::openEditor(int gridRow) {
  editedRow_ = gridRow;
  scrollTo(model_->indexOf(gridRow, GridColumn::Value));
  placeEditor();
  tabText_->show();
  tabText_->raise();
  tabText_->setFocus();
  tabText_->selectAll();
}

void CvTableView::placeEditor() {
  if (editedRow_ > 0)
    tabText_->setGeometry(visualRect(model_->indexOf(editedRow_, GridColumn::Value)));
}

bool CvTableView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tabText_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape) {
      bench_.gridEditGivenUp();
      return true;
    }
    // Leaving the box is what takes its value; the window stays open.
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      setFocus();
      return true;
    }
  }
  return QTableView::eventFilter(watched, event);
}

void CvTableView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  setColumnWidths();
}

void CvTableView::setColumnWidths() {
  // The columns keep their proportions and fill the table; their heads are never cut.
  double factor = viewport()->width();
  factor /= std::accumulate(
      kGridColumns.begin(), kGridColumns.end(), 0.0,
      [](double sum, const GridColumnHead& head) { return sum + head.width / kTwipsPerPixel; });
  for (int column = 0; column < static_cast<int>(kGridColumns.size()); ++column) {
    const double width = kGridColumns[static_cast<size_t>(column)].width / kTwipsPerPixel;
    setColumnWidth(column, std::max(static_cast<int>(width * factor),
                                    horizontalHeader()->sectionSizeHint(column)));
  }
}

}  // namespace lokari
