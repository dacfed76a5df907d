// Texts of the Lenz decoder programmer. A command ends with one carriage return; its numbers are
// upper-case hexadecimal. A CV counts from 0 on the wire.
#pragma once

#include <QByteArray>

namespace lokari::lidp {

/// Characters that a reply has at least.
inline constexpr int kReplyLength = 4;

/// `cv` counts from 1.
QByteArray readCommand(int cv);
QByteArray writeCommand(int cv, int value);
/// Ends the session.
QByteArray endCommand();

/// `reply` without the carriage returns and line feeds ahead of it: the end of an earlier reply may
/// be late.
QByteArray withoutLateEnd(const QByteArray& reply);

/// How many whole replies the text has: each ends with its line, or is long enough.
int repliesIn(const QByteArray& text);
/// The value of a reply "vvOK", or a negative code.
int readResult(const QByteArray& reply);
/// `value` when the third and fourth character are "OK", or a negative code.
int writeResult(const QByteArray& reply, int value);

}  // namespace lokari::lidp
