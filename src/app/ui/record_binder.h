// Joins the record form to its window: what the form says is shown, what the user does is handed
// over.
#pragma once

#include <QObject>
#include <QSet>

namespace lokari {

class MainMenu;
class Navigator;
class RecordForm;
class RecordPage;
class ToolRow;

/// The parts of the window that show a record.
struct RecordControls {
  RecordPage& page;
  ToolRow& tools;
  Navigator& data1;
  MainMenu& menu;
};

class RecordBinder final : public QObject {
 public:
  RecordBinder(RecordForm& form, RecordControls controls, QObject* parent);

  /// The control does something: it is enabled whenever the form says so. A control that was never
  /// offered stays disabled.
  void offer(const QString& control);

 private:
  void connectForm();
  void connectFields();
  void connectCommands();
  void connectEscape();
  void showAll();
  void showText(const QString& control, const QString& text);
  void showState(const QString& control);
  void showList(const QString& control);
  void focus(const QString& control, bool selected);
  bool hasField(const QString& control) const;

  RecordForm& form_;
  RecordControls controls_;
  QSet<QString> offered_;
};

}  // namespace lokari
