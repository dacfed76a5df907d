// The program's messages as the manual quotes them.
#pragma once

#include <QString>
#include <QStringList>

namespace lokari {

/// The messages that a page explains: the first cells of its tables, each of their lines for
/// itself. "..." stands for what differs from case to case.
QStringList quotedMessages(const QString& html);

/// Whether a text that the program shows is the quoted message, or begins with it.
bool isQuoted(const QString& quoted, const QString& shown);

/// The message among `quoted` that tells most of the shown text; empty when none does.
QString quotedAs(const QStringList& quoted, const QString& shown);

}  // namespace lokari
