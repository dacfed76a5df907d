#include "db/catalogue_names.h"

#include <algorithm>

namespace lokari {
namespace {

constexpr qsizetype kLongest = 8;
constexpr char16_t kForbidden[] = u"\"^°!§$%&/()=?\\`´+*#':.;,<>|~{[]}";

}  // namespace

NameFault checkCatalogueName(QStringView name) {
  if (name.isEmpty() || name.size() > kLongest) return NameFault::Length;
  const bool forbidden = std::any_of(name.begin(), name.end(),
                                     [](QChar c) { return QStringView(kForbidden).contains(c); });
  return forbidden ? NameFault::Characters : NameFault::None;
}

}  // namespace lokari
