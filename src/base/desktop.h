// Leaving the program: documents, web pages, the clipboard and the help.
#pragma once

#include <QByteArray>
#include <QString>

namespace lokari {

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

  /// Opens the help file at its contents, or at its full-text search.
  virtual void showHelpContents(const QString& helpFile) = 0;
  virtual void showHelpSearch(const QString& helpFile) = 0;
};

}  // namespace lokari
