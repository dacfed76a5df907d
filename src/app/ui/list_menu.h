// The menu entries that open the reference lists and the decoder catalogue.
#pragma once

class QWidget;

namespace lokari {

class MainMenu;
class WindowScale;
class Workbench;

/// Makes the entries work. Their dialogs come up over `parent`; without an open database they do
/// not. `workbench` and `scale` must outlive the menu.
void offerLists(Workbench& workbench, MainMenu& menu, const WindowScale& scale, QWidget* parent);

}  // namespace lokari
