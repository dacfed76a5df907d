// A letter with Alt that belongs to no button is nobody's text.
#pragma once

#include <QObject>

namespace lokari {

/// Qt types such a letter into the field that has the focus, or turns over to the entry of a list
/// that begins with it. A record, a CV or a row would change unnoticed, by a slip of the finger or
/// by the key of a button that is not there just now.
class AltLetters final : public QObject {
 public:
  /// Listens to all windows of the running application.
  AltLetters();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace lokari
