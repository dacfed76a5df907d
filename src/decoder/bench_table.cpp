// The buttons of the speed table: smoothing, the list, and `.spd` files.
#include "base/file_place.h"
#include "base/paths.h"
#include "base/prompt.h"
#include "base/text_file.h"
#include "decoder/decoder_bench.h"
#include "decoder/spd_file.h"
#include "decoder/speed_table.h"
#include "decoder/speed_table_list.h"

namespace lokari {
namespace {

const QString& filter() {
  static const QString text =
      QStringLiteral("Alle Dateien (*.*)|*.*|Geschwindikeitstabellen (*.spd)|*.spd");
  return text;
}

QString tableFolder(const QString& basePath) {
  return basePath + QStringLiteral("/SpeedTab");
}

}  // namespace

void DecoderBench::adaptTable() {
  // Without a table CV 67 to 94 are CVs like all others, which no curve may write over.
  for (const char* name : {"cmdSmooth", "cmdTblList", "cmdLoadTable", "cmdSaveTable"}) {
    controls.setEnabled(QString::fromLatin1(name), description.SPEEDTABLE);
  }
}

bool DecoderBench::tableButtonClicked(const QString& name) {
  struct TableButton {
    const char16_t* name;
    void (DecoderBench::*action)();
  };
  constexpr TableButton kButtons[] = {
      {u"cmdSmooth", &DecoderBench::smoothTable},
      {u"cmdTblList", &DecoderBench::listTable},
      {u"cmdLoadTable", &DecoderBench::loadTable},
      {u"cmdSaveTable", &DecoderBench::saveTable},
  };
  for (const TableButton& button : kButtons) {
    if (name != QStringView(button.name)) continue;
    (this->*button.action)();
    return true;
  }
  return false;
}

void DecoderBench::smoothTable() {
  SpeedTable table(*this);
  // The table is not what the user looks at.
  if (table.view() == SpeedView::ThreePoints &&
      parts_.prompt.ask(
          {.text = QStringLiteral("Geschwindigkeitstabelle glätten?"),
           .buttons = Buttons::OkCancel,
           .icon = Icon::Warning,
           .more = QStringLiteral("Das ändert %1. Gezeigt wird aber die Kurve aus %2.")
                       .arg(table.tableCvs(), table.shownCvs()),
           .preset = Answer::Cancel}) != Answer::Ok) {
    return;
  }
  table.smooth();
  emit speedTableChanged();
}

void DecoderBench::listTable() {
  SpeedTableList list(*this, parts_.prompt);
  if (!list.usable()) {
    parts_.prompt.message(
        QStringLiteral("Die Geschwindigkeitstabelle ist ausgeschaltet."), Icon::Information,
        QStringLiteral("Die Liste zeigt %1. Dazu \"Geschwindigkeitstabelle\" auf \"Ja\" stellen.")
            .arg(SpeedTable(*this).tableCvs()));
    return;
  }
  if (tableListBox) tableListBox(list);
}

void DecoderBench::loadTable() {
  const QString name = parts_.prompt.openFile({QStringLiteral("Geschwindigkeitstabelle laden"),
                                               filter(),
                                               tableFolder(parts_.basePath),
                                               {}});
  if (name.isEmpty()) return;
  QString path = findFile(name);
  if (path.isEmpty()) path = placeFor(withSpdExtension(name));
  const SpdFile file = readSpdFile(path, description.INTERNALSTEPS);
  if (!file.fault.isEmpty()) {
    parts_.prompt.message(file.fault);
    return;
  }
  SpeedTable table(*this);
  int point = 0;
  for (const int value : file.values) {
    if (++point > description.tablePoints()) break;
    table.store(CvIndex(cv::kFirstTable - 1 + point), value);
  }
  refreshFields(false);
}

void DecoderBench::saveTable() {
  const QString folder = tableFolder(parts_.basePath);
  const QString name = parts_.prompt.saveFile(
      {QStringLiteral("Geschwindigkeitstabelle speichern"), filter(), folder, freeSpdName(folder)});
  if (name.isEmpty()) return;
  const Settings& settings = parts_.settings;
  const auto place =
      FilePlace::chosen(withSpdExtension(name), kSpeedTableFile,
                        {settings.dbPath, settings.listReport, settings.csvReport}, parts_.prompt);
  if (!place) return;
  std::vector<int> values;
  for (int i = cv::kFirstTable; i <= cv::kLastTable; ++i) values.push_back(sets.value(CvIndex(i)));
  const QString fault = replaceFile(place->path(), spdLine(values));
  if (!fault.isEmpty()) {
    parts_.prompt.message(QStringLiteral("Fehler beim Schreiben von %1").arg(place->path()),
                          Icon::Warning, fault);
  }
}

}  // namespace lokari
