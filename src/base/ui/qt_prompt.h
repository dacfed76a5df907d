// The boxes of a program with windows.
#pragma once

#include <QStringList>

#include "base/prompt.h"

namespace lokari {

/// A window with this property, true, is read beside the others; boxes never stand over it.
inline constexpr const char* kOnlyBeside = "onlyBeside";

/// Boxes stand over the window that has the user's attention and are titled with the program's
/// name when they have no title of their own.
class QtPrompt final : public Prompt {
 public:
  using Prompt::ask;
  Answer ask(const Box& box) override;
  int choose(const Choice& choice) override;
  bool waitUntil(const QString& text, const std::function<bool()>& done) override;
  /// Takes a name that is typed without its extension; such a file need not exist.
  QString openFile(const FileQuestion& question) override;
  /// Does not ask before a file is overwritten; the callers have rules of their own.
  QString saveFile(const FileQuestion& question) override;
  void beep() override;
};

/// A list "text|pattern|text|pattern" as the entries of a Qt file dialog. Masks match in any case,
/// "*.*" matches every name; the text is what the user sees.
QStringList nameFilters(const QString& filter);

}  // namespace lokari
