#include "reports/report_template.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "reports/report_error.h"

namespace lokari {
namespace {

class ReportTemplateTest : public ::testing::Test {
 protected:
  QString write(const QByteArray& text) {
    const QString path = folder.filePath(QStringLiteral("Vorlage.RPT"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    return path;
  }

  std::string render(const QByteArray& text, size_t count = 3) {
    const ReportTemplate report(write(text), fields);
    ReportData data;
    data.report = {"Liste", ""};
    data.first = 1;
    data.count = count;
    data.value = [&](size_t vehicle, size_t field) -> const std::string& {
      return vehicles.at(vehicle).at(static_cast<size_t>(
          fields.vehicle.indexOf(report.usedFields().at(static_cast<qsizetype>(field)))));
    };
    data.next = [this](size_t vehicle) { seen.push_back(vehicle); };
    return report.render(data);
  }

  /// The message without the file's name.
  QString fault(const QByteArray& text) {
    try {
      const ReportTemplate report(write(text), fields);
    } catch (const ReportError& error) {
      EXPECT_TRUE(error.text().startsWith(QStringLiteral("Die Vorlage\r") +
                                          folder.filePath(QStringLiteral("Vorlage.RPT\r"))));
      return error.text().section(u'\r', 2);
    }
    return {};
  }

  QTemporaryDir folder;
  const ReportFields fields{{"titel", "letzte_seite"}, {"DC_ADR", "ST_SNAME"}};
  const std::vector<std::vector<std::string>> vehicles{
      {"1", "nicht gefragt"}, {"3", "V 60"}, {"5", ""}, {"7", "<b>&{{titel}}"}};
  std::vector<size_t> seen;
};

TEST_F(ReportTemplateTest, TheVehiclesComeOneByOne) {
  EXPECT_EQ(render("{{titel}}\n{{#fahrzeuge}}\n{{DC_ADR}};{{ST_SNAME}}\n{{/fahrzeuge}}\nEnde\n"),
            "Liste\n3;V 60\n5;\n7;<b>&{{titel}}\nEnde\n");
  EXPECT_EQ(seen, (std::vector<size_t>{1, 2, 3}));
}

TEST_F(ReportTemplateTest, ValuesComeOutAsTheyCameInWhicheverBracesHoldThem) {
  EXPECT_EQ(render("{{#fahrzeuge}}{{ST_SNAME}}|{{{ST_SNAME}}}|{{& ST_SNAME }}\n{{/fahrzeuge}}"),
            "V 60|V 60|V 60\n||\n<b>&{{titel}}|<b>&{{titel}}|<b>&{{titel}}\n");
}

TEST_F(ReportTemplateTest, SectionsShowWhatIsThereAndWhatIsNot) {
  EXPECT_EQ(render("{{#fahrzeuge}}{{#ST_SNAME}}[{{ST_SNAME}}]{{/ST_SNAME}}"
                   "{{^ST_SNAME}}ohne{{/ST_SNAME}} {{/fahrzeuge}}"
                   "{{#letzte_seite}}nie{{/letzte_seite}}{{^letzte_seite}}weiter{{/letzte_seite}}",
                   2),
            "[V 60] ohne weiter");
  EXPECT_EQ(render("{{#fahrzeuge}}x{{/fahrzeuge}}{{^fahrzeuge}}keine{{/fahrzeuge}}", 0), "keine");
  EXPECT_EQ(render("{{#fahrzeuge}}x{{/fahrzeuge}}{{^fahrzeuge}}keine{{/fahrzeuge}}", 2), "xx");
}

TEST_F(ReportTemplateTest, RemarksLeaveNoLineBehind) {
  EXPECT_EQ(render("{{! eins\nzwei }}\r\n{{titel}}{{! drei }}\r\n  {{! vier }}\r\n"
                   "{{#fahrzeuge}}\r\n{{DC_ADR}}\r\n{{/fahrzeuge}}\r\n",
                   1),
            "Liste\r\n3\r\n");
  EXPECT_EQ(render("{{! eins }} {{titel}}\n{{#fahrzeuge}}{{/fahrzeuge}}"), " Liste\n");
}

TEST_F(ReportTemplateTest, TagsThatStandAloneLeaveNoLineBehindWhetherShownOrNot) {
  const char* text =
      "{{titel}}\n{{^fahrzeuge}}\nkeine\n{{/fahrzeuge}}\n{{#letzte_seite}}\nSchluss\n"
      "  {{/letzte_seite}}  \n{{#fahrzeuge}}\n{{DC_ADR}}\n{{/fahrzeuge}}\nEnde";
  EXPECT_EQ(render(text, 1), "Liste\n3\nEnde");
  EXPECT_EQ(render(text, 0), "Liste\nkeine\nEnde");
}

TEST_F(ReportTemplateTest, ALineWhoseValuesAreAllEmptyStays) {
  EXPECT_EQ(render("{{#fahrzeuge}}\n{{ST_SNAME}}\n{{/fahrzeuge}}\n", 2), "V 60\n\n");
}

TEST_F(ReportTemplateTest, OnlyTheFieldsThatAreShownAreAskedFor) {
  const ReportTemplate report(
      write("a{{#fahrzeuge}}b{{ST_SNAME}}c{{#ST_SNAME}};{{/ST_SNAME}}{{/fahrzeuge}}d"), fields);
  EXPECT_EQ(report.usedFields(), QStringList{"ST_SNAME"});
  EXPECT_EQ(report.vehicleText(), "bc;");
}

TEST_F(ReportTemplateTest, UmlautsAreReadInEitherCodeAndWithOrWithoutAMark) {
  EXPECT_EQ(render("Gr\xFC\xDF"
                   "e{{#fahrzeuge}}{{/fahrzeuge}}"),
            "Grüße");
  EXPECT_EQ(render("{{#fahrzeuge}}{{/fahrzeuge}}Ma\xDF"), "Maß") << "a letter that UTF-8 cuts off";
  EXPECT_EQ(render("\xEF\xBB\xBFGrüße{{#fahrzeuge}}{{/fahrzeuge}}"), "Grüße");
  EXPECT_EQ(render("Grüße{{#fahrzeuge}}{{/fahrzeuge}}"), "Grüße");
}

TEST_F(ReportTemplateTest, NeitherCaseNorSeparatorOfTheNameCounts) {
  write("{{#fahrzeuge}}{{/fahrzeuge}}");
  const ReportTemplate report(folder.path() + QStringLiteral("\\VORLAGE.rpt"), fields);
  EXPECT_EQ(report.path(), folder.filePath(QStringLiteral("Vorlage.RPT")));
}

TEST_F(ReportTemplateTest, AMissingTemplateIsNamed) {
  try {
    const ReportTemplate report(QStringLiteral("/nirgends/repl_ger.rpt"), fields);
    FAIL();
  } catch (const ReportError& error) {
    EXPECT_EQ(error.text(),
              "Die Vorlage\r/nirgends/repl_ger.rpt\rfehlt oder lässt sich nicht lesen.");
  }
  EXPECT_THROW(ReportTemplate(folder.path(), fields), ReportError) << "a folder is no template";
}

TEST_F(ReportTemplateTest, TheInstallationHelpsOutWhereTheDataFolderHasNone) {
  const QString own = write("{{#fahrzeuge}}{{/fahrzeuge}}");
  QTemporaryDir data;
  const QString wanted = data.path() + QStringLiteral("/vorlage.rpt");
  EXPECT_EQ(templatePlace(wanted, folder.path()), own);
  EXPECT_EQ(templatePlace(wanted, {}), wanted) << "no installation";
  EXPECT_EQ(templatePlace(data.path() + "/andere.rpt", folder.path()), data.path() + "/andere.rpt")
      << "the message names the place where it belongs";
  ASSERT_TRUE(QFile::copy(own, data.filePath(QStringLiteral("VORLAGE.RPT"))));
  EXPECT_EQ(templatePlace(wanted, folder.path()), wanted) << "the user's own comes first";
}

TEST_F(ReportTemplateTest, AFileThatIsNoTextIsNoTemplate) {
  EXPECT_EQ(fault(QByteArray("\xD0\xCF\x11\xE0\0\0{{#fahrzeuge}}", 20)),
            "ist keine Textdatei und daher keine Vorlage dieses Programms.");
}

TEST_F(ReportTemplateTest, EveryFaultIsToldWithItsLine) {
  struct Broken {
    const char* text;
    const char* fault;
  };
  const Broken templates[] = {
      {"\n{{titel}}\n{{#fahrzeuge}}\n{{NIX}}\n{{/fahrzeuge}}",
       "hat einen Fehler in Zeile 4:\rDas Feld \"NIX\" gibt es nicht."},
      {"{{#fahrzeuge}}\r\n{{dc_adr}}\r\n{{/fahrzeuge}}",
       "hat einen Fehler in Zeile 2:\rDas Feld \"dc_adr\" gibt es nicht."},
      {"{{}}", "hat einen Fehler in Zeile 1:\rDas Feld \"\" gibt es nicht."},
      {"{{{ #titel }}}", "hat einen Fehler in Zeile 1:\rDas Feld \"#titel\" gibt es nicht."},
      {"a\n{{DC_ADR}}{{#fahrzeuge}}{{/fahrzeuge}}",
       "hat einen Fehler in Zeile 2:\rDas Feld \"DC_ADR\" gehört in den Abschnitt \"fahrzeuge\"."},
      {"{{^fahrzeuge}}{{DC_ADR}}{{/fahrzeuge}}{{#fahrzeuge}}{{/fahrzeuge}}",
       "hat einen Fehler in Zeile 1:\rDas Feld \"DC_ADR\" gehört in den Abschnitt \"fahrzeuge\"."},
      {"a\n\n{{#fahrzeuge}}\n",
       "hat einen Fehler in Zeile 3:\rDer Abschnitt \"fahrzeuge\" hat kein "
       "Ende."},
      {"{{#fahrzeuge}}\n{{#DC_ADR}}\n{{/fahrzeuge}}\n{{/DC_ADR}}",
       "hat einen Fehler in Zeile 3:\rHier endet \"fahrzeuge\", aber offen ist \"DC_ADR\" aus "
       "Zeile "
       "2."},
      {"\n{{/fahrzeuge}}",
       "hat einen Fehler in Zeile 2:\rDer Abschnitt \"fahrzeuge\" endet, ohne "
       "begonnen zu haben."},
      {"{{#fahrzeuge}}\n{{DC_ADR}\n{{/fahrzeuge}}",
       "hat einen Fehler in Zeile 2:\rDas Feld \"DC_ADR}\n{{/fahrzeuge\" gibt es nicht."},
      {"{{#fahrzeuge}}{{/fahrzeuge}}\n{{titel",
       "hat einen Fehler in Zeile 2:\rDem Feld fehlen die schließenden Klammern."},
      {"{{#fahrzeuge}}{{/fahrzeuge}}{{",
       "hat einen Fehler in Zeile 1:\rDem Feld fehlen die schließenden Klammern."},
      {"{{#fahrzeuge}}\n{{#fahrzeuge}}{{/fahrzeuge}}{{/fahrzeuge}}",
       "hat einen Fehler in Zeile 2:\rDer Abschnitt \"fahrzeuge\" steht in sich selbst."},
      {"{{fahrzeuge}}",
       "hat einen Fehler in Zeile 1:\r\"fahrzeuge\" ist ein Abschnitt und kein Feld."},
      {"{{> andere}}", "hat einen Fehler in Zeile 1:\rEine Vorlage kann keine andere einbinden."},
      {"{{=<% %>=}}",
       "hat einen Fehler in Zeile 1:\rDie Klammern der Felder lassen sich nicht ändern."},
      {"{{titel}}", "hat einen Fehler:\rDer Abschnitt \"{{#fahrzeuge}}\" fehlt."},
      {"", "hat einen Fehler:\rDer Abschnitt \"{{#fahrzeuge}}\" fehlt."},
  };
  for (const Broken& broken : templates) {
    EXPECT_EQ(fault(broken.text), QString::fromUtf8(broken.fault)) << broken.text;
  }
}

}  // namespace
}  // namespace lokari
