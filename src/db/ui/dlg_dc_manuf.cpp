#include "db/ui/dlg_dc_manuf.h"

#include "db/catalogue.h"
#include "db/list_grid.h"
#include "db/maker_rules.h"
#include "db/ui/list_grid_view.h"

namespace lokari {
namespace {

constexpr QSize kDesignSize(380, 420);

}  // namespace

DlgDcManuf::DlgDcManuf(Database& database, Prompt& prompt, const CatalogueFiles& files,
                       const WindowScale& scale, QWidget* parent)
    : GridDialog(QStringLiteral("dlgDcManuf"), QStringLiteral("Decoderhersteller"), scale, parent) {
  auto rows = std::make_unique<ListGrid>(database, prompt,
                                         std::make_unique<MakerRules>(database, prompt, files));
  rows->open(QString::fromUtf16(kMakersQuery));
  build(std::move(rows), QStringLiteral("datDcManufs"));
  grid().stretch(MakerRules::kName);
  resize(kDesignSize);
}

}  // namespace lokari
