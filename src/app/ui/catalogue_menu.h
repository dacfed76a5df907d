// The menu entries that bring new decoder types into the program.
#pragma once

class QWidget;

namespace lokari {

class MainMenu;
class WindowScale;
class Workbench;

/// Makes the entries work; without an open database they do nothing. A dialog comes up over
/// `parent`. All arguments must outlive the menu.
void offerCatalogue(Workbench& workbench, MainMenu& menu, const WindowScale& scale,
                    QWidget* parent);

}  // namespace lokari
