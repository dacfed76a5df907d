#include "app/ui/catalogue_menu.h"

#include "app/ui/main_menu.h"
#include "app/workbench.h"
#include "base/ui/window_scale.h"
#include "db/database_session.h"
#include "decoder/dec_import.h"
#include "decoder/ui/dlg_manuf_sel.h"

namespace lokari {

void offerCatalogue(Workbench& workbench, MainMenu& menu, const WindowScale& scale,
                    QWidget* parent) {
  menu.enable(QStringLiteral("mnuImpDec"), [&workbench, &scale, parent] {
    if (!workbench.session().hasDatabase()) return;
    mnuImpDec({workbench.prompt(), workbench.session().database(), workbench.paths().appPath,
               [&scale, parent](const QList<Maker>& makers) {
                 DlgManufSel dlgManufSel(makers, parent);
                 scale.ResizeWindow(&dlgManufSel);
                 return dlgManufSel.choose();
               }});
  });
  menu.enable(QStringLiteral("mnuUpdDB"), [&workbench] { workbench.session().mnuUpdDB(); });
}

}  // namespace lokari
