// Names of decoder makers and types. They are also names of folders and files.
#pragma once

#include <QStringView>

namespace lokari {

enum class NameFault { None, Length, Characters };

/// A name has 1 to 8 characters, and none of " ^ ° ! § $ % & / ( ) = ? \ ` ´ + * # ' : . ; , < > |
/// ~ { [ ] }. The length is looked at first.
NameFault checkCatalogueName(QStringView name);

}  // namespace lokari
