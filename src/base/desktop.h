// Leaving the program: documents, web pages, the clipboard and the help.
#pragma once

#include <QByteArray>
#include <QString>

namespace lokari {

/// What somebody wants to know who asks for help.
struct HelpQuestion {
  QString page;          ///< of the manual, with an anchor where one is meant
  QString message = {};  ///< of the box that is open; its explanation goes before the page
};

class Desktop {
 public:
  virtual ~Desktop() = default;

  /// Opens a file with the program the desktop has for it; false when there is none.
  virtual bool openFile(const QString& path) = 0;
  virtual bool openWebPage(const QString& url) = 0;

  /// Puts an encoded picture (BMP, JPEG or PNG) on the clipboard; empty data clears it.
  virtual void setClipboardPicture(const QByteArray& picture) = 0;
  /// The clipboard's picture as PNG, or empty.
  virtual QByteArray clipboardPicture() const = 0;

  /// Opens the help file at its contents, at its full-text search, or where a question is answered.
  virtual void showHelpContents(const QString& helpFile) = 0;
  virtual void showHelpSearch(const QString& helpFile) = 0;
  virtual void showHelp(const QString& helpFile, const HelpQuestion& question) = 0;
};

}  // namespace lokari
