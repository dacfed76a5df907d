#include "decoder/fixed_fields.h"

#include <algorithm>

namespace lokari {

std::span<const OptionRow> optionsOf(const QString& group) {
  const auto inGroup = [&group](const OptionRow& option) {
    return group == QLatin1String(option.group);
  };
  const auto first = std::find_if(kOptions.begin(), kOptions.end(), inGroup);
  const auto last = std::find_if_not(first, kOptions.end(), inGroup);
  return {first, last};
}

const OptionRow* optionNamed(const QString& name) {
  const auto found = std::find_if(kOptions.begin(), kOptions.end(), [&name](const OptionRow& row) {
    return name == QLatin1String(row.name);
  });
  return found == kOptions.end() ? nullptr : &*found;
}

}  // namespace lokari
