// The buttons at the foot of the small dialogs.
#pragma once

#include <QString>

#include <functional>

class QBoxLayout;
class QDialog;
class QLabel;
class QPushButton;

namespace lokari {

/// Around the contents of the small dialogs: 120 twips.
inline constexpr int kDialogMargin = 8;

/// A text from data on a control that takes "&" for the sign of a mnemonic.
QString withoutMnemonics(QString text);

/// Adds a line with OK, which calls `accepted`, and Abbruch, which rejects the dialog; `note`
/// stands beside them. Gives OK.
QPushButton* addOkAndCancel(QDialog* dialog, QBoxLayout* rows, const QString& okName,
                            const QString& cancelName, std::function<void()> accepted,
                            QLabel* note = nullptr);

}  // namespace lokari
