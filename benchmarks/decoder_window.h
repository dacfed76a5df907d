// The decoder window in virtual time, on a simulated Tams MC and a description of one's own.
#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <memory>

#include "base/ui/pictures.h"
#include "base/ui/window_scale.h"
#include "db/catalogue.h"
#include "db/cv_record.h"
#include "decoder/decoder_bench.h"
#include "decoder/ui/frm_decoder.h"
#include "link/station_link.h"
#include "sim/station_table.h"
#include "support/activation_hook.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"

namespace lokari {

/// A Tams MC with one decoder, and the link to it.
struct VirtualStation {
  VirtualStation() {
    settings.baseUnit = StationKind::TamsMc;
    settings.delayFlag = false;
    settings.addressCheckNow = false;
    settings.manufacturerCheckNow = false;
  }

  test::VirtualClock clock;
  Settings settings;
  test::ScriptedPrompt prompt;
  sim::Layout layout;
  sim::Decoder& decoder = layout.add({}).decoder;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> made =
      sim::stationByName(u"TAMSMC")->make({clock, layout, faults, 20});
  test::SimLine line{clock, *made};
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  StationLink link{settings, clock, prompt, {line, socket, can}};
};

/// The catalogue is empty, so the description is always Default.dec.
struct DecoderWindow {
  DecoderWindow() { record.InitDcData(); }

  void describe(const QByteArray& text) const {
    QFile file(folder.filePath(QStringLiteral("Default.dec")));
    if (file.open(QIODevice::WriteOnly)) file.write(text);
  }

  /// Opens the window, runs `script` in it, and closes it.
  void open(const std::function<void()>& script) {
    test::ActivationHook hook([&] {
      script();
      window.reject();
    });
    window.installEventFilter(&hook);
    window.edit(record, QStringLiteral("3"));
  }

  VirtualStation station;
  QTemporaryDir folder;
  Catalogue catalogue;
  WindowScale scale{folder.filePath(QStringLiteral("WINDOW.INI"))};
  CvRecord record;
  DecoderBench bench{{station.settings, station.clock, station.prompt, station.link, catalogue,
                      folder.path(), QStringList(256)}};
  FrmDecoder window{bench, station.link, station.clock, Pictures(folder.path()), scale};
};

}  // namespace lokari
