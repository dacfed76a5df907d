// From the name of a firmware file to an image that the user has agreed to load. Nothing is sent
// here, and what fails a check never gets further.
#pragma once

#include <QStringList>

#include <functional>
#include <optional>

#include "station/firmware.h"

namespace lokari {

class Prompt;
struct Settings;

/// Why the configured station kind takes no firmware: German, empty when it does.
QString firmwareRefusal(const Settings& settings);

/// Reads and checks the file, then asks for leave to load it by its name. A name without an
/// extension gets ".HEX". Nothing when a check failed, which the user has been told, or when he
/// declined. `showBusy` is called with true and false around the reading. `openCabs` are the titles
/// of cabs and panels that the transfer takes the station from; they stand below the question.
std::optional<Firmware> confirmedFirmware(QString name, Prompt& prompt,
                                          const std::function<void(bool)>& showBusy,
                                          const QStringList& openCabs = {});

/// The road of the menu entry: the station kind, the file dialog, which starts in `folder`, and
/// confirmedFirmware().
std::optional<Firmware> chosenFirmware(const Settings& settings, Prompt& prompt,
                                       const QString& folder,
                                       const std::function<void(bool)>& showBusy,
                                       const QStringList& openCabs = {});

}  // namespace lokari
