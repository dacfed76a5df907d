// Vehicles from a text file. Lines are `key=value`; blank lines and lines that begin with "#" or
// ";" count for nothing. Keys are compared without regard to case.
//
//   [Adlerton AT-SND16]      begins a vehicle and names it
//   address=3                1 to 10239; sets CV 1 or CV 17 and 18, and bit 5 of CV 29, so it
//                            stands behind a line CV29=
//   manufacturer=97          CV 8
//   track=both               both (the default), prog or main; the first vehicle that may stand
//                            there is the one on the programming track
//   CV2=5                    a CV, 1 to 1024, and its value, 0 to 255; CVs never named hold 0
//   cvs=1-512,900            the CVs it has; the default is 1-1024. Others give no acknowledge
//   readonly=7,8             CVs that refuse a write; the default is 7,8
//   sticky=57,60-63          CVs that acknowledge a write and keep their value
//   lock=15,16               writes need equal values in both, but the second may be written
//   methods=direct,paged     programming methods it knows; the default is all with `register`
//   index=31,32              index registers, one or two; the default is 31,32
//   banked=257-512           the CVs that banks replace; the default is 257-512
//   bank=16,0                from here on CV lines go into the bank that these values select
//   bank=                    back to the plain CVs
#pragma once

#include <QString>

#include "sim/layout.h"

namespace lokari::sim {

/// Adds the file's vehicles to `layout`. Empty on success, else a German message with the line
/// number; vehicles before the faulty one are then in.
QString readDecoders(const QString& text, Layout& layout);

/// A few vehicles with banks, a long address, a lock and an old decoder that knows one method.
QString builtInDecoders();

}  // namespace lokari::sim
