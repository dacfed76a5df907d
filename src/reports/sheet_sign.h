// The signs that a sheet sets beside values that are not proved, and their legend.
#pragma once

#include <QByteArray>
#include <QRectF>
#include <QString>

#include <optional>
#include <span>

#include "reports/print_cv_list.h"

namespace lokari {

class SheetCanvas;
struct SheetVehicle;

enum class SheetSign {
  NotRead,  ///< a hollow circle: the value was typed, copied or never touched
  Failed,   ///< a cross: the last attempt to read or write it failed
};

/// Width of a sign with the space around it, in points.
inline constexpr double kSheetSign = 8;

/// Nothing for a value that a decoder has confirmed.
std::optional<SheetSign> signOf(const SheetVehicle& vehicle, const PrintCv& cv);

/// Paints the sign in the middle of a place.
void paintSign(SheetCanvas& canvas, const QRectF& place, SheetSign sign);

/// Paints what the signs among these CVs mean, from the left of a line on. Paints nothing when
/// there are none.
void paintLegend(SheetCanvas& canvas, const QRectF& line, const SheetVehicle& vehicle,
                 std::span<const PrintCv> cvs);

}  // namespace lokari
