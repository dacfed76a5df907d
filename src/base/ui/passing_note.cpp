#include "base/ui/passing_note.h"

#include <QMessageBox>

#include "base/settings.h"

namespace lokari {

void showPassingNote(const QString& text, QWidget* parent) {
  QMetaObject::invokeMethod(
      parent,
      [text, parent] {
        auto* box = new QMessageBox(QMessageBox::Warning, QString::fromUtf16(kTitle), text,
                                    QMessageBox::Ok, parent);
        box->setObjectName(QStringLiteral("boxPassingNote"));
        box->setAttribute(Qt::WA_DeleteOnClose);
        // Keys that are meant for a cab must not press its button.
        box->setAttribute(Qt::WA_ShowWithoutActivating);
        box->setModal(false);
        box->show();
      },
      Qt::QueuedConnection);
}

}  // namespace lokari
