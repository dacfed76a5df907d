// Between the speed bar, which always has 128 positions, and a station's speed steps.
#pragma once

namespace lokari {

/// The bar's position, 0 to 127, for a station's value of `steps` steps (14, 27, 28 or 128).
int barPosition(int value, int steps);

/// A station's value for the bar's position: Int(steps * speed / 128), not cut.
int stationSteps(int speed, int steps);

/// stationSteps() cut to 126, the highest speed a station of 128 steps takes.
int cutStationSteps(int speed, int steps);

}  // namespace lokari
