#include "sim/makers/xpressnet_frames.h"

#include "base/bytes.h"

namespace lokari::sim::makers {
namespace {

constexpr char kCommand[] = "\xFF\xFE";
constexpr qsizetype kLead = 2;

}  // namespace

QList<QByteArray> XpressNetReader::feed(const QByteArray& data) {
  QList<QByteArray> messages;
  input_ += data;
  for (;;) {
    qsizetype begin = 0;
    if (framed_) {
      const qsizetype lead = input_.indexOf(kCommand);
      if (lead < 0) {
        // The first half of a lead may have come.
        input_ = input_.endsWith('\xFF') ? input_.right(1) : QByteArray();
        return messages;
      }
      input_.remove(0, lead);
      begin = kLead;
    }
    if (input_.size() <= begin) return messages;
    const qsizetype size = (byteAt(input_, begin) & 0x0F) + 2;
    if (input_.size() < begin + size) return messages;
    messages.append(input_.mid(begin, size));
    input_.remove(0, begin + size);
  }
}

}  // namespace lokari::sim::makers
