#include "db/ui/dlg_dc_decoder.h"

#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "base/prompt.h"
#include "db/list_grid.h"
#include "db/storage_error.h"
#include "db/type_rules.h"
#include "db/ui/list_grid_view.h"

namespace lokari {
namespace {

constexpr QSize kDesignSize(380, 460);

}  // namespace

DlgDcDecoder::DlgDcDecoder(Database& database, Prompt& prompt, const CatalogueFiles& files,
                           int maker, const WindowScale& scale, QWidget* parent)
    : GridDialog(QStringLiteral("dlgDcDecoder"), QStringLiteral("Decodertypen"), scale, parent),
      prompt_(prompt),
      catalogue_(&database),
      makers_(new QComboBox(this)) {
  addMakers();
  auto rules = std::make_unique<TypeRules>(database, prompt, files);
  rules_ = rules.get();
  shown_ = preselected(maker);
  makers_->setCurrentIndex(shown_);
  const int number = makers_->currentData().toInt();
  rules->setMaker({number, makers_->currentText()});
  auto rows = std::make_unique<ListGrid>(database, prompt, std::move(rules));
  rows->open(typesQuery(number));
  build(std::move(rows), QStringLiteral("datDcDecoders"));
  grid().stretch(TypeRules::kType);
  addHint();
  resize(kDesignSize);
  connect(makers_, &QComboBox::currentIndexChanged, this, &DlgDcDecoder::chooseMaker);
}

void DlgDcDecoder::addMakers() {
  makers_->setObjectName(QStringLiteral("DBCombo1"));
  makers_->setAccessibleName(QStringLiteral("Decoderhersteller"));
  // As for the button of the dialog: a click leaves what is being typed alone until it chooses.
  makers_->setFocusPolicy(Qt::TabFocus);
  for (const Maker& maker : catalogue_.makers()) makers_->addItem(maker.name, maker.number);
  auto* caption = new QLabel(QStringLiteral("&Hersteller:"), this);
  caption->setBuddy(makers_);
  auto* line = new QHBoxLayout;
  line->addWidget(caption);
  line->addWidget(makers_, 1);
  top().addLayout(line);
}

void DlgDcDecoder::addHint() {
  auto* hint = new QLabel(QStringLiteral("Hinweis: Decodertypen, welche bereits Fahrzeugen "
                                         "zugeordnet wurden,  können nicht verändert oder "
                                         "gelöscht werden."),
                          this);
  hint->setObjectName(QStringLiteral("labHint"));
  hint->setWordWrap(true);
  bottom().addWidget(hint);
}

int DlgDcDecoder::preselected(int maker) const {
  if (maker > 0 && makers_->findData(maker) >= 0) return makers_->findData(maker);
  for (int line = 0; line < makers_->count(); ++line) {
    if (makers_->itemData(line).toInt() > 0) return line;
  }
  return makers_->count() > 0 ? 0 : -1;
}

void DlgDcDecoder::chooseMaker() {
  const int chosen = makers_->currentIndex();
  if (chosen == shown_) return;
  if (grid().storeRow()) {
    // A maker that is gone meanwhile has no types.
    const Maker maker =
        catalogue_.makerByNumber(makers_->itemData(chosen).toInt()).value_or(Maker());
    try {
      rows().open(typesQuery(maker.number));
      rules_->setMaker(maker);
      shown_ = chosen;
      grid().setCurrentIndex(rows().index(0, 0));
      setColumnWidths();
      return;
    } catch (const StorageError& error) {
      prompt_.message(error.text());
    }
  }
  const QSignalBlocker quiet(makers_);
  makers_->setCurrentIndex(shown_);
}

}  // namespace lokari
