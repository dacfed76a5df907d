// The program with its windows, put together: what main() and the tour start.
#pragma once

#include <QString>

#include <memory>

namespace lokari {

class MainWin;

class Application {
 public:
  /// `commandLine` is the stem of another settings file, empty for the usual one. Needs a
  /// QApplication.
  explicit Application(const QString& commandLine);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// Starts up and shows the main window. False when the program ends at once; the user has been
  /// told.
  bool start();

  MainWin& window();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

/// Qt's own texts (context menus, file dialogs) and number formats in German.
void speakGerman();

}  // namespace lokari
