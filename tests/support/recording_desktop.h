// A desktop that notes what it was asked for. Its clipboard holds what was put on it.
#pragma once

#include <QStringList>

#include "base/desktop.h"

namespace lokari::test {

class RecordingDesktop final : public Desktop {
 public:
  bool openFile(const QString& path) override {
    opened << path;
    return true;
  }
  bool openWebPage(const QString& url) override {
    opened << url;
    return true;
  }
  void setClipboardPicture(const QByteArray& picture) override { clipboard = picture; }
  QByteArray clipboardPicture() const override { return clipboard; }
  void showHelpContents(const QString& helpFile) override { opened << helpFile; }
  void showHelpSearch(const QString& helpFile) override { opened << helpFile; }
  void showHelp(const QString& /*helpFile*/, const HelpQuestion& question) override {
    opened << question.page;
  }

  QStringList opened;
  QByteArray clipboard;
};

}  // namespace lokari::test
