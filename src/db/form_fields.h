// The controls of the record form and the columns behind them.
#pragma once

#include <QString>
#include <QStringList>

#include <span>

namespace lokari {

/// How a control and its column go together.
enum class Binding {
  Bound,     ///< takes the column's value when a record is shown, gives its text when it is saved
  DropDown,  ///< its text goes to the column as soon as it is chosen
};

/// Keys that a control accepts; backspace always passes.
enum class KeyFilter { All, Digits, Price, Collection };

struct FormField {
  const char16_t* control;
  const char16_t* column;
  Binding binding;
  KeyFilter keys;
  int maxLength;            ///< limit of the entry control in characters; 0: none
  bool checkedOnFocusLoss;  ///< type and size are checked against the column
  bool selectedOnFocus;     ///< the whole text is selected when the control gets the focus
  const char16_t* label;    ///< caption next to it; empty for hidden fields
};

/// All fields with a column but the picture.
std::span<const FormField> formFields();
/// The field of a control, or nullptr.
const FormField* formField(QStringView control);

/// The suggestions of `md_scale`, in their order.
QStringList scaleSuggestions();

}  // namespace lokari
