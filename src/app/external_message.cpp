#include "app/external_message.h"

namespace lokari {

ExternalMessage::ExternalMessage(std::function<void(int)> receive) : receive_(std::move(receive)) {}

bool ExternalMessage::listen(QDBusConnection bus) {
  return bus.isConnected() &&
         bus.registerObject(QStringLiteral("/org/lokari/Workbench"), this,
                            QDBusConnection::ExportScriptableSlots) &&
         bus.registerService(QStringLiteral("org.lokari.Workbench"));
}

void ExternalMessage::OpenCab(int address) {
  QMetaObject::invokeMethod(
      this, [this, address] { receive_(address); }, Qt::QueuedConnection);
}

}  // namespace lokari
