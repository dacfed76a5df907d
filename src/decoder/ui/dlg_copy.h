// `dlgCopy`, the question of what is copied from the first CV set into the current one.
#pragma once

#include <QDialog>

#include "decoder/decoder_bench.h"

namespace lokari {

class DlgCopy final : public QDialog {
  Q_OBJECT

 public:
  explicit DlgCopy(const QString& text, QWidget* parent = nullptr);

  CopyAnswer answer() const { return answer_; }

 private:
  CopyAnswer answer_ = CopyAnswer::None;
};

}  // namespace lokari
