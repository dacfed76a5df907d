// Where a file goes whose name a user chose, and what may be replaced there: a plain file of the
// same kind, after a question, and never one that the program lives on.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>

namespace lokari {

struct AppPaths;
struct Settings;
class Prompt;

/// A kind of files that the program writes for its user.
struct FileKind {
  const char16_t* name;        ///< "PDF-Datei"
  const char16_t* extensions;  ///< of its files, separated by blanks; empty for any
  const char* beginning;     ///< the first bytes of one that has no such extension; empty for none
  const char16_t* question;  ///< asked before one is replaced, with %1 for the name
};

inline constexpr FileKind kPdfFile{
    .name = u"PDF-Datei",
    .extensions = u"pdf",
    .beginning = "%PDF-",
    .question = u"%1\rist schon vorhanden. Datei ersetzen?",
};
inline constexpr FileKind kCsvFile{
    .name = u"CSV-Datei",
    .extensions = u"csv tsv tab txt",
    .beginning = "\xEF\xBB\xBF",
    .question = u"%1\rist schon vorhanden. Datei ersetzen?",
};
inline constexpr FileKind kSpeedTableFile{
    .name = u"Geschwindigkeitstabelle",
    .extensions = u"spd",
    .beginning = "",
    .question = u"Datei %1 gibt es schon. Überschreiben?",
};
/// It takes vehicles in and keeps those it has, so nobody is asked.
inline constexpr FileKind kVehicleFile{
    .name = u"Fahrzeugdatei",
    .extensions = u"",
    .beginning = "",
    .question = u"",
};

/// The files that the program lives on: settings, open database, templates, and what else it keeps
/// in its folder under a name of its own. They need not exist.
QStringList ownFiles(const AppPaths& paths, const Settings& settings);

/// A file that must not be written.
class PlaceRefused : public std::runtime_error {
 public:
  PlaceRefused(const QString& path, const QString& reason);

  /// German; names the file and the reason.
  const QString& text() const { return text_; }
  /// The reason alone: a German sentence.
  const QString& reason() const { return reason_; }

 private:
  QString text_;
  QString reason_;
};

/// A place that was looked at. Writers take one of these and no name.
class FilePlace {
 public:
  /// For a name that the program itself gives, and that it may replace without a question. Throws
  /// PlaceRefused.
  static FilePlace ofProgram(const QString& name, const FileKind& kind, const QStringList& own);
  /// For a name that the user gave: asks before a file is replaced. Nothing when the user keeps
  /// it, or when it must not be replaced, which the user is told then.
  static std::optional<FilePlace> chosen(const QString& name, const FileKind& kind,
                                         const QStringList& own, Prompt& prompt);

  /// As it stands on disk, or where it is to be made.
  const QString& path() const { return path_; }

 private:
  explicit FilePlace(QString path) : path_(std::move(path)) {}

  QString path_;
};

}  // namespace lokari
