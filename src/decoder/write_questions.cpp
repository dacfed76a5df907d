// What a batch write asks before it opens the line: CVs whose ticks or values nobody can have
// meant.
#include "base/prompt.h"
#include "db/form_names.h"
#include "decoder/decoder_bench.h"
#include "decoder/write_batch.h"

namespace lokari {

bool WriteBatch::mayBegin() {
  return mayReachAnother() && mayWriteDoubtful();
}

bool WriteBatch::mayReachAnother() {
  const auto address = bench_.addressNumber();
  const auto known = bench_.knownAddress();
  // What is no address is refused later on.
  const bool another = address && known && form::isAddress(*address) && *address != *known;
  if (progOn() || !another) return true;
  return bench_.parts_.prompt.ask(
             {.text = QStringLiteral("Das Fahrzeug mit der Adresse %1 würde beschrieben, nicht das "
                                     "mit der Adresse %2!")
                          .arg(*address)
                          .arg(*known),
              .buttons = Buttons::OkCancel,
              .icon = Icon::Warning,
              .more = QStringLiteral("Auf dem Hauptgleis geht alles an die Adresse, die im Fenster "
                                     "steht, auch eine neue Adresse. OK schreibt in das Fahrzeug "
                                     "%1, Abbruch schreibt nichts.")
                          .arg(*address),
              .preset = Answer::Cancel}) == Answer::Ok;
}

bool WriteBatch::goOnUnchecked(const QString& text) {
  const Answer answer = bench_.parts_.prompt.ask(
      {.text = text,
       .buttons = Buttons::OkCancel,
       .icon = Icon::Warning,
       .more = QStringLiteral("OK schreibt ohne diese Prüfung, Abbruch schreibt nichts."),
       .preset = Answer::Cancel});
  return answer == Answer::Ok || endAs(End::Orderly);
}

bool WriteBatch::mayWriteDoubtful() {
  struct Doubt {
    const char16_t* reason;
    std::vector<CvIndex> cvs = {};
  };
  Doubt readOnly{u"nur lesbar, wie die Beschreibung des Decodertyps sagt"};
  Doubt unreachable{u"mit dieser Zentrale nicht zu schreiben"};
  Doubt unseen{u"nicht oder nicht ganz gelesen; der Wert stammt von einem misslungenen Lesen"};
  for (int i = 2; i <= kHighestCvIndex; ++i) {
    const CvIndex cv(i);
    if (!marked(cv)) continue;
    if (bench_.sets.isDoubtful(cv)) unseen.cvs.push_back(cv);
    if (bench_.writeAllowed(cv) && canSend(cv)) continue;
    (bench_.description.info(cv).hasDefault() ? unreachable : readOnly).cvs.push_back(cv);
  }
  QStringList lines;
  for (const Doubt& doubt : {readOnly, unreachable, unseen}) {
    if (doubt.cvs.empty()) continue;
    lines << QStringLiteral("%1: %2.").arg(bench_.listOfCvs(doubt.cvs),
                                           QStringView(doubt.reason).toString());
  }
  if (lines.isEmpty()) return true;
  enum { kAll, kWithout, kNothing };
  const int answer = bench_.parts_.prompt.choose(
      {.text = QStringLiteral("Sollen wirklich alle angekreuzten CVs geschrieben werden?"),
       .more = lines.join(u'\n'),
       .answers = {QStringLiteral("&Alle schreiben"), QStringLiteral("&Diese auslassen"),
                   QStringLiteral("Abbruch")},
       .safe = kNothing,
       .icon = Icon::Warning});
  if (answer == kAll) return true;
  for (const Doubt& doubt : {readOnly, unreachable, unseen}) spare(doubt.cvs);
  return answer == kWithout && anythingPlanned();
}

}  // namespace lokari
