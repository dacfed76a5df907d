// The desktop of a program with windows.
#pragma once

#include <memory>

#include "base/desktop.h"

namespace lokari {

class HelpWindow;
class Prompt;

/// Help collections (.qhc) are shown in a window of our own; a help file of another kind is handed
/// to the program that the desktop has for it.
class QtDesktop final : public Desktop {
 public:
  explicit QtDesktop(Prompt& prompt);
  ~QtDesktop() override;

  bool openFile(const QString& path) override;
  bool openWebPage(const QString& url) override;
  void setClipboardPicture(const QByteArray& picture) override;
  QByteArray clipboardPicture() const override;
  void showHelpContents(const QString& helpFile) override;
  void showHelpSearch(const QString& helpFile) override;
  void showHelp(const QString& helpFile, const HelpQuestion& question) override;

 private:
  /// The help window, or nullptr when the file is none of ours or cannot be read.
  HelpWindow* helpWindow(const QString& helpFile);

  Prompt& prompt_;
  std::unique_ptr<HelpWindow> help_;
};

}  // namespace lokari
