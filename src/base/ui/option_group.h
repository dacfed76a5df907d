// Options of which one is on, as one stop of the Tab key.
#pragma once

#include <QButtonGroup>

namespace lokari {

/// Tab stops at the chosen option; the arrow keys choose another. Where none on show is chosen, it
/// stops at each. Without this Tab would stop at the first option, and a blank would choose it.
class OptionGroup final : public QButtonGroup {
 public:
  explicit OptionGroup(QObject* parent);

  void add(QAbstractButton* option, int id = -1);

  bool eventFilter(QObject* option, QEvent* event) override;

 private:
  void showStop();
};

}  // namespace lokari
