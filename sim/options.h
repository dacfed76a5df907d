// The command line of lokari-sim.
#pragma once

#include <QStringList>

#include "sim/faults.h"
#include "sim/makers/makers_options.h"

namespace lokari::sim {

struct Options {
  QString station;
  QString link;          ///< serial stations
  quint16 udpPort = 0;   ///< UDP stations; 0 is the station's own
  QStringList decoders;  ///< files
  QString image;         ///< file for the firmware that a station took; empty for none
  QList<Fault> faults;
  int answerDelay = 20;   ///< ms
  bool powerOff = false;  ///< the state of the track at the start
  bool stopped = false;
  bool overloaded = false;
  bool makersForm = false;  ///< the station as its maker's documents describe it
  MakersOptions makers;
  bool log = false;
  bool help = false;

  QString error;  ///< German; empty for a good command line
};

Options parseOptions(const QStringList& arguments);

QString helpText();

}  // namespace lokari::sim
