#include "decoder/ui/frm_decoder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "base/ui/pictures.h"
#include "base/ui/tool_tip.h"
#include "base/ui/window_scale.h"
#include "decoder/ui/choice_list.h"
#include "decoder/ui/control_binder.h"
#include "decoder/ui/cv_table_view.h"
#include "decoder/ui/decoder_dialogs.h"
#include "decoder/ui/dlg_spd_tab.h"
#include "decoder/ui/fixed_pages.h"
#include "decoder/ui/rows_page.h"
#include "decoder/ui/value_edit.h"

namespace lokari {
namespace {

/// Where the window opens, from the main window's corner: 200 and 640 twips.
constexpr QPoint kFromMainWindow(13, 43);
/// Added to the width of a button with a long text.
constexpr int kButtonAir = 4;
/// Length that typing may give a set's name.
constexpr qsizetype kSetNameLength = 8;

}  // namespace

QString vehicleLine(const QString& name, const QString& address, const QString& collection) {
  const auto orNone = [](const QString& label, const QString& text) {
    return label + (text.isEmpty() ? QStringLiteral("(keine)") : text);
  };
  return (name.isEmpty() ? QStringLiteral("(ohne Namen)") : name) +
         orNone(QStringLiteral(", Adresse "), address) +
         orNone(QStringLiteral(", Sammlung "), collection);
}

FrmDecoder::FrmDecoder(DecoderBench& bench, StationLink& link, Clock& clock,
                       const Pictures& pictures, const WindowScale& scale, QWidget* parent)
    : QDialog(parent),
      bench_(bench),
      link_(link),
      scale_(scale),
      binder_(new ControlBinder(bench, this)) {
  setObjectName(QStringLiteral("frmDecoder"));
  setWindowTitle(QStringLiteral("Decoder programmieren"));
  setModal(true);
  plugInDialogs(bench, link, scale, this);

  contents_ = new QWidget(this);
  auto* rows = new QVBoxLayout(contents_);
  rows->setSpacing(10);
  makeHeader(rows);
  makeTabs(rows, pictures);
  makeReport(rows);
  makeFooter(rows);
  scale.arrange(this, contents_);

  toolTip_ = new ToolTip(this, clock);
  connect(binder_, &ControlBinder::tipWanted, this, [this](QWidget* field, const QString& tag) {
    toolTip_->showFor(field, bench_.DcToolTips(tag).trimmed());
  });
  connect(binder_, &ControlBinder::tipUnwanted, toolTip_, &ToolTip::hideTip);
  connectBench();
  showTabs();
}

void FrmDecoder::makeHeader(QBoxLayout* rows) {
  QWidget* parent = rows->parentWidget();
  lblVehicle_ = new QLabel(parent);
  lblVehicle_->setObjectName(QStringLiteral("lblVehicle"));
  lblVehicle_->setTextFormat(Qt::PlainText);
  lblVehicle_->setWordWrap(true);
  QFont semibold = lblVehicle_->font();
  semibold.setWeight(QFont::DemiBold);
  lblVehicle_->setFont(semibold);
  rows->addWidget(lblVehicle_);
  auto* line = new QHBoxLayout;
  line->setSpacing(8);
  const auto caption = [&](const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text, parent);
    label->setBuddy(buddy);
    line->addWidget(label);
    line->addWidget(buddy, 1);
  };

  caption(QStringLiteral("&Hersteller:"),
          binder_->list(parent, QStringLiteral("cbDcManuf"), QStringLiteral("Hersteller"),
                        [this](const QString& name) { return bench_.chooseManufacturer(name); }));
  line->addSpacing(8);
  caption(QStringLiteral("&Decoder:"),
          binder_->list(parent, QStringLiteral("cbDcDecoder"), QStringLiteral("Decoder"),
                        [this](const QString& name) { return bench_.chooseDecoder(name); }));
  line->addSpacing(8);

