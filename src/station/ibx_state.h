// The question for the power that an Intellibox and a Tams MC share: byte A2. The answer is one
// byte: 08 power on, 04 overheating, 10 halt, 40 the track voltage of scale N.
#pragma once

#include <QString>

namespace lokari {

class StationLink;

/// The line that the byte (0 to 255) makes.
QString ibxStateLine(int state);

/// Asks and gives the line; empty when nothing answers.
QString askIbxState(StationLink& link);

}  // namespace lokari
