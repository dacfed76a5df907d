#include "cab/leaving.h"

#include "base/prompt.h"

namespace lokari {

Leaving askHowToLeave(Prompt& prompt, const QStringList& titles) {
  const QString text =
      titles.size() == 1
          ? QStringLiteral("%1 fährt noch.").arg(titles.first())
          : QStringLiteral("Diese Fahrzeuge fahren noch:\n%1").arg(titles.join(u'\n'));
  const int answer = prompt.choose(
      {.text = text,
       .more = QStringLiteral("„Fahren lassen“ sendet nichts: Gefahren wird ohne Fahrpult weiter. "
                              "„Abschalten“ hält die ganze Anlage an."),
       .answers = {QStringLiteral("&Fahren lassen"), QStringLiteral("An&halten"),
                   QStringLiteral("&Abschalten")},
       .safe = 0});
  return static_cast<Leaving>(answer);
}

}  // namespace lokari
