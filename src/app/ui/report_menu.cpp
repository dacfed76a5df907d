#include "app/ui/report_menu.h"

#include "app/ui/main_menu.h"
#include "app/workbench.h"
#include "base/paths.h"
#include "db/database_session.h"
#include "reports/rzk_export.h"

namespace lokari {

void offerReports(Workbench& workbench, MainMenu& menu, std::function<void(bool)> busy) {
  menu.enable(QStringLiteral("mnuExpRZK"), [&workbench, busy = std::move(busy)] {
    DatabaseSession& session = workbench.session();
    if (!session.hasDatabase()) return;
    RzkExport({workbench.prompt(), busy}, session.database(), session.form().sqlFilter)
        .mnuExpRZK(folderOf(session.dbPath()));
  });
}

}  // namespace lokari
