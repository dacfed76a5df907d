// `dlg_comm` for long work that does not use the station.
#pragma once

#include "base/progress.h"

class QWidget;

namespace lokari {

class StationLink;
class WindowScale;

/// Shows the dialog over `window`, does the work in it, and leaves it open with the work's last
/// words and the button "OK" until the user closes it. "Abbruch" closes it at once; what the work
/// says of its end then is shown in it again. All arguments must outlive the result.
RunWithProgress progressDialog(StationLink& link, const WindowScale& scale, QWidget* window);

}  // namespace lokari
