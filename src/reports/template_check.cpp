#include "reports/template_check.h"

#include <optional>

namespace lokari {
namespace {

const QString kOpen = QStringLiteral("{{");

struct Tag {
  QChar kind;  ///< '#', '^', '/', '!', '>', '='; null for a value
  QString name;
  qsizetype end = 0;  ///< behind its closing braces
};

/// The tag that begins at `at`; nothing when it has no end.
std::optional<Tag> readTag(const QString& text, qsizetype at) {
  const qsizetype begin = at + kOpen.size();
  const bool isTriple = begin < text.size() && text.at(begin) == u'{';
  const QString close = isTriple ? QStringLiteral("}}}") : QStringLiteral("}}");
  const qsizetype nameAt = begin + (isTriple ? 1 : 0);
  const qsizetype end = text.indexOf(close, nameAt);
  if (end < 0) return {};
  Tag tag;
  tag.end = end + close.size();
  QString inside = text.mid(nameAt, end - nameAt).trimmed();
  if (!isTriple && !inside.isEmpty() && QStringLiteral("#^/!>=&").contains(inside.front())) {
    if (inside.front() != u'&') tag.kind = inside.front();
    inside = inside.mid(1).trimmed();
  }
  tag.name = inside;
  return tag;
}

class Checker {
 public:
  Checker(const QString& text, const ReportFields& fields) : text_(text), fields_(fields) {}

  TemplateContents run() {
    qsizetype at = 0;
    while (contents_.fault.text.isEmpty()) {
      const qsizetype next = text_.indexOf(kOpen, at);
      const qsizetype textEnd = next < 0 ? text_.size() : next;
      takeText(QStringView(text_).mid(at, textEnd - at));
      if (next < 0) break;
      const std::optional<Tag> tag = readTag(text_, next);
      if (!tag) {
        fail(QStringLiteral("Dem Feld fehlen die schließenden Klammern."));
        break;
      }
      takeTag(*tag);
      line_ += static_cast<int>(QStringView(text_).mid(next, tag->end - next).count(u'\n'));
      at = tag->end;
    }
    checkEnd();
    return contents_;
  }

 private:
  struct Section {
    QString name;
    int line;
    bool repeats;  ///< once for each vehicle
  };

  void fail(const QString& text) { failAt(line_, text); }
  void failAt(int line, const QString& text) {
    if (contents_.fault.text.isEmpty()) contents_.fault = {line, text};
  }

  bool isAmongVehicles() const {
    for (const Section& section : sections_) {
      if (section.repeats) return true;
    }
    return false;
  }

  static bool isVehicles(const QString& name) { return name == QStringView(kVehicleSection); }

  void takeText(QStringView text) {
    line_ += static_cast<int>(text.count(u'\n'));
    if (isAmongVehicles()) contents_.vehicleText += text;
  }

  void takeTag(const Tag& tag) {
    switch (tag.kind.unicode()) {
      case u'!':
        contents_.remarks << tag.name;
        break;
      case u'>':
        return fail(QStringLiteral("Eine Vorlage kann keine andere einbinden."));
      case u'=':
        return fail(QStringLiteral("Die Klammern der Felder lassen sich nicht ändern."));
      case u'/':
        return closeSection(tag.name);
      case u'#':
      case u'^':
        takeName(tag);
        sections_.append({tag.name, line_, tag.kind == u'#' && isVehicles(tag.name)});
        break;
      default:
        takeName(tag);
    }
  }

  void takeName(const Tag& tag) {
    if (isVehicles(tag.name)) {
      if (tag.kind.isNull()) fail(QStringLiteral("\"fahrzeuge\" ist ein Abschnitt und kein Feld."));
      if (isAmongVehicles())
        fail(QStringLiteral("Der Abschnitt \"fahrzeuge\" steht in sich selbst."));
      if (tag.kind == u'#') noteVehicles();
      return;
    }
    if (fields_.report.contains(tag.name)) return;
    if (!fields_.vehicle.contains(tag.name)) {
      return fail(QStringLiteral("Das Feld \"%1\" gibt es nicht.").arg(tag.name));
    }
    if (!isAmongVehicles()) {
      return fail(
          QStringLiteral("Das Feld \"%1\" gehört in den Abschnitt \"fahrzeuge\".").arg(tag.name));
    }
    if (!contents_.usedFields.contains(tag.name)) contents_.usedFields << tag.name;
  }

  void noteVehicles() {
    hasVehicles_ = true;
    if (contents_.vehicleLine == 0) contents_.vehicleLine = line_;
  }

  void closeSection(const QString& name) {
    if (sections_.isEmpty()) {
      return fail(QStringLiteral("Der Abschnitt \"%1\" endet, ohne begonnen zu haben.").arg(name));
    }
    const Section section = sections_.takeLast();
    if (section.name != name) {
      fail(QStringLiteral("Hier endet \"%1\", aber offen ist \"%2\" aus Zeile %3.")
               .arg(name, section.name)
               .arg(section.line));
    }
  }

  void checkEnd() {
    if (!sections_.isEmpty()) {
      failAt(sections_.last().line,
             QStringLiteral("Der Abschnitt \"%1\" hat kein Ende.").arg(sections_.last().name));
    }
    if (!hasVehicles_) failAt(0, QStringLiteral("Der Abschnitt \"{{#fahrzeuge}}\" fehlt."));
  }

  const QString& text_;
  const ReportFields& fields_;
  TemplateContents contents_;
  QList<Section> sections_;
  int line_ = 1;
  bool hasVehicles_ = false;
};

}  // namespace

TemplateContents checkTemplate(const QString& text, const ReportFields& fields) {
  return Checker(text, fields).run();
}

}  // namespace lokari
