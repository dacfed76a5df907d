#include "app/external_message.h"

namespace lokari {
namespace {

const QString kService = QStringLiteral("org.lokari.Workbench");
const QString kObject = QStringLiteral("/org/lokari/Workbench");

}  // namespace

ExternalMessage::ExternalMessage(std::function<void(int)> receive) : receive_(std::move(receive)) {}

bool ExternalMessage::listen(const QDBusConnection& bus) {
  bus_ = bus;
  return bus_->isConnected() &&
         bus_->registerObject(kObject, this, QDBusConnection::ExportScriptableSlots) &&
         bus_->registerService(kService);
}

void ExternalMessage::stop() {
  if (!bus_ || !bus_->isConnected()) return;
  bus_->unregisterService(kService);
  bus_->unregisterObject(kObject);
}

void ExternalMessage::OpenCab(int address) {
  QMetaObject::invokeMethod(
      this, [this, address] { receive_(address); }, Qt::QueuedConnection);
}

}  // namespace lokari
