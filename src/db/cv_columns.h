// The columns that hold a record's CV sets.
#pragma once

#include <QString>

#include <array>
#include <cstddef>

namespace lokari {

/// CV sets of a vehicle.
inline constexpr std::size_t kCvSetCount = 5;

/// The columns of one CV set.
struct CvColumns {
  const char16_t* values;
  const char16_t* marks;
  const char16_t* name;
};

/// By set, in the order in which they are written to the record.
inline constexpr std::array<CvColumns, kCvSetCount> kCvColumns{{
    {u"DC_CV", u"DC_CV_ST", u"DC_CV_NAME"},
    {u"DC_CV_1", u"DC_CV_1_ST", u"DC_CV_NAME_1"},
    {u"DC_CV_2", u"DC_CV_2_ST", u"DC_CV_NAME_2"},
    {u"DC_CV_3", u"DC_CV_3_ST", u"DC_CV_NAME_3"},
    {u"DC_CV_4", u"DC_CV_4_ST", u"DC_CV_NAME_4"},
}};

/// The column of the marks for that of the values, and the reverse; empty for any other column.
inline QString twinOf(QStringView column) {
  for (const CvColumns& set : kCvColumns) {
    if (column == QStringView(set.values)) return QString::fromUtf16(set.marks);
    if (column == QStringView(set.marks)) return QString::fromUtf16(set.values);
  }
  return {};
}

}  // namespace lokari
