#include "app/ui/options_entry.h"

#include "app/driving.h"
#include "app/workbench.h"
#include "base/ui/window_scale.h"
#include "db/database_session.h"
#include "station/ui/dlg_options.h"

namespace lokari {

void openOptions(Workbench& workbench, const WindowScale& scale, QWidget* parent) {
  workbench.settings().dbPath = workbench.session().dbPath();
  // Cabs go on being polled until the test takes the line.
  const auto alone = [&workbench](std::function<void()> test) {
    workbench.driving().runAlone(&workbench, std::move(test));
  };
  DlgOptions dlgOptions(
      {workbench.settings(), workbench.link(), workbench.prompt(),
       IniFile(workbench.paths().iniFile), PortTable(workbench.paths().appPath), alone},
      scale, parent);
  scale.ResizeWindow(&dlgOptions);
  dlgOptions.exec();
}

}  // namespace lokari
