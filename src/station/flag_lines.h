// Status bits as lines of text.
#pragma once

#include <QStringList>

#include <array>
#include <span>

namespace lokari {

struct FlagLine {
  int bit;
  const char16_t* text;
};

/// The texts of the bits that are set in `value`, in the table's order.
QStringList flagLines(int value, std::span<const FlagLine> table);

/// The state of the track as both Zimo protocols tell it.
inline constexpr std::array kTrackFlags{
    FlagLine{1, u"Sammelstop ein"},
    FlagLine{2, u"Fahrspannung eingeschaltet"},
    FlagLine{4, u"Überstrom (UES) aktiv"},
};

}  // namespace lokari
