#include "db/jet_tokens.h"

#include "db/storage_error.h"

namespace lokari {
namespace {

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

bool beginsWord(QChar c) {
  return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_';
}

class Tokenizer {
 public:
  explicit Tokenizer(const QString& query) : query_(query) {}

  QList<JetToken> run() {
    QList<JetToken> tokens;
    for (skipBlanks(); at_ < query_.size(); skipBlanks()) tokens.append(next());
    tokens.append({JetTokenKind::End, QString(), at_});
    return tokens;
  }

 private:
  QChar peek(qsizetype ahead = 0) const {
    return at_ + ahead < query_.size() ? query_.at(at_ + ahead) : QChar();
  }

  void skipBlanks() {
    while (at_ < query_.size() && (peek() == u' ' || peek() == u'\t')) ++at_;
  }

  JetToken next() {
    const QChar first = peek();
    if (beginsWord(first)) return word();
    if (isDigit(first) || (first == u'.' && isDigit(peek(1)))) return number();
    if (first == u'"' || first == u'\'') return text();
    return symbol();
  }

  JetToken word() {
    const qsizetype begin = at_;
    while (beginsWord(peek()) || isDigit(peek())) ++at_;
    return {JetTokenKind::Word, query_.mid(begin, at_ - begin), begin};
  }

  void skipDigits() {
    while (isDigit(peek())) ++at_;
  }

  JetToken number() {
    const qsizetype begin = at_;
    skipDigits();
    // Amounts are shown with a comma, and so people type them.
    while (peek() == u'.' || (peek() == u',' && isDigit(peek(1)))) {
      ++at_;
      skipDigits();
    }
    if (peek() == u'E' || peek() == u'e') {
      const bool sign = peek(1) == u'+' || peek(1) == u'-';
      if (isDigit(peek(sign ? 2 : 1))) {
        at_ += sign ? 2 : 1;
        skipDigits();
      }
    }
    return {JetTokenKind::Number, query_.mid(begin, at_ - begin), begin};
  }

  JetToken text() {
    const qsizetype begin = at_;
    const QChar quote = peek();
    QString value = QStringLiteral("");
    for (++at_; at_ < query_.size(); ++at_) {
      if (peek() == quote) {
        if (peek(1) != quote) {
          ++at_;
          return {JetTokenKind::Text, value, begin};
        }
        ++at_;
      }
      value.append(peek());
    }
    throw StorageError(storage_error::kSyntax,
                       QStringLiteral("Syntaxfehler: Text ohne Ende in \"%1\".").arg(query_));
  }

  JetToken symbol() {
    const qsizetype begin = at_;
    for (const char16_t* known :
         {u"<>", u"<=", u">=", u"=", u"<", u">", u"(", u")", u",", u"*", u"-"}) {
      const QStringView text(known);
      if (QStringView(query_).sliced(at_).startsWith(text)) {
        at_ += text.size();
        return {JetTokenKind::Symbol, text.toString(), begin};
      }
    }
    throw StorageError(storage_error::kSyntax,
                       QStringLiteral("Syntaxfehler: unerwartetes Zeichen '%1' in \"%2\".")
                           .arg(peek())
                           .arg(query_));
  }

  QString query_;
  qsizetype at_ = 0;
};

}  // namespace

QList<JetToken> jetTokens(const QString& query) {
  return Tokenizer(query).run();
}

}  // namespace lokari
