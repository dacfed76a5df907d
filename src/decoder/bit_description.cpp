#include "decoder/bit_description.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/numbers.h"
#include "decoder/dec_fields.h"

namespace lokari {
namespace {

constexpr qsizetype kMostChoices = 16;
constexpr int kHighestOfCv = 255;
/// The high CV of an address holds six bits of it, the low one eight.
constexpr int kHighestOfTwoCvs = 0x3FFF;
/// Values have 16 bits with a sign.
constexpr int kValueBits = 15;
constexpr int kLowestLongAddress = 128;
constexpr int kHighestLongAddress = 10239;
constexpr int kHighestDigit = 9;

QString addressSign() {
  return QStringLiteral("A");
}

int bitsOf(const QString& item) {
  using Limits = std::numeric_limits<qint16>;
  return static_cast<int>(
      std::nearbyint(std::clamp<double>(numericPrefix(item), Limits::min(), Limits::max())));
}

int typeOf(const QString& item, int typeBefore) {
  const bool digit = item == u"#";
  if (!digit && item != addressSign()) return bitsOf(item);
  if (typeBefore == BitGroup::kUnits) return BitGroup::kTens;
  return digit ? BitGroup::kUnits : BitGroup::kAddress;
}

/// What a group without a title is called where its type says what it is.
QString ownTitle(int type) {
  switch (type) {
    case BitGroup::kUnits:
      return QStringLiteral("Einer");
    case BitGroup::kTens:
      return QStringLiteral("Zehner");
    case BitGroup::kAddress:
      return QStringLiteral("Adresse");
    default:
      return {};
  }
}

bool hasControl(const BitGroup& group) {
  if (group.type >= 0) return group.hasOptions() || !group.title.isEmpty();
  return group.type >= BitGroup::kAddress;
}

/// The bits from `position` on, `width` of them, as far as a value has them.
int maskOf(int position, int width) {
  const int from = std::clamp(position, 0, kValueBits);
  const int to = std::clamp(position + width, from, kValueBits);
  return (1 << to) - (1 << from);
}

}  // namespace

int BitGroup::lowest() const {
  return type == kAddress ? kLowestLongAddress : 0;
}

int BitGroup::highest() const {
  if (type == kAddress) return kHighestLongAddress;
  if (type < 0) return kHighestDigit;
  if (hasOptions()) return static_cast<int>(choices.size()) - 1;
  return maskOf(0, type);
}

int BitGroup::shown(int value) const {
  switch (type) {
    case kAddress:
      return value;
    case kUnits:
      return value % 10;
    case kTens:
      return value / 10;
    default:
      // Far below bit 0 a shifted value passes every limit; it is in no group's range then.
      return static_cast<int>(std::min<double>(
          std::ldexp(value & maskOf(position, type), -position), std::numeric_limits<int>::max()));
  }
}

double BitGroup::weighed(int entry) const {
  switch (type) {
    case kAddress:
    case kUnits:
      return entry;
    case kTens:
      return entry * 10.0;
    default:
      return std::ldexp(entry, position);
  }
}

BitDescription::BitDescription(const QString& text)
    : highest_(text.startsWith(addressSign()) ? kHighestOfTwoCvs : kHighestOfCv) {
  int position = 0;
  int typeBefore = 0;
  for (const QString& part : text.split(u'|')) {
    QStringList items = part.split(u',');
    for (QString& item : items) item = trimBlanks(item);
    const QString first = items.takeFirst();
    if (items.isEmpty() && text != addressSign()) {
      position += bitsOf(first);
      typeBefore = 0;
      continue;
    }
    BitGroup group;
    group.type = typeOf(first, typeBefore);
    group.position = position;
    if (!items.isEmpty()) group.title = items.takeFirst();
    // Digits and addresses are numbers, whatever follows their title.
    if (group.type >= 0) group.choices = items.mid(0, kMostChoices);
    if (group.title.isEmpty()) group.title = ownTitle(group.type);
    position += group.type;
    typeBefore = group.type;
    if (hasControl(group)) groups_.push_back(group);
  }
}

BitEntry BitDescription::accept(const std::vector<std::optional<int>>& entries) const {
  double sum = 0;
  for (size_t i = 0; i < groups_.size(); ++i) {
    const BitGroup& group = groups_[i];
    const std::optional<int> entry = i < entries.size() ? entries[i] : std::nullopt;
    if (!entry || *entry < group.lowest() || *entry > group.highest()) return {{}, i};
    sum += group.weighed(*entry);
    if (sum > highest_) return {{}, i};
  }
  return {static_cast<int>(std::nearbyint(sum)), 0};
}

BitEntry BitDescription::accept(const std::vector<std::optional<int>>& entries, int before) const {
  BitEntry entry = accept(entries);
  if (!entry.value) return entry;
  const auto asShown = [before](const BitGroup& group, const std::optional<int>& given) {
    return given == group.shown(before);
  };
  if (std::equal(groups_.begin(), groups_.end(), entries.begin(), asShown)) entry.value = before;
  return entry;
}

int BitDescription::passedOver(int value) const {
  double shown = 0;
  for (const BitGroup& group : groups_) shown += group.weighed(group.shown(value));
  return std::max(0, value - static_cast<int>(std::nearbyint(std::min<double>(shown, value))));
}

bool BitDescription::isDecimal() const {
  return std::any_of(groups_.begin(), groups_.end(),
                     [](const BitGroup& group) { return group.type < 0; });
}

}  // namespace lokari
