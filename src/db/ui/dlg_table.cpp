#include "db/ui/dlg_table.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

#include <functional>
#include <utility>

#include "base/prompt.h"
#include "base/ui/window_scale.h"
#include "db/database.h"
#include "db/record_form.h"
#include "db/vehicle_list.h"

namespace lokari {
namespace {

constexpr QSize kDesignSize(780, 480);

/// What each column is wide enough for until the user sets it otherwise.
constexpr const char16_t* kSamples[VehicleList::kColumns] = {
    u"Sammlung Wohnzim M", u"10239 MM",           u"MMMMMMMM", u"Elektrotriebwagen M",
    u"Güterlogistik M",    u"Nordlicht Modell M", u"MMMMMMMM"};

QString ownName() {
  return QStringLiteral("dlgTable");
}

/// A grid in which typing searches.
class VehicleGrid final : public QTableView {
 public:
  using QTableView::QTableView;
  std::function<void(const QString& text)> typed;

  void keyboardSearch(const QString& text) override { typed(text); }
};

}  // namespace

DlgTable::DlgTable(RecordForm& form, const WindowScale& scale, QWidget* parent)
    : QDialog(parent), form_(form), scale_(scale), list_(new VehicleList(this)) {
  setObjectName(ownName());
  setWindowTitle(QStringLiteral("Fahrzeugliste"));
  setModal(true);
  resize(kDesignSize);
  list_->load(*form_.database(), form_.sqlFilter);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(12, 12, 12, 12);
  rows->setSpacing(10);
  addSearch(*rows);
  addGrid(*rows);
  addButtons(*rows);
  restoreWidths();
  grid_->setFocus();
  standAtPending();
}

void DlgTable::addSearch(QVBoxLayout& rows) {
  auto* line = new QHBoxLayout;
  auto* caption = new QLabel(QStringLiteral("&Suchen:"), this);
  txtSearch_ = new QLineEdit(this);
  txtSearch_->setObjectName(QStringLiteral("txtSearch"));
  txtSearch_->setAccessibleName(QStringLiteral("Suchen in der Fahrzeugliste"));
  txtSearch_->setToolTip(QStringLiteral("Text aus irgendeiner Spalte; F3 sucht weiter"));
  txtSearch_->setClearButtonEnabled(true);
  txtSearch_->installEventFilter(this);
  caption->setBuddy(txtSearch_);
  labSearch_ = new QLabel(QStringLiteral("kein Treffer"), this);
  labSearch_->setObjectName(QStringLiteral("labSearch"));
  labSearch_->hide();
  line->addWidget(caption);
  line->addWidget(txtSearch_, 1);
  line->addWidget(labSearch_);
  rows.addLayout(line);
  connect(txtSearch_, &QLineEdit::textChanged, this, [this] { search(0); });
  connect(new QShortcut(QKeySequence(Qt::Key_F3), this), &QShortcut::activated, this,
          &DlgTable::searchNext);
}

void DlgTable::addGrid(QVBoxLayout& rows) {
  auto* grid = new VehicleGrid(this);
  grid_ = grid;
  grid->setObjectName(QStringLiteral("DBGrid1"));
  grid->setAccessibleName(QStringLiteral("Fahrzeugliste"));
  grid->setModel(list_);
  grid->setSelectionBehavior(QAbstractItemView::SelectRows);
  grid->setSelectionMode(QAbstractItemView::SingleSelection);
  grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grid->setAlternatingRowColors(true);
  grid->setTabKeyNavigation(false);
  grid->setWordWrap(false);
  // Rows of one height: nothing is measured row by row.
  grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  grid->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  grid->verticalHeader()->hide();
  QHeaderView* header = grid->horizontalHeader();
  header->setStretchLastSection(true);
  header->setHighlightSections(false);
  // The third click on a header brings the order of collections and addresses back.
  header->setSortIndicator(-1, Qt::AscendingOrder);
  header->setSortIndicatorClearable(true);
  grid->setSortingEnabled(true);
  grid->typed = [this](const QString& text) {
    txtSearch_->setFocus();
    txtSearch_->setText(text);
  };
  connect(grid, &QTableView::doubleClicked, this, &DlgTable::choose);
  connect(header, &QHeaderView::sortIndicatorChanged, this,
          [this] { grid_->scrollTo(grid_->currentIndex()); });
  rows.addWidget(grid);
}

void DlgTable::addButtons(QVBoxLayout& rows) {
  auto* line = new QHBoxLayout;
  line->addStretch();
  auto* ok = new QPushButton(QStringLiteral("&OK"), this);
  ok->setObjectName(QStringLiteral("OKButton"));
  ok->setAccessibleName(QStringLiteral("Fahrzeug anzeigen"));
  ok->setDefault(true);
  ok->setEnabled(list_->rowCount() > 0);
  auto* cancel = new QPushButton(QStringLiteral("Abbruch"), this);
  cancel->setObjectName(QStringLiteral("CancelButton"));
  cancel->setAccessibleName(QStringLiteral("Abbruch"));
  cancel->setAutoDefault(false);
  line->addWidget(ok);
  line->addWidget(cancel);
  rows.addLayout(line);
  connect(ok, &QPushButton::clicked, this, &DlgTable::choose);
  connect(cancel, &QPushButton::clicked, this, &DlgTable::reject);
}

void DlgTable::restoreWidths() {
  const QList<int> stored = scale_.storedColumns(ownName());
  for (int column = 0; column < VehicleList::kColumns; ++column) {
    const bool known = stored.size() == VehicleList::kColumns && stored[column] > 0;
    grid_->setColumnWidth(
        column, known ? stored[column]
                      : fontMetrics().horizontalAdvance(QString::fromUtf16(kSamples[column])));
  }
}

void DlgTable::standAtPending() {
  const QString pending = std::exchange(form_.pendingFind, QString());
  int row = 0;
  if (!pending.isEmpty()) {
    try {
      row = list_->firstRow(*form_.database(), pending);
    } catch (const StorageError&) {
      // A quote in the collection's name makes the condition none: the list begins at its top.
      row = 0;
    }
  }
  select(row < 0 ? 0 : row);
}

void DlgTable::select(int row) {
  if (row >= list_->rowCount()) return;
  const QModelIndex index = list_->index(row, 0);
  grid_->setCurrentIndex(index);
  grid_->scrollTo(index, QAbstractItemView::PositionAtCenter);
}

void DlgTable::search(int from) {
  const QString text = txtSearch_->text();
  labSearch_->hide();
  if (text.isEmpty()) return;
  const int row = list_->rowWith(text, from);
  if (row >= 0) {
    select(row);
  } else {
    labSearch_->show();
  }
}

void DlgTable::searchNext() {
  search(grid_->currentIndex().row() + 1);
}

// The keys that move through the list do so from the search line too.
bool DlgTable::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtSearch_ && event->type() == QEvent::KeyPress) {
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_PageUp:
      case Qt::Key_PageDown:
        QCoreApplication::sendEvent(grid_, event);
        return true;
      default:
        break;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void DlgTable::choose() {
  const QModelIndex current = grid_->currentIndex();
  if (!current.isValid()) return;
  form_.pendingFind = list_->condition(current.row());
  accept();
}

void DlgTable::done(int result) {
  QList<int> widths;
  for (int column = 0; column < VehicleList::kColumns; ++column) {
    widths << grid_->columnWidth(column);
  }
  scale_.storeColumns(ownName(), widths);
  QDialog::done(result);
}

void butTable(RecordForm& form, Prompt& prompt, const WindowScale& scale, QWidget* parent) {
  if (!form.prepareList()) return;
  try {
    DlgTable dlgTable(form, scale, parent);
    scale.ResizeWindow(&dlgTable);
    dlgTable.exec();
  } catch (const StorageError& error) {
    form.pendingFind.clear();
    prompt.message(error.text());
    return;
  }
  form.takeFromList();
}

}  // namespace lokari
