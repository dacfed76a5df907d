#include "db/jet_parser.h"

#include <algorithm>

#include "base/numbers.h"
#include "db/like_pattern.h"
#include "db/sqlite_functions.h"
#include "db/storage_error.h"

namespace lokari {
namespace {

// Deeper nesting is no query that the program makes.
constexpr int kDeepest = 50;

/// Words that are no column, so that a fault is told where it stands.
constexpr const char16_t* kReserved[] = {u"AND",  u"OR", u"NOT",   u"IS",     u"NULL", u"LIKE",
                                         u"FROM", u"BY", u"WHERE", u"SELECT", u"ORDER"};

constexpr const char16_t* kComparisons[] = {u"=", u"<>", u"<=", u">=", u"<", u">"};

QString collated(const QString& sql) {
  return sql + QStringLiteral(" COLLATE ") + QString::fromUtf16(kTextCollation);
}

QString isNull(const QString& name) {
  return QStringLiteral("(-(%1 IS NULL))").arg(quotedName(name));
}

}  // namespace

void JetParser::refuse() const {
  const QString near = peek().kind == JetTokenKind::End
                           ? QStringLiteral("am Ende")
                           : QStringLiteral("bei \"%1\"").arg(query_.mid(peek().at));
  throw StorageError(storage_error::kSyntax,
                     QStringLiteral("Syntaxfehler %1 im Ausdruck \"%2\".").arg(near, query_));
}

void JetParser::mismatch(qsizetype token) const {
  throw StorageError(
      storage_error::kTypeMismatch,
      QStringLiteral("Text und Zahl werden verglichen im Ausdruck \"%1\", bei \"%2\".")
          .arg(query_, query_.mid(tokens_.at(token).at)));
}

bool JetParser::accept(QStringView word) {
  if (!peek().is(word)) return false;
  ++at_;
  return true;
}

bool JetParser::acceptSymbol(QStringView symbol) {
  if (!peek().isSymbol(symbol)) return false;
  ++at_;
  return true;
}

void JetParser::expect(QStringView word) {
  if (!accept(word)) refuse();
}

void JetParser::expectSymbol(QStringView symbol) {
  if (!acceptSymbol(symbol)) refuse();
}

QString JetParser::expectName() {
  if (peek().kind != JetTokenKind::Word) refuse();
  return tokens_.at(at_++).text;
}

void JetParser::expectEnd() const {
  if (peek().kind != JetTokenKind::End) refuse();
}

const ColumnInfo& JetParser::column(const QString& name) const {
  const ColumnInfo* found = table_->column(name);
  if (found == nullptr) {
    throw StorageError(
        storage_error::kUnknownName,
        QStringLiteral("Die Tabelle %1 hat keine Spalte \"%2\".").arg(table_->name, name));
  }
  return *found;
}

QString JetParser::mark(const QVariant& value) {
  values_.append(value);
  return QStringLiteral("?");
}

JetSelect JetParser::select(const Schema& schema) {
  expect(u"SELECT");
  const What what = readWhat();
  expect(u"FROM");
  const QString name = expectName();
  table_ = schema.table(name);
  if (table_ == nullptr) {
    throw StorageError(storage_error::kUnknownName,
                       QStringLiteral("Die Tabelle \"%1\" gibt es nicht.").arg(name));
  }
  JetSelect result;
  result.table = table_->name;
  result.all = what.form == What::Form::All;
  result.what = whatSql(what);
  if (accept(u"WHERE")) result.where = QStringLiteral(" WHERE ") + disjunction(0);
  QString order;
  if (accept(u"ORDER")) {
    expect(u"BY");
    order = orderTerms(QString());
  }
  expectEnd();
  // One row answers a maximum, and the rows of a distinct list have no number.
  if (what.form == What::Form::All || what.form == What::Form::Columns) {
    order += order.isEmpty() ? QStringLiteral("rowid") : QStringLiteral(", rowid");
  }
  if (!order.isEmpty()) result.order = QStringLiteral(" ORDER BY ") + order;
  result.values = values_;
  return result;
}

JetParser::What JetParser::readWhat() {
  What what;
  if (acceptSymbol(u"*")) return what;
  for (const auto& [word, form] :
       {std::pair{u"DISTINCT", What::Form::Distinct}, std::pair{u"MAX", What::Form::Max}}) {
    if (!accept(word)) continue;
    expectSymbol(u"(");
    what.names.append(expectName());
    expectSymbol(u")");
    what.form = form;
    return what;
  }
  what.form = What::Form::Columns;
  do {
    what.names.append(expectName());
  } while (acceptSymbol(u","));
  return what;
}

QString JetParser::whatSql(const What& what) const {
  if (what.form == What::Form::All) return QStringLiteral("*");
  QStringList columns;
  for (const QString& name : what.names) {
    const ColumnInfo& info = column(name);
    const QString plain = quotedName(info.name);
    const QString comparable = info.isText() ? collated(plain) : plain;
    switch (what.form) {
      case What::Form::Distinct:
        columns.append(QStringLiteral("DISTINCT ") + comparable);
        break;
      case What::Form::Max:
        columns.append(QStringLiteral("MAX(%1)").arg(comparable));
        break;
      case What::Form::All:
      case What::Form::Columns:
        columns.append(plain);
    }
  }
  return columns.join(QStringLiteral(", "));
}

QString JetParser::orderTerms(QString order) {
  do {
    if (!order.isEmpty()) order += QStringLiteral(", ");
    if (accept(u"ISNULL")) {
      expectSymbol(u"(");
      order += isNull(column(expectName()).name);
      expectSymbol(u")");
    } else {
      const ColumnInfo& info = column(expectName());
      order += info.isText() ? collated(quotedName(info.name)) : quotedName(info.name);
    }
    if (accept(u"DESC")) {
      order += QStringLiteral(" DESC");
    } else {
      accept(u"ASC");
    }
  } while (acceptSymbol(u","));
  return order;
}

JetCondition JetParser::condition(const TableInfo& table) {
  table_ = &table;
  JetCondition result;
  result.sql = disjunction(0);
  expectEnd();
  result.values = values_;
  return result;
}

QString JetParser::disjunction(int depth) {
  if (depth > kDeepest) refuse();
  QString sql = conjunction(depth);
  while (accept(u"OR")) sql += QStringLiteral(" OR ") + conjunction(depth);
  return sql;
}

QString JetParser::conjunction(int depth) {
  QString sql = negation(depth);
  while (accept(u"AND")) sql += QStringLiteral(" AND ") + negation(depth);
  return sql;
}

QString JetParser::negation(int depth) {
  if (depth > kDeepest) refuse();
  if (accept(u"NOT")) return QStringLiteral("NOT ") + negation(depth + 1);
  return predicate(depth);
}

QString JetParser::predicate(int depth) {
  if (acceptSymbol(u"(")) {
    const QString inner = disjunction(depth + 1);
    expectSymbol(u")");
    return u'(' + inner + u')';
  }
  const qsizetype begin = at_;
  const Operand left = operand();
  if (accept(u"IS")) {
    const bool negated = accept(u"NOT");
    expect(u"NULL");
    return left.sql + (negated ? QStringLiteral(" IS NOT NULL") : QStringLiteral(" IS NULL"));
  }
  if (accept(u"LIKE")) return like(left, false, begin);
  if (accept(u"NOT")) {
    expect(u"LIKE");
    return like(left, true, begin);
  }
  return comparison(left, begin);
}

QString JetParser::comparison(const Operand& left, qsizetype begin) {
  for (const char16_t* known : kComparisons) {
    if (!acceptSymbol(known)) continue;
    const Operand right = operand();
    if (left.kind != right.kind || left.kind == OperandKind::Binary) mismatch(begin);
    const QString sql = left.sql + u' ' + QString::fromUtf16(known) + u' ' + right.sql;
    // In parentheses: the collation would else belong to the right side only.
    return u'(' + (left.kind == OperandKind::Text ? collated(sql) : sql) + u')';
  }
  if (!left.isTruth) refuse();
  return left.sql;
}

QString JetParser::like(const Operand& left, bool negated, qsizetype begin) {
  if (peek().kind != JetTokenKind::Text) refuse();
  if (left.kind == OperandKind::Binary) mismatch(begin);
  const QString pattern = tokens_.at(at_++).text;
  if (!LikePattern::parse(pattern.toStdString())) {
    throw StorageError(storage_error::kSyntax,
                       QStringLiteral("Ungültiges Muster \"%1\".").arg(pattern));
  }
  const QString call =
      QString::fromUtf16(kLikeFunction) + QStringLiteral("(%1, %2)").arg(left.sql, mark(pattern));
  return negated ? QStringLiteral("NOT ") + call : call;
}

JetParser::Operand JetParser::operand() {
  const JetToken token = peek();
  switch (token.kind) {
    case JetTokenKind::Text:
      ++at_;
      return {OperandKind::Text, mark(token.text), false};
    case JetTokenKind::Number:
    case JetTokenKind::Symbol: {
      const bool negative = acceptSymbol(u"-");
      if (peek().kind != JetTokenKind::Number) refuse();
      const QString digits = peek().text;
      bool whole = false;
      const qlonglong number = digits.toLongLong(&whole);
      const std::optional<double> value = parseNumber(digits);
      if (!whole && !value) refuse();
      ++at_;
      if (whole) return {OperandKind::Number, mark(negative ? -number : number), false};
      return {OperandKind::Number, mark(negative ? -*value : *value), false};
    }
    case JetTokenKind::Word:
      if (std::any_of(std::begin(kReserved), std::end(kReserved),
                      [&token](const char16_t* word) { return token.is(word); })) {
        refuse();
      }
      ++at_;
      if (token.is(u"ISNULL")) {
        expectSymbol(u"(");
        const QString sql = isNull(column(expectName()).name);
        expectSymbol(u")");
        return {OperandKind::Number, sql, true};
      }
      return columnOperand(token.text);
    case JetTokenKind::End:
      break;
  }
  refuse();
}

JetParser::Operand JetParser::columnOperand(const QString& name) {
  const ColumnInfo& info = column(name);
  Operand result;
  result.sql = quotedName(info.name);
  result.kind = info.isText()      ? OperandKind::Text
                : info.isNumeric() ? OperandKind::Number
                                   : OperandKind::Binary;
  return result;
}

}  // namespace lokari
