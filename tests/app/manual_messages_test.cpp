// The manual quotes the messages of the program as they are, and all of them.
#include "app/manual_messages.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

#include "support/places.h"

namespace lokari {
namespace {

QString read(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
  return QString::fromUtf8(file.readAll());
}

/// Neighbouring literals are one text.
QStringList textsIn(const QString& source) {
  static const QRegularExpression token(
      QStringLiteral(R"re(//[^\n]*|/\*.*?\*/|'(?:\\.|[^'\\])*'|u?"((?:\\.|[^"\\])*)")re"),
      QRegularExpression::DotMatchesEverythingOption);
  QStringList result;
  qsizetype end = -1;
  auto each = token.globalMatch(source);
  while (each.hasNext()) {
    const auto match = each.next();
    if (match.capturedView(0).startsWith(u'/')) continue;
    if (match.capturedView(0).startsWith(u'\'')) {
      end = -1;
      continue;
    }
    const bool goesOn =
        end >= 0 && QStringView(source).mid(end, match.capturedStart() - end).trimmed().isEmpty();
    if (!goesOn) result << QString();
    result.last() += match.captured(1);
    end = match.capturedEnd();
  }
  return result;
}

/// As it is seen: on one line, with "..." for what is filled in.
QString asShown(QString text) {
  static const QRegularExpression lineEnd(QStringLiteral(R"(\\[rnt])"));
  static const QRegularExpression filledIn(QStringLiteral("%[0-9]"));
  text.replace(lineEnd, QStringLiteral(" ")).replace(QStringLiteral("\\\""), QStringLiteral("\""));
  // The manual leaves out the marks around what is filled in.
  text.replace(QStringLiteral("\"%1\""), QStringLiteral("%1"));
  return text.replace(filledIn, QStringLiteral("...")).simplified();
}

/// The texts of the program with windows. The command line has a page of its own, which another
/// test holds to it.
const QStringList& programTexts() {
  static const QStringList texts = [] {
    QStringList result;
    const QString top = places::source() + QStringLiteral("/src");
    const QStringList others{QStringLiteral("/cli/"), QStringLiteral("/app/tour/"),
                             QStringLiteral("/access_reader/")};
    QDirIterator each(top, {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (each.hasNext()) {
      const QString path = each.next();
      const bool isOther =
          std::ranges::any_of(others, [&](const QString& other) { return path.contains(other); });
      if (isOther) continue;
      for (const QString& text : textsIn(read(path))) {
        if (!text.isEmpty()) result << asShown(text);
      }
    }
    return result;
  }();
  return texts;
}

const QStringList& quoted() {
  static const QStringList rows = quotedMessages(
      read(places::source() + QStringLiteral("/docs/handbuch/fehlermeldungen.html")));
  return rows;
}

/// Whether a text of the program has `part`, or two of them have it between them.
bool isOfProgram(const QString& part) {
  const QStringList& texts = programTexts();
  const auto any = [&](auto test) { return std::ranges::any_of(texts, test); };
  if (any([&](const QString& text) { return text.contains(part); })) return true;
  for (qsizetype gap = part.indexOf(u' '); gap > 0; gap = part.indexOf(u' ', gap + 1)) {
    const QString first = part.left(gap);
    const QString second = part.mid(gap + 1);
    if (any([&](const QString& text) { return text.endsWith(first); }) &&
        any([&](const QString& text) { return text.startsWith(second); })) {
      return true;
    }
  }
  return false;
}

TEST(ManualMessages, EveryQuotedMessageIsATextOfTheProgram) {
  EXPECT_GT(quoted().size(), 120);
  for (const QString& message : quoted()) {
    for (const QString& part : message.split(QStringLiteral("..."))) {
      const QString text = part.trimmed();
      // A bracket or a comma alone says nothing.
      if (text.size() < 4) continue;
      EXPECT_TRUE(isOfProgram(text)) << qPrintable(message) << "\n  " << qPrintable(text);
    }
  }
}

// A message of this program ends with an exclamation mark.
TEST(ManualMessages, EveryMessageOfTheProgramIsExplained) {
  // Said while something works, or below a text that is explained.
  const QStringList noMessages{
      QStringLiteral("Übertragung läuft... MX1 und PC jetzt nicht abschalten!"),
      QStringLiteral("... davon mit anderem Decodertyp als \"...\"!"),
      QStringLiteral("Die Schnittstelle COM... (...) ...!")};
  int messages = 0;
  for (const QString& text : programTexts()) {
    static const QRegularExpression words(QStringLiteral("\\p{L}{3}.* "));
    if (!text.endsWith(u'!') || !text.contains(words) || noMessages.contains(text)) continue;
    ++messages;
    const bool isExplained = std::ranges::any_of(
        quoted(), [&](const QString& row) { return row.contains(text) || isQuoted(row, text); });
    EXPECT_TRUE(isExplained) << qPrintable(text);
  }
  EXPECT_GT(messages, 90);
}

// Menus are written "Menü – Eintrag"; a caption ends in the manual as it does in the window.
TEST(ManualMessages, WhatTheManualPrintsInBoldStandsInTheWindows) {
  // Keys, and what the page itself explains.
  const QStringList others{QStringLiteral("Esc"),         QStringLiteral("F1"),
                           QStringLiteral("F2"),          QStringLiteral("Pause"),
                           QStringLiteral("Umschalt+F1"), QStringLiteral("Fett"),
                           QStringLiteral("Kreis"),       QStringLiteral("Kreuz")};
  QSet<QString> captions;
  for (QString text : programTexts()) {
    // The key of a menu entry follows its caption.
    text = text.remove(u'&').section(QStringLiteral("Entf"), 0, 0).trimmed();
    for (const char16_t* end : {u" ...", u"...", u":"}) {
      if (text.endsWith(QStringView(end))) text.chop(QStringView(end).size());
    }
    captions.insert(text);
  }
  QDirIterator each(places::source() + QStringLiteral("/docs/handbuch"), {QStringLiteral("*.html")},
                    QDir::Files);
  while (each.hasNext()) {
    const QString path = each.next();
    // The parts of a description's line are no captions.
    if (path.endsWith(QStringLiteral("decoderdateien.html"))) continue;
    static const QRegularExpression bold(QStringLiteral("<b>([^<]*)</b>"));
    auto found = bold.globalMatch(read(path));
    while (found.hasNext()) {
      const QString words = found.next().captured(1).simplified();
      if (others.contains(words)) continue;
      for (QString caption : words.split(QStringLiteral(" – "))) {
        caption.remove(QStringLiteral(" ...")).remove(QStringLiteral("..."));
        EXPECT_TRUE(captions.contains(caption)) << qPrintable(path) << ": " << qPrintable(words);
      }
    }
  }
}

// What the storage and the printing refuse is a sentence.
TEST(ManualMessages, WhatIsThrownAsAFaultIsExplained) {
  static const QRegularExpression fault(QStringLiteral(
      R"re((?:StorageError|ReportError|LinkError)\(\s*(?:storage_error::\w+,\s*)?QStringLiteral\(((?:\s*"(?:\\.|[^"\\])*")+)\))re"));
  // Told by a program that is at fault itself.
  const QStringList others{QStringLiteral("SQLite-Treiber nicht verfügbar."),
                           QStringLiteral("Kein aktueller Datensatz."),
                           QStringLiteral("Es wird kein Datensatz bearbeitet."),
                           QStringLiteral("Die Abfrage ... hat keine ganzen Datensätze."),
                           QStringLiteral("Ungültige Nachricht an die Z21:"),
                           // Put together of parts that are told one by one.
                           QStringLiteral("Die Schnittstelle COM... (...) ...!"),
                           QStringLiteral("Die Vorlage ... ..."), QStringLiteral("... ... (...)")};
  int faults = 0;
  QDirIterator each(places::source() + QStringLiteral("/src"), {QStringLiteral("*.cpp")},
                    QDir::Files, QDirIterator::Subdirectories);
  while (each.hasNext()) {
    auto found = fault.globalMatch(read(each.next()));
    while (found.hasNext()) {
      const QString text = asShown(textsIn(found.next().captured(1)).join(QString()));
      if (others.contains(text)) continue;
      ++faults;
      EXPECT_TRUE(std::ranges::any_of(quoted(), [&](const QString& row) {
        return row.contains(text) || isQuoted(row, text);
      })) << qPrintable(text);
    }
  }
  EXPECT_GT(faults, 15);
}

TEST(ManualMessages, AMessageIsFoundAsItIsShown) {
  EXPECT_EQ(quotedAs(quoted(), QStringLiteral("Für COM3 steht in PORTS.INI kein Gerät!")),
            QStringLiteral("Für COM... steht in PORTS.INI kein Gerät!"));
  EXPECT_EQ(quotedAs(quoted(), QStringLiteral("Datensatz wirklich löschen?")), QString());
  EXPECT_TRUE(isQuoted(QStringLiteral("Datei ... ist beschädigt: ..."),
                       QStringLiteral("Datei /a\nb.spd ist beschädigt: Sie ist keine Textdatei.")));
  EXPECT_FALSE(isQuoted(QStringLiteral("Datei ... fehlt!"), QStringLiteral("Die Datei a fehlt!")));
}

}  // namespace
}  // namespace lokari
