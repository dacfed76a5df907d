#include "app/manual_text.h"

#include <QHash>
#include <QRegularExpression>

#include <utility>

namespace lokari {
namespace {

QString withoutEntities(const QString& text) {
  static const QHash<QString, QString> table{{QStringLiteral("amp"), QStringLiteral("&")},
                                             {QStringLiteral("lt"), QStringLiteral("<")},
                                             {QStringLiteral("gt"), QStringLiteral(">")},
                                             {QStringLiteral("quot"), QStringLiteral("\"")},
                                             {QStringLiteral("nbsp"), QStringLiteral(" ")}};
  static const QRegularExpression entity(QStringLiteral("&([a-z]+);"));
  QString result;
  qsizetype from = 0;
  auto each = entity.globalMatch(text);
  while (each.hasNext()) {
    const auto match = each.next();
    result += text.mid(from, match.capturedStart() - from) + table.value(match.captured(1));
    from = match.capturedEnd();
  }
  return result + text.mid(from);
}

/// Goes through the tags of a page and cuts its text at the headings.
class Cutter {
 public:
  explicit Cutter(const ManualPage& page) : page_(page) {}

  QList<ManualSection> cut() {
    static const QRegularExpression tag(QStringLiteral("<(/?)([a-z0-9!]+)([^>]*)>"));
    // The head of the file has the title once more, which is no text of the page.
    const qsizetype body = page_.html.indexOf(QStringLiteral("<body>"));
    qsizetype from = body < 0 ? 0 : body;
    auto each = tag.globalMatch(page_.html, from);
    while (each.hasNext()) {
      const auto match = each.next();
      text_ += page_.html.mid(from, match.capturedStart() - from);
      from = match.capturedEnd();
      take(match.captured(2), !match.captured(1).isEmpty(), match.captured(3));
    }
    close();
    return std::move(sections_);
  }

 private:
  void take(const QString& name, bool ends, const QString& attributes) {
    static const QRegularExpression id(QStringLiteral("id=\"([^\"]+)\""));
    static const QRegularExpression inLine(QStringLiteral("^(b|i|em|code|a)$"));
    if (name != QStringLiteral("h1") && name != QStringLiteral("h2")) {
      if (!inLine.match(name).hasMatch()) text_ += u' ';
      return;
    }
    if (!ends) {
      close();
      const QString anchor = id.match(attributes).captured(1);
      section_.place = anchor.isEmpty() ? page_.name : page_.name + u'#' + anchor;
      return;
    }
    section_.heading = taken();
    if (name == QStringLiteral("h1")) title_ = section_.heading;
    section_.page = title_;
  }

  void close() {
    section_.text = taken();
    if (!section_.heading.isEmpty()) sections_.append(section_);
    section_ = {};
  }

  QString taken() { return withoutEntities(std::exchange(text_, {})).simplified(); }

  const ManualPage& page_;
  QList<ManualSection> sections_;
  ManualSection section_;
  QString title_;
  QString text_;
};

}  // namespace

QString plainText(const QString& html) {
  static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
  return withoutEntities(QString(html).remove(tag)).simplified();
}

QList<ManualSection> sectionsOf(const ManualPage& page) {
  return Cutter(page).cut();
}

}  // namespace lokari
