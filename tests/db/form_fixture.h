// A record form over a database of three vehicles, with everything around it scripted.
#pragma once

#include <gtest/gtest.h>

#include <QSqlQuery>

#include "base/ini_file.h"
#include "db/record_form.h"
#include "db/reference_lists.h"
#include "support/ini_text.h"
#include "support/recording_desktop.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"

namespace lokari::test {

class FormFixture : public ::testing::Test {
 protected:
  FormFixture() : form_({prompt_, desktop_, ini_, QStringLiteral("/app")}) {
    base_.run("DELETE FROM DCMANUFS");
    base_.run("INSERT INTO DCMANUFS VALUES (1, 0, 'Standard'), (2, 145, 'Zimo')");
    base_.addVehicle(3, QStringLiteral("Anlage"), QStringLiteral("A3"));
    base_.addVehicle(5, QStringLiteral("Anlage"), QStringLiteral("A5"));
    base_.addVehicle(7, QStringLiteral("Vitrine"), QStringLiteral("V7"));
    QObject::connect(&form_, &RecordForm::focusWanted, &form_,
                     [this](const QString& control, bool) { focus_ << control; });
    QObject::connect(&form_, &RecordForm::selectWanted, &form_,
                     [this](const QString& control) { selected_ << control; });
  }

  /// Shows the database in the default order.
  void open() {
    RecordSet records;
    records.open(base_.open(), QString::fromUtf16(kDefaultQuery));
    form_.bind(base_.open(), std::move(records));
    form_.quietDelete = false;
  }

  static QString str(const char* text) { return QString::fromUtf8(text); }
  QString text(const char* control) const { return form_.text(str(control)); }
  void type(const char* control, const char* entry) { form_.edited(str(control), str(entry)); }
  bool enabled(const char* control) const { return form_.isEnabled(str(control)); }
  bool visible(const char* control) const { return form_.isVisible(str(control)); }

  /// The first value of a statement's answer, as it is on disk.
  QVariant stored(const char* statement) {
    QVariant result;
    base_.open().read(str(statement), {},
                      [&result](const QSqlQuery& row) { result = row.value(0); });
    return result;
  }

  test::TestDatabase base_;
  test::ScriptedPrompt prompt_;
  test::RecordingDesktop desktop_;
  test::IniText iniText_{"[LOKARI]\r\n"};
  IniFile ini_{iniText_.path()};
  RecordForm form_;
  QStringList focus_;
  QStringList selected_;
};

}  // namespace lokari::test
