// A simulated station on a serial line in virtual time that is sent the fuzzer's bytes.
#pragma once

#include <QByteArray>
#include <QStringView>

namespace lokari::fuzz {

/// Sends `input` to two stations of the name, whole and byte by byte, and after a pause `question`.
/// Stops the process when their answers differ, when one answers from inside the write, or when
/// the answers do not end with `answer`.
void runStation(QStringView name, const QByteArray& input, const QByteArray& question,
                const QByteArray& answer);

}  // namespace lokari::fuzz
