// The decoder window with a decoder on the programming track, and the dialog that a job runs in.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include "window_fixture.h"

namespace lokari::test {

class JobFixture : public WindowFixture {
 protected:
  JobFixture() { decoder.setAddress(3); }

  QWidget* dialog() {
    QWidget* active = QApplication::activeModalWidget();
    return active && active->objectName() == QStringLiteral("dlg_comm") ? active : nullptr;
  }

  /// Presses the dialog's button as soon as it says "OK", and keeps the texts above it.
  void confirmTheEnd() {
    QObject::connect(&watch_, &QTimer::timeout, &window, [this] {
      QWidget* open = dialog();
      if (!open) return;
      auto* cmdCancel = open->findChild<QPushButton*>(QStringLiteral("cmdCancel"));
      if (cmdCancel->text() != QStringLiteral("OK")) return;
      lastStatus = open->findChild<QLabel*>(QStringLiteral("lblCommStatus"))->text();
      lastDetail = open->findChild<QLabel*>(QStringLiteral("lblCommDetail"))->text();
      cmdCancel->click();
    });
    watch_.start(0);
  }

  sim::Decoder& decoder = layout.add({}).decoder;
  QString lastStatus;
  QString lastDetail;

 private:
  QTimer watch_;
};

}  // namespace lokari::test
