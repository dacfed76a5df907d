#include "app/ui/report_menu.h"

#include <QStandardPaths>

#include "app/ui/main_menu.h"
#include "app/workbench.h"
#include "base/file_place.h"
#include "base/paths.h"
#include "base/ui/window_scale.h"
#include "db/database_session.h"
#include "link/ui/progress_dialog.h"
#include "reports/csv_export.h"
#include "reports/list_document.h"
#include "reports/report_template.h"
#include "reports/rzk_export.h"
#include "reports/ui/dlg_print.h"
#include "reports/ui/system_printer.h"

namespace lokari {
namespace {

void print(Workbench& workbench, const WindowScale& scale, QWidget* window) {
  DatabaseSession& session = workbench.session();
  if (!session.hasDatabase()) return;
  const AppPaths& paths = workbench.paths();
  const Settings& settings = workbench.settings();
  RecordForm& form = session.form();
  // What was just typed belongs to what is printed.
  if (!form.storeEdit()) return;
  const QStringList own = ownFiles(paths, settings) << session.dbPath();
  SystemPrinter printer(
      {.prompt = workbench.prompt(),
       .clock = workbench.clock(),
       .folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
       .own = own});
  const auto source = [&](const QString& templateFile, const QString& formula) {
    return ReportSource{.database = session.database(),
                        .templateFile = templatePlace(templateFile, paths.installed),
                        .formula = formula};
  };
  mnuDbPrint(
      {.database = session.database(),
       .prompt = workbench.prompt(),
       .printer = printer,
       .progress = [&](QWidget* dialog) { return progressDialog(workbench.link(), scale, dialog); },
       .folders = {paths.appPath, paths.basePath},
       .sqlFilter = form.sqlFilter,
       .reportFilter = form.reportFilter,
       .address = form.text(QStringLiteral("dc_adr")),
       .collection = form.text(QStringLiteral("dc_coll")),
       .date = QDate::currentDate(),
       .list =
           [&](const QString& formula) {
             return std::make_unique<ListDocument>(source(settings.listReport, formula));
           },
       .csv =
           [&](const QString& formula, Progress& progress) {
             return exportCsv(source(settings.csvReport, formula), csvFilePlace(paths.appPath, own),
                              progress);
           }},
      scale, window);
}

}  // namespace

void offerReports(Workbench& workbench, MainMenu& menu, const WindowScale& scale, QWidget* window,
                  std::function<void(bool)> busy) {
  menu.enable(QStringLiteral("mnuExpRZK"), [&workbench, busy = std::move(busy)] {
    DatabaseSession& session = workbench.session();
    if (!session.hasDatabase()) return;
    if (!session.form().storeEdit()) return;
    RzkExport({.prompt = workbench.prompt(),
               .busy = busy,
               .own = ownFiles(workbench.paths(), workbench.settings()) << session.dbPath()},
              session.database(), session.form().sqlFilter)
        .mnuExpRZK(folderOf(session.dbPath()));
  });
  menu.enable(QStringLiteral("mnuDbPrint"),
              [&workbench, &scale, window] { print(workbench, scale, window); });
}

}  // namespace lokari
