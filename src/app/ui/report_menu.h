// The menu entries that hand vehicles to paper and to other programs.
#pragma once

#include <functional>

namespace lokari {

class MainMenu;
class Workbench;

/// Makes the entries work; a database must be open when they are used. `busy` shows the busy
/// pointer. `workbench` must outlive the menu.
void offerReports(Workbench& workbench, MainMenu& menu, std::function<void(bool)> busy);

}  // namespace lokari
