// Pictures as Access stores them: a file wrapped into an OLE object.
#pragma once

#include <QByteArray>

#include <optional>

namespace lokari {

/// Whether the data are a picture file: BMP, JPEG or PNG, by their head.
bool isPictureFile(const QByteArray& data);

/// Whether the data begin with the wrapper of Access: bytes 15 1C.
bool isOleWrapped(const QByteArray& data);

/// The BMP, JPEG or PNG file in a wrapper, byte by byte; nothing when it holds another object, or
/// is broken.
///
/// The wrapper, numbers little-endian: 15 1C, its own length (16 bits), names for Access up to that
/// length. Then the object: version and kind (32 bits each, kind 2 is embedded), the names of its
/// class, topic and item (each a length in 32 bits and that many bytes, a zero byte included), the
/// length of its data (32 bits) and the data. A paint program's data are the bitmap file. The
/// packager's are 2 (16 bits), the label and the original path (each ended by a zero byte), 4
/// bytes, a temporary path (length in 32 bits and bytes), the length of the file (32 bits) and the
/// file.
std::optional<QByteArray> pictureInOle(const QByteArray& data);

}  // namespace lokari
