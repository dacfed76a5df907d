// One tab of up to twenty rows of described CVs, in two columns of ten.
#pragma once

#include <QHash>
#include <QIcon>
#include <QWidget>

#include "decoder/decoder_bench.h"

class QCheckBox;
class QBoxLayout;
class QGridLayout;
class QLabel;
class QPushButton;
class QToolButton;

namespace lokari {

class ControlBinder;
class ValueEdit;

/// Its controls are made when the tab is first brought into view, since a decoder may have hundreds
/// of rows and the user looks at twenty.
class RowsPage final : public QWidget {
  Q_OBJECT

 public:
  /// `tab` is the number of the tab; `bitIcon` the picture of the bit buttons.
  RowsPage(DecoderBench& bench, ControlBinder& binder, int tab, QIcon bitIcon, QWidget* parent);

  /// The rows on the bench are others: what was made is thrown away.
  void clear();
  /// Makes the controls if there are none. `before` is what comes ahead of them in the tab order.
  void make(QWidget* before);
  bool made() const { return content_ != nullptr; }
  /// A row on the bench has changed.
  void showRow(int row);

 private:
  struct RowControls {
    QLabel* label;
    QLabel* holds;
    ValueEdit* field;
    QCheckBox* read;
    QCheckBox* write;
    QToolButton* bit;
  };

  void makeHeads(QGridLayout* grid, int column);
  RowControls makeRow(int row);
  void makeButtons(QBoxLayout* rows);

  DecoderBench& bench_;
  ControlBinder& binder_;
  int tab_;
  QIcon bitIcon_;
  QWidget* content_ = nullptr;
  QWidget* scrolled_ = nullptr;       // of content_: all but the buttons
  QHash<int, RowControls> controls_;  // by the row's place on the bench
  QList<QPushButton*> buttons_;
};

}  // namespace lokari
