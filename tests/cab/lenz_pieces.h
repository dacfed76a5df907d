// One message in two pieces, cut at every place, with pauses of every kind between them.
#pragma once

#include <QByteArray>

#include "base/clock.h"

namespace lokari::test {

template <class Play>
void forEachCut(const QByteArray& whole, Play play) {
  for (qsizetype cut = 1; cut < whole.size(); ++cut) {
    for (const Millis pause : {Millis{0}, Millis{30}, Millis{150}, Millis{700}, Millis{1500}}) {
      play(whole.left(cut), whole.mid(cut), pause);
    }
  }
}

}  // namespace lokari::test
