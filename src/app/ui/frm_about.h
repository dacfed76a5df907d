// The window that tells which program this is.
#pragma once

#include <QDialog>

namespace lokari {

class Pictures;

class FrmAbout final : public QDialog {
 public:
  FrmAbout(QWidget* parent, const Pictures& pictures);
};

}  // namespace lokari
