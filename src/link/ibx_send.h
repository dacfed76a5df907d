// The one way a binary command reaches an Intellibox or a Tams MC.
#pragma once

#include <QByteArray>

namespace lokari {

class StationLink;

/// Writes the letter "x" and then each byte of `msg` alone, 10 ms before each: the station's
/// receiver is slow. An empty `msg` is the letter alone.
void ibxSend(StationLink& link, const QByteArray& msg);

}  // namespace lokari
