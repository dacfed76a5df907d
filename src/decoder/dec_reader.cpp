#include "decoder/dec_reader.h"

#include "base/text_file.h"
#include "decoder/dec_fields.h"

namespace lokari {
namespace {

void note(DecFaults* faults, int line, const QString& text) {
  if (faults) faults->push_back({line, text});
}

/// Lines that are meant to be skipped: empty ones, comments, the header with the decoder's name.
bool isPlainlySkipped(const QString& line) {
  const QString body = trimBlanks(line);
  return body.isEmpty() || body.startsWith(u';') || body.startsWith(u'#') ||
         body.startsWith(u'\'') || body.startsWith(u'-') || body.startsWith(u'[');
}

}  // namespace

std::vector<DecStatement> readStatements(const QString& text, DecFaults* faults) {
  std::vector<DecStatement> statements;
  bool header = false;
  const QStringList lines = splitLines(text);
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const int lineNumber = static_cast<int>(i) + 1;
    QString line = lines[i];
    if (!line.contains(u'=')) {
      header = header || line.startsWith(u'[');
      if (!isPlainlySkipped(line)) {
        note(faults, lineNumber, QStringLiteral("Zeile ohne \"=\" wird nicht beachtet."));
      }
      continue;
    }
    if (line.endsWith(u'-')) {
      line.chop(1);
      if (i + 1 < lines.size()) {
        line += trimLeadingBlanks(lines[++i]);
        if (line.endsWith(u'-')) {
          note(faults, lineNumber + 1,
               QStringLiteral("Eine Anweisung kann nur einmal fortgesetzt werden."));
        }
      } else {
        note(faults, lineNumber, QStringLiteral("Die Fortsetzungszeile fehlt."));
      }
    }
    const qsizetype equals = line.indexOf(u'=');
    statements.push_back({lineNumber, trimBlanks(line.left(equals)).toUpper(),
                          trimLeadingBlanks(line.mid(equals + 1))});
  }
  if (!header) note(faults, 0, QStringLiteral("Die Kopfzeile \"[Decodertyp]\" fehlt."));
  return statements;
}

}  // namespace lokari
