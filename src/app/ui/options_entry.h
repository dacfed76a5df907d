// The menu entry `mnuParaOptions`.
#pragma once

class QWidget;

namespace lokari {

class WindowScale;
class Workbench;

/// Shows the options dialog over `parent`. Its database is the open one.
void openOptions(Workbench& workbench, const WindowScale& scale, QWidget* parent);

}  // namespace lokari
