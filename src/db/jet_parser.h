// Reads the tokens of a query and builds the storage's statement of them.
#pragma once

#include "db/columns.h"
#include "db/jet_statement.h"
#include "db/jet_tokens.h"

namespace lokari {

class JetParser {
 public:
  explicit JetParser(const QString& query) : query_(query), tokens_(jetTokens(query)) {}

  JetSelect select(const Schema& schema);
  /// A condition that fills the whole query.
  JetCondition condition(const TableInfo& table);

 private:
  enum class OperandKind { Number, Text, Binary };
  struct Operand {
    OperandKind kind = OperandKind::Number;
    QString sql;
    bool isTruth = false;  ///< may stand alone as a condition
  };

  const JetToken& peek() const { return tokens_.at(at_); }
  bool accept(QStringView word);
  bool acceptSymbol(QStringView symbol);
  void expect(QStringView word);
  void expectSymbol(QStringView symbol);
  QString expectName();
  void expectEnd() const;
  [[noreturn]] void refuse() const;
  /// A comparison that begins with that token.
  [[noreturn]] void mismatch(qsizetype token) const;

  QString disjunction(int depth);
  QString conjunction(int depth);
  QString negation(int depth);
  QString predicate(int depth);
  QString comparison(const Operand& left, qsizetype begin);
  QString like(const Operand& left, bool negated, qsizetype begin);
  Operand operand();
  Operand columnOperand(const QString& name);

  struct What {
    enum class Form { All, Columns, Distinct, Max } form = Form::All;
    QStringList names;
  };
  What readWhat();
  QString whatSql(const What& what) const;
  QString orderTerms(QString order);
  const ColumnInfo& column(const QString& name) const;
  QString mark(const QVariant& value);

  QString query_;
  QList<JetToken> tokens_;
  qsizetype at_ = 0;
  const TableInfo* table_ = nullptr;
  QVariantList values_;
};

}  // namespace lokari
