#include "app/ui/qt_desktop.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QImage>
#include <QUrl>

#include "app/ui/help_window.h"
#include "base/prompt.h"

namespace lokari {

QtDesktop::QtDesktop(Prompt& prompt) : prompt_(prompt) {}

QtDesktop::~QtDesktop() = default;

bool QtDesktop::openFile(const QString& path) {
  return QFileInfo::exists(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool QtDesktop::openWebPage(const QString& url) {
  return QDesktopServices::openUrl(QUrl(url));
}

void QtDesktop::setClipboardPicture(const QByteArray& picture) {
  const QImage image = QImage::fromData(picture);
  if (image.isNull()) {
    QApplication::clipboard()->clear();
  } else {
    QApplication::clipboard()->setImage(image);
  }
}

QByteArray QtDesktop::clipboardPicture() const {
  const QImage image = QApplication::clipboard()->image();
  if (image.isNull()) return {};
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return png;
}

HelpWindow* QtDesktop::helpWindow(const QString& helpFile) {
  if (!helpFile.endsWith(QStringLiteral(".qhc"), Qt::CaseInsensitive)) {
    if (!openFile(helpFile)) {
      prompt_.message(QStringLiteral("Für die Hilfe-Datei %1 ist kein Programm eingerichtet!")
                          .arg(QFileInfo(helpFile).fileName()));
    }
    return nullptr;
  }
  if (help_ == nullptr) help_ = std::make_unique<HelpWindow>(helpFile);
  const QString fault = help_->fault();
  if (fault.isEmpty()) return help_.get();
  help_.reset();
  prompt_.message(fault);
  return nullptr;
}

void QtDesktop::showHelpContents(const QString& helpFile) {
  if (HelpWindow* window = helpWindow(helpFile)) window->showContents();
}

void QtDesktop::showHelpSearch(const QString& helpFile) {
  if (HelpWindow* window = helpWindow(helpFile)) window->showSearch();
}

void QtDesktop::showHelp(const QString& helpFile, const HelpQuestion& question) {
  if (HelpWindow* window = helpWindow(helpFile)) window->answer(question);
}

}  // namespace lokari
