// What a trace tells of the station and the settings: what its reader needs, and nothing of its
// owner, neither names nor folders.
#pragma once

#include <QString>

namespace lokari {

struct SerialSettings;
struct Settings;

/// Lines that begin with "# ", the last one without its end.
QString traceHead(const Settings& settings);

/// The station's kind and how it is reached: "TAMSMC an COM3, 2400 Baud, RTS/CTS",
/// "Z21IP an 192.168.000.111". An address outside of private networks is left out.
QString stationText(const Settings& settings);

/// "COM3, 2400 Baud, RTS/CTS"
QString portText(const SerialSettings& line);

/// Without the user's own folder, which has his name.
QString withoutHome(QString text);
/// Also without the station's address where stationText() leaves it out.
QString withoutOwner(const QString& text, const Settings& settings);

}  // namespace lokari
