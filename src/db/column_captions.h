// What a person calls the columns of a record.
#pragma once

#include <QString>

namespace lokari {

/// The caption of a column: the label of its field, the CV set that it belongs to, or its name.
QString captionOf(const QString& column);

}  // namespace lokari
