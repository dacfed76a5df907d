// What a station tells of the whole layout with a command that it has taken.
#pragma once

#include <QString>

namespace lokari {

enum class LayoutStands { No, Halted, WithoutPower };

/// A sentence for the user; empty where the layout does not stand.
QString layoutStandsText(LayoutStands stands);

}  // namespace lokari
