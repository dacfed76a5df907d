#include "cab/layout_stands.h"

namespace lokari {

QString layoutStandsText(LayoutStands stands) {
  switch (stands) {
    case LayoutStands::Halted:
      return QStringLiteral(
          "Die Zentrale hat den Befehl angenommen, aber die Anlage ist angehalten.");
    case LayoutStands::WithoutPower:
      return QStringLiteral("Die Zentrale hat den Befehl angenommen, aber das Gleis ist stromlos.");
    case LayoutStands::No:
      break;
  }
  return {};
}

}  // namespace lokari