  const QString setList = QStringLiteral("cbDcVer");
  cbDcVer_ = binder_->list(parent, setList, QStringLiteral("CV-Satz"), [this](const QString& name) {
    bench_.chooseSet(name);
    return true;
  });
  auto* name = new ValueEdit;
  cbDcVer_->setEditable(true);
  cbDcVer_->setInsertPolicy(QComboBox::NoInsert);
  cbDcVer_->setLineEdit(name);
  cbDcVer_->setCompleter(nullptr);
  // The list has the focus and passes the keys on to its text.
  cbDcVer_->installEventFilter(this);
  binder_->bind(setList, [this](const Control& control) { showSetNames(control); });
  connect(name, &ValueEdit::textEdited, this, &FrmDecoder::limitSetName);
  binder_->onLeft(name, [this, name] { bench_.setNameLeft(name->text()); });
  caption(QStringLiteral("CV-&Satz:"), cbDcVer_);

  line->addWidget(disabledButton(parent, QStringLiteral("cmdName"), QStringLiteral("Name")));
  line->addWidget(
      binder_->button(parent, QStringLiteral("cmdCopy"), QStringLiteral("Satz 1 kopieren ...")));
  rows->addLayout(line);
}

void FrmDecoder::makeTabs(QBoxLayout* rows, const Pictures& pictures) {
  rows->addWidget(binder_->label(rows->parentWidget(), QStringLiteral("labNoDescription"), {}));
  ssDecoder_ = new QTabWidget(rows->parentWidget());
  ssDecoder_->setObjectName(QStringLiteral("ssDecoder"));
  ssDecoder_->setUsesScrollButtons(true);
  ssDecoder_->tabBar()->setAccessibleName(QStringLiteral("Seiten des Decoders"));
  ssDecoder_->addTab(makeGeneralPage(*binder_, ssDecoder_), {});
  ssDecoder_->addTab(makeDrivePage(bench_, *binder_, ssDecoder_), {});
  rowsPages_.assign(kTabCount, nullptr);
  const QIcon bitIcon = pictures.icon(QStringLiteral("bitbut.bmp"));
  for (int tab = static_cast<int>(TabNumber::Functions); tab < kTabCount; ++tab) {
    auto* page = new RowsPage(bench_, *binder_, tab, bitIcon, ssDecoder_);
    rowsPages_[static_cast<size_t>(tab)] = page;
    ssDecoder_->addTab(page, {});
  }
  ssDecoder_->addTab(new CvTableView(bench_, *binder_, pictures, ssDecoder_),
                     QStringLiteral("Alle CVs"));
  // The tabs, not their pages, are disabled while a decoder is being chosen.
  binder_->bindState(ssDecoder_);
  connect(ssDecoder_, &QTabWidget::currentChanged, this, &FrmDecoder::showTab);
  rows->addWidget(ssDecoder_, 1);
}

void FrmDecoder::makeReport(QBoxLayout* rows) {
  QWidget* parent = rows->parentWidget();
  rows->addWidget(binder_->label(parent, QStringLiteral("lblLegend"), {}));
  auto* lblReport = new QLabel(parent);
  lblReport->setObjectName(QStringLiteral("lblReport"));
  lblReport->setAccessibleName(QStringLiteral("Ergebnis des letzten Auftrags"));
  lblReport->setTextFormat(Qt::PlainText);
  lblReport->setWordWrap(true);
  lblReport->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  binder_->bind(lblReport->objectName(), [lblReport](const Control& control) {
    lblReport->setText(control.caption);
    lblReport->setVisible(!control.caption.isEmpty());
  });
  rows->addWidget(lblReport);
}

void FrmDecoder::makeJobButtons(QGridLayout* grid) {
  QWidget* parent = grid->parentWidget();
  struct Line {
    const char16_t* caption;
    const char16_t* all;
    const char16_t* none;
    const char16_t* programming;
    const char16_t* programmingText;
    const char16_t* main;
    const char16_t* mainText;
  };
  const Line lines[] = {
      {u"Lesen markieren:", u"cmdReadAll", u"cmdReadNone", u"cmdDcRead", u"Decoder &lesen",
       u"cmdDcReadMain", u"Am Hauptgleis l&esen"},
      {u"Schreiben markieren:", u"cmdWriteAll", u"cmdWriteNone", u"cmdDcProg",
       u"Decoder s&chreiben", u"cmdDcProgMain", u"Am Hauptgleis schrei&ben"},
  };
  int row = 0;
  for (const Line& line : lines) {
    const QString caption = QString::fromUtf16(line.caption);
    grid->addWidget(new QLabel(caption, parent), row, 0);
    int column = 1;
    const auto add = [&](const char16_t* name, const QString& text, const QString& accessible) {
      QPushButton* button = binder_->button(parent, QString::fromUtf16(name), text);
      if (!accessible.isEmpty()) button->setAccessibleName(accessible);
      button->setMinimumWidth(button->sizeHint().width() + kButtonAir);
      grid->addWidget(button, row, column++);
    };
    add(line.all, QStringLiteral("Alle"), caption + QStringLiteral(" alle"));
    add(line.none, QStringLiteral("Keine"), caption + QStringLiteral(" keine"));
    grid->setColumnMinimumWidth(column++, 16);
    add(line.programming, QString::fromUtf16(line.programmingText), {});
    add(line.main, QString::fromUtf16(line.mainText), {});
    ++row;
  }
}

