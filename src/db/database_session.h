// The open database: its file, its record form, its catalogue, and the commands that change it.
#pragma once

#include <QObject>
#include <QString>

#include <memory>

#include "db/catalogue.h"
#include "db/database.h"
#include "db/old_format.h"
#include "db/record_form.h"

namespace lokari {

class DatabaseSession : public QObject {
  Q_OBJECT

 public:
  /// `dbPath` is the configured database; nothing is opened yet. `oldFormat` must outlive the
  /// session.
  DatabaseSession(const RecordFormParts& parts, QString dbPath, OldFormat& oldFormat,
                  QObject* parent = nullptr);
  ~DatabaseSession() override;

  /// The file that is open; until one is, the configured one.
  const QString& dbPath() const { return dbPath_; }

  /// Opens `dbPath` and shows its first record, or begins a new one when it holds none. A first
  /// record without an address is a leftover and goes, in the first opening of a process without a
  /// question.
  ///
  /// A database of Access is taken over, when the user agrees, and `dbPath` is then the new one.
  ///
  /// 0 when the program may go on, 1 when not; the database that was open before is then still
  /// open. 0 is also the answer to a database of format V2, whatever the user said to its import:
  /// hasDatabase() then tells whether one is open.
  int InitDB();
  /// InitDB refuses some files without a word: tells which one, why, and what to do. Nothing when
  /// the user knows already.
  void tellRefusal();
  bool hasDatabase() const { return database_ != nullptr; }

  /// Shows the vehicles anew, from the first one and without a filter, after others than the form
  /// changed them; a database that holds none begins a new record. A pending edit is dropped.
  /// Nothing without a database.
  void requery();

  RecordForm& form() { return form_; }
  Catalogue& catalogue() { return catalogue_; }
  /// Only with hasDatabase().
  Database& database() { return *database_; }

  /// Menu commands. Messages and file dialogs go through the Prompt.
  void mnuDbOpen();
  void mnuDbNew();
  /// Takes the makers and types of the template over that the open database lacks.
  void mnuUpdDB();

 signals:
  /// `dbPath` names another open database: the main window's caption follows.
  void opened();
  /// A pause that deserves the busy pointer begins or ends.
  void busyChanged(bool busy);

 private:
  bool openNamed(const QString& path);
  void openDatabase(const QString& file);
  void showFirst();
  int openingFailed(const StorageError& error);
  int offerImport(const QString& file);
  void createDatabase(const QString& path);
  QString templatePath() const;

  RecordFormParts parts_;
  QString dbPath_;
  QString openPath_;  // of the database that is open, as it was asked for
  QString refusal_;   // of the file that InitDB refused without a word, with its name
  OldFormat& oldFormat_;
  // The form and the catalogue read the database: it goes last.
  std::unique_ptr<Database> database_;
  Catalogue catalogue_;
  RecordForm form_;
};

}  // namespace lokari
