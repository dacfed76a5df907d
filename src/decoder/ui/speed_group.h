// The right half of the drive tab: the speed curve, its marks and its buttons.
#pragma once

#include <QWidget>

namespace lokari {

class ControlBinder;
class DecoderBench;

QWidget* makeSpeedGroup(DecoderBench& bench, ControlBinder& binder, QWidget* parent);

}  // namespace lokari
