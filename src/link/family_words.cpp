#include "link/family_words.h"

#include <array>

namespace lokari {
namespace {

struct FamilyRow {
  ProtocolFamily family;
  const FamilyWords& (*words)();
};

constexpr std::array kFamilies{
    FamilyRow{ProtocolFamily::Mx1Text, mx1TextWords},
    FamilyRow{ProtocolFamily::ZimoBinary, zimoBinaryWords},
    FamilyRow{ProtocolFamily::Lenz, lenzWords},
    FamilyRow{ProtocolFamily::LiDp, lidpWords},
    FamilyRow{ProtocolFamily::Intellibox, p50xWords},
    FamilyRow{ProtocolFamily::Tams, p50xWords},
    FamilyRow{ProtocolFamily::Z21, z21Words},
    FamilyRow{ProtocolFamily::Mx10, mx10Words},
};

}  // namespace

const FamilyWords& familyWords(ProtocolFamily family) {
  static constexpr FamilyWords kNone;
  for (const FamilyRow& row : kFamilies) {
    if (row.family == family) return row.words();
  }
  return kNone;
}

}  // namespace lokari
