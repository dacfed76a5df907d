#include "link/message_trace.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "base/bytes.h"
#include "base/settings.h"
#include "link/can_driver.h"
#include "link/can_message_text.h"
#include "link/family_words.h"
#include "link/trace.h"
#include "link/trace_head.h"

namespace lokari {
namespace {

constexpr int kWordsColumn = 36;
constexpr char16_t kSent = u'>';
constexpr char16_t kReceived = u'<';
constexpr char16_t kEvent = u'-';

/// A line for which there is no memory is left out.
template <class Work>
void quietly(const Work& work) noexcept {
  try {
    work();
  } catch (const std::exception&) {
  }
}

QString shown(const QByteArray& message) {
  QString text = hexDump(message.left(MessageTrace::kMostShown));
  if (message.size() > MessageTrace::kMostShown) {
    text += QStringLiteral(" … (%1 Bytes)").arg(message.size());
  }
  return text;
}

QByteArray bytesOf(const CanMessage& message) {
  const int high = wordHigh(static_cast<qint32>(message.ID));
  const int low = wordLow(static_cast<qint32>(message.ID));
  const QByteArray head = bytes({byteSecond(high), byteLow(high), byteSecond(low), byteLow(low)});
  const auto size = std::min<size_t>(message.LEN, message.DATA.size());
  return head + QByteArray(reinterpret_cast<const char*>(message.DATA.data()),
                           static_cast<qsizetype>(size));
}

}  // namespace

bool MessageTrace::isWanted() const {
  return trace_.wants(transport_);
}

const FamilyWords& MessageTrace::words() const {
  return familyWords(settings_.station().family);
}

void MessageTrace::sent(const QByteArray& piece) noexcept {
  if (!isWanted()) return;
  quietly([&] {
    if (!received_.bytes.isEmpty()) endPending();
    add(sent_, piece);
    takeSent();
  });
}

void MessageTrace::received(const QByteArray& piece) noexcept {
  if (!isWanted() || piece.isEmpty()) return;
  quietly([&] {
    if (!sent_.bytes.isEmpty()) endPending();
    add(received_, piece);
    takeReceived();
  });
}

void MessageTrace::add(Pending& pending, const QByteArray& piece) {
  const Millis now = clock_.now();
  if (!pending.bytes.isEmpty() && now - pending.last > kPause) endPending();
  pending.lastTime = clock_.localTime();
  if (pending.bytes.isEmpty()) pending.time = pending.lastTime;
  pending.last = now;
  pending.bytes += piece;
}

void MessageTrace::drop(Pending& pending, qsizetype size) {
  pending.bytes.remove(0, size);
  pending.time = pending.lastTime;
}

void MessageTrace::takeSent() {
  const auto whole = words().wholeSent;
  while (!sent_.bytes.isEmpty()) {
    const qsizetype size = whole != nullptr ? whole(sent_.bytes) : sent_.bytes.size();
    if (size <= 0) return;
    sentLine(sent_.bytes.left(size));
    drop(sent_, size);
  }
}

void MessageTrace::takeReceived() {
  const auto whole = words().wholeReceived;
  while (!received_.bytes.isEmpty()) {
    const qsizetype size =
        whole != nullptr ? whole(received_.bytes, asked_) : received_.bytes.size();
    if (size <= 0) break;
    receivedLine(received_.bytes.left(size));
    drop(received_, size);
  }
  // Noise has no end.
  if (received_.bytes.size() >= kMostShown) endPending();
}

void MessageTrace::endPending() {
  if (!sent_.bytes.isEmpty()) sentLine(std::exchange(sent_.bytes, {}));
  if (!received_.bytes.isEmpty()) receivedLine(std::exchange(received_.bytes, {}));
}

void MessageTrace::sentLine(const QByteArray& message) {
  asked_ = message;
  fault_.clear();
  const auto about = words().sent;
  line(sent_.time, kSent, shown(message), about != nullptr ? about(message) : QString());
}

void MessageTrace::receivedLine(const QByteArray& message) {
  const auto about = words().received;
  line(received_.time, kReceived, shown(message),
       about != nullptr ? about(message, asked_) : QString());
}

void MessageTrace::sent(const CanMessage& message) noexcept {
  if (!isWanted()) return;
  quietly([&] {
    fault_.clear();
    const auto about = words().sent;
    line(clock_.localTime(), kSent, canMessageText(message),
         about != nullptr ? about(bytesOf(message)) : QString());
  });
}

void MessageTrace::received(const CanMessage& message) noexcept {
  if (!isWanted()) return;
  quietly([&] {
    const auto about = words().received;
    line(clock_.localTime(), kReceived, canMessageText(message),
         about != nullptr ? about(bytesOf(message), {}) : QString());
  });
}

void MessageTrace::opening(const QString& text) noexcept {
  fault_.clear();
  event(text);
}

void MessageTrace::event(const QString& text) noexcept {
  if (!isWanted()) return;
  quietly([&] {
    endPending();
    line(clock_.localTime(), kEvent, withoutOwner(text, settings_), {});
  });
}

void MessageTrace::fault(const QString& text) noexcept {
  if (!isWanted() || text == fault_) return;
  quietly([&] {
    fault_ = text;
    event(text);
  });
}

void MessageTrace::flush() noexcept {
  if (isWanted()) quietly([&] { endPending(); });
}

void MessageTrace::line(const QDateTime& time, char16_t sign, const QString& bytes,
                        const QString& words) {
  QString text = QChar(sign) + QStringLiteral(" ") + bytes;
  if (!words.isEmpty()) text = text.leftJustified(kWordsColumn) + QStringLiteral(" ; ") + words;
  trace_.write(transport_, time, text);
}

}  // namespace lokari
