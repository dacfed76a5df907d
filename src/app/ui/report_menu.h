// The menu entries that hand vehicles to paper and to other programs.
#pragma once

#include <functional>

class QWidget;

namespace lokari {

class MainMenu;
class WindowScale;
class Workbench;

/// Makes the entries work; without an open database they do nothing. Dialogs come up over `window`,
/// `busy` shows the busy pointer. All must outlive the menu.
void offerReports(Workbench& workbench, MainMenu& menu, const WindowScale& scale, QWidget* window,
                  std::function<void(bool)> busy);

}  // namespace lokari
