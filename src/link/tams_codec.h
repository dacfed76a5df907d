// Texts of the Tams MC. Commands end with a carriage return; every number in them is decimal with
// one blank in front ("xPTRB 29"). Replies end with "]", mostly with a
// carriage return behind.
#pragma once

#include <QByteArray>

namespace lokari::tams {

/// `mode` is 1 paged, 2 register, any other value direct.
QByteArray readCommand(int mode, int cv);
QByteArray writeCommand(int mode, int cv, int value);
QByteArray writeMainCommand(int address, int cv, int value);

/// `input` without its carriage returns and line feeds.
QByteArray textOf(const QByteArray& input);

/// The value that a reply of at least three characters begins with, or a negative code.
int readResult(const QByteArray& reply);
/// `value` when the reply says that it was written, or a negative code.
int writeResult(const QByteArray& reply, int value);

/// True for a reply that is cut in the middle of one of the texts: more must come before it can
/// be judged.
bool isCutText(const QByteArray& reply);
/// True for a reply that has its end.
bool isComplete(const QByteArray& reply);
/// How many replies end in the text.
int repliesIn(const QByteArray& text);

}  // namespace lokari::tams