void FrmDecoder::makeFooter(QBoxLayout* rows) {
  QWidget* parent = rows->parentWidget();
  auto* line = new QHBoxLayout;
  auto* jobs = new QGridLayout;
  jobs->setHorizontalSpacing(6);
  line->addLayout(jobs);
  rows->addLayout(line);
  makeJobButtons(jobs);

  line->addSpacing(16);
  auto* checks = new QVBoxLayout;
  checks->addWidget(
      binder_->checkBox(parent, QStringLiteral("chkDcAdrChk"), QStringLiteral("Adress&kontrolle")));
  checks->addWidget(binder_->checkBox(parent, QStringLiteral("chkDcManufChk"),
                                      QStringLiteral("Herstellerko&ntrolle")));
  line->addLayout(checks);
  line->addStretch(1);

  auto* ends = new QVBoxLayout;
  auto* cmdOK = new QPushButton(QStringLiteral("&OK"), parent);
  cmdOK->setObjectName(QStringLiteral("cmdOK"));
  cmdOK->setAutoDefault(false);
  binder_->bindState(cmdOK);
  connect(cmdOK, &QPushButton::clicked, this, &FrmDecoder::accepted);
  auto* cmdCancel = new QPushButton(QStringLiteral("Abbruch"), parent);
  cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
  cmdCancel->setAutoDefault(false);
  // A click leaves the focus where it is: a refused value must not keep the user from cancelling.
  cmdCancel->setFocusPolicy(Qt::TabFocus);
  binder_->bindState(cmdCancel);
  connect(cmdCancel, &QPushButton::clicked, this, &FrmDecoder::reject);
  ends->addWidget(cmdOK);
  ends->addWidget(cmdCancel);
  line->addLayout(ends);
}

void FrmDecoder::connectBench() {
  connect(&bench_, &DecoderBench::tabsChanged, this, &FrmDecoder::showTabs);
  connect(&bench_, &DecoderBench::tabSelected, ssDecoder_, &QTabWidget::setCurrentIndex);
  connect(&bench_, &DecoderBench::rowsReset, this, &FrmDecoder::resetRows);
  connect(&bench_, &DecoderBench::rowChanged, this, [this](int row) {
    const int tab = bench_.rows()[static_cast<size_t>(row)].tab;
    rowsPages_[static_cast<size_t>(tab)]->showRow(row);
  });
  connect(&bench_, &DecoderBench::focusRequested, this, &FrmDecoder::focusField);
  connect(&bench_, &DecoderBench::toolTipHidden, toolTip_, &ToolTip::hideTip);
  connect(&bench_, &DecoderBench::jobRequested, this, &FrmDecoder::runJob);
  connect(&bench_, &DecoderBench::busyChanged, this, [this](bool busy) {
    if (busy) {
      setCursor(Qt::WaitCursor);
    } else {
      unsetCursor();
    }
  });
  bench_.tableListBox = [this](SpeedTableList& list) {
    DlgSpdTab dialog(list, this);
    scale_.ResizeWindow(&dialog);
    dialog.exec();
  };
  connect(&bench_, &DecoderBench::closed, this,
          [this](bool success) { done(success ? Accepted : Rejected); });
}

