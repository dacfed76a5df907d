// One control of the record form, of whatever kind, seen as a text.
#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

#include "app/ui/form_place.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace lokari {

class RecordField final : public QObject {
  Q_OBJECT

 public:
  RecordField(const FormPlace& place, QWidget* parent);

  const FormPlace& place() const { return place_; }
  QString name() const { return QString::fromUtf16(place_.control); }
  /// The caption next to it.
  QString label() const;
  QWidget* widget() const { return widget_; }

  QString text() const;
  /// Tells nothing. A text beyond the field's limit is shown whole; only the user is limited.
  void setText(const QString& text);
  /// Entries of a drop-down; its text stays. Nothing for other kinds.
  void setItems(const QStringList& items);

  /// Takes the focus, if need be with the whole text selected.
  void focus(bool selected);
  void selectAll();

  /// Asked for each character typed: false throws the key away. Backspace is 8.
  std::function<bool(QChar, qsizetype)> takesKey;
  /// True when the Return key did something; the field then does not get it.
  std::function<bool()> takesReturn;

  bool eventFilter(QObject* watched, QEvent* event) override;

 signals:
  /// The user changed the text.
  void edited(const QString& text);
  void entered();
  /// The focus has gone to another control of the window. Told from the event loop, when the new
  /// control has it, since who listens may open a box or take the focus back.
  void left();

 private:
  void buildLine();
  void buildList();
  void buildLines();
  void limitLines();
  bool throwsAway(const QString& typed) const;

  const FormPlace& place_;
  int most_ = 0;  // characters, 0 for no limit
  QWidget* widget_ = nullptr;
  QLineEdit* line_ = nullptr;  // of the drop-down where there is one
  QComboBox* list_ = nullptr;
  QPlainTextEdit* lines_ = nullptr;
  int linesMost_ = 0;
  bool showing_ = false;  // setText() or setItems() at work
};

}  // namespace lokari
