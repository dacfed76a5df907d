// The frame of ReadCV and WriteCV, the same for every station.
#pragma once

namespace lokari {

class CvExchange;
class StationLink;

/// Runs one operation to its result: a value 0 to 255 or a negative code.
int runCvFrame(StationLink& link, CvExchange& exchange);

}  // namespace lokari