bool FrmDecoder::edit(CvRecord& record, const QString& address, const QString& vehicle) {
  record_ = &record;
  lblVehicle_->setText(vehicle);
  lblVehicle_->setVisible(!vehicle.isEmpty());
  if (parentWidget()) move(parentWidget()->window()->pos() + kFromMainWindow);
  resize(designSize());
  scale_.ResizeWindow(this);
  bench_.open(record, address);
  const bool success = exec() == Accepted;
  binder_->forgetLeft();
  record_ = nullptr;
  return success;
}

QSize FrmDecoder::designSize() const {
  // A page of twenty rows with their longest names on two lines, and the legend below it.
  const QFontMetrics metrics = fontMetrics();
  return sizeHint().expandedTo({158 * metrics.averageCharWidth(), 42 * metrics.lineSpacing()});
}

void FrmDecoder::accepted() {
  binder_->act([this] { bench_.cmdOK(*record_); });
}

void FrmDecoder::reject() {
  if (jobWaits_) return endWait();
  switch (bench_.askToLeave()) {
    case Leave::Stay:
      return;
    case Leave::Store:
      accepted();
      return;
    case Leave::Drop:
      binder_->forgetLeft();
      bench_.cmdCancel();
  }
}

void FrmDecoder::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  auto* dc_adr = findChild<ValueEdit*>(QStringLiteral("dc_adr"));
  dc_adr->setFocus();
  dc_adr->selectAll();
}

void FrmDecoder::showTabs() {
  const std::vector<BenchTab>& tabs = bench_.tabs();
  for (int tab = 0; tab < static_cast<int>(tabs.size()); ++tab) {
    const BenchTab& state = tabs[static_cast<size_t>(tab)];
    ssDecoder_->setTabText(tab, state.caption);
    ssDecoder_->setTabVisible(tab, state.visible);
  }
}

void FrmDecoder::showTab(int tab) {
  if (tab < 0 || tab >= kTabCount) return;
  if (RowsPage* page = rowsPages_[static_cast<size_t>(tab)]) page->make(ssDecoder_->tabBar());
  bench_.selectTab(tab);
}

void FrmDecoder::resetRows() {
  binder_->forgetLeft();
  for (RowsPage* page : rowsPages_)
    if (page) page->clear();
  const int tab = ssDecoder_->currentIndex();
  if (tab >= 0 && tab < kTabCount)
    if (RowsPage* page = rowsPages_[static_cast<size_t>(tab)]) page->make(ssDecoder_->tabBar());
}

void FrmDecoder::focusField(const QString& name, bool selectAll) {
  for (const PageRow& row : bench_.rows())
    if (row.fieldName() == name) ssDecoder_->setCurrentIndex(row.tab);
  auto* field = findChild<ValueEdit*>(name);
  if (!field) return;
  for (int tab = 0; tab < ssDecoder_->count(); ++tab)
    if (ssDecoder_->widget(tab)->isAncestorOf(field)) ssDecoder_->setCurrentIndex(tab);
  field->setFocus();
  if (selectAll) field->selectAll();
}

void FrmDecoder::showSetNames(const Control& control) {
  QStringList shown;
  for (int i = 0; i < cbDcVer_->count(); ++i) shown << cbDcVer_->itemText(i);
  if (shown != control.items) {
    cbDcVer_->clear();
    cbDcVer_->addItems(control.items);
  }
  cbDcVer_->setCurrentIndex(static_cast<int>(control.items.indexOf(control.text)));
  cbDcVer_->setEditText(control.text);
  setNameLength_ = control.text.size();
  showState(cbDcVer_, control);
}

void FrmDecoder::limitSetName(const QString& text) {
  // What keys cannot type cannot be pasted either; a longer stored name may be shortened.
  if (text.size() > std::max(kSetNameLength, setNameLength_))
    cbDcVer_->setEditText(text.left(kSetNameLength));
  setNameLength_ = cbDcVer_->currentText().size();
}

bool FrmDecoder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == cbDcVer_ && event->type() == QEvent::KeyPress) {
    const QString typed = static_cast<QKeyEvent*>(event)->text();
    if (!typed.isEmpty() &&
        !DecoderBench::setNameTakes(cbDcVer_->currentText(), typed.at(0).unicode(),
                                    cbDcVer_->lineEdit()->selectedText().size()))
      return true;
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace lokari
