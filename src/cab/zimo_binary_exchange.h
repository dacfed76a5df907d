// What cabs and panels of the Zimo binary protocol share: the station's framing, and a question
// that is asked until the station has time for it.
//
// A frame is one write, so that nothing can get in between its bytes, and the waits between the
// frames of one exchange stay open for a stop.
#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

namespace lokari {

class StationLink;
class ZimoBinaryFraming;

/// The framing of the link's station; null once the options name another family.
ZimoBinaryFraming* zimoFraming(StationLink& link);

/// Runs `talk` with the framing, if there is one. Throws LinkError when the
/// port is gone, or is lost on the way.
void withZimoFraming(StationLink& link, const std::function<void(ZimoBinaryFraming&)>& talk);

/// The first good answer to `question`, of at least `least` bytes. Nothing after five busy answers
/// or twenty of any sort, after a cancel, and when the station keeps silent for 30 seconds or has
/// vanished.
std::optional<QByteArray> askZimoBinary(StationLink& link, ZimoBinaryFraming& framing,
                                        const QByteArray& question, int least);

}  // namespace lokari
