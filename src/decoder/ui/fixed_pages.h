// The two tabs that every decoder has: general and drive.
#pragma once

#include <QWidget>

namespace lokari {

class ControlBinder;
class DecoderBench;

/// Tab 0: address, CV 3, 4 and 19, the options of CV 29, the version.
QWidget* makeGeneralPage(ControlBinder& binder, QWidget* parent);

/// Tab 1: CV 2, 5, 6 and 9, the twins of two options of CV 29, the speed curve.
QWidget* makeDrivePage(DecoderBench& bench, ControlBinder& binder, QWidget* parent);

}  // namespace lokari
