// The controls of the decoder window by name, without a window: what each shows and whether it can
// be used. The bench writes them, the window shows them.
#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

#include <optional>

namespace lokari {

/// Normal is the system's text colour; Blue a verified, Red a failed CV.
enum class TextColour { Normal, Blue, Red };

struct Control {
  QString text;       ///< fields, and the chosen or typed text of a list
  QString caption;    ///< labels
  QString tag;        ///< value fields: the CV number; decides the tool tip, or is it
  QStringList items;  ///< entries of a list
  bool enabled = true;
  bool visible = true;
  bool locked = false;   ///< shown, selectable, not editable
  bool checked = false;  ///< check boxes and options
  TextColour colour = TextColour::Normal;
  /// Value fields: the value that holds beside a text that was not taken; empty for none.
  std::optional<QString> holds;
  QString idle;  ///< check boxes: why no job acts upon the tick; empty when one does

  bool operator==(const Control&) const = default;
};

/// The fixed controls. Names are those of the window's members:
///
/// - the window: `ssDecoder` (its tabs), `cvTable`, `picSpeedTable`; buttons `cmdOK`, `cmdCancel`,
///   `cmdDcRead`, `cmdDcReadMain`, `cmdDcProg`, `cmdDcProgMain`, `cmdReadAll`, `cmdReadNone`,
///   `cmdWriteAll`, `cmdWriteNone`, `cmdCopy`, `cmdName`, `cmdFuncMap`; lists `cbDcManuf`,
///   `cbDcDecoder`, `cbDcVer`; check boxes `chkDcAdrChk`, `chkDcManufChk`; `labNoDescription`;
///   labels `lblReport`, what the last job has to say, and `lblLegend`, what the colours mean;
/// - address: `labAdr`, `dc_adr`, `chkDcAdrRead`, `chkDcAdrWrite`; `txtDcComVersion`;
/// - CV 2 to 6, 9 and 19: `lab<Name>`, `txt<Name>` with Name of `DcDrvMinVolt`, `DcComAccTime`,
///   `DcComDecTime`, `DcDrvMaxSpeed`, `DcDrvMedSpeed`, `DcDrvUser`, `DcComConsist`;
///   `chkRd_<n>`, `chkWrt_<n>` for n of 2, 3, 4, 5, 6, 9, 19, 29, Tbl; `chkDrvRd_29`,
///   `chkDrvWrt_29`; `optDcConsistDirNormal`, `optDcConsistDirReverse`;
/// - CV 29: `labDcCom<Group>` and the option pairs `optDcComDirNormal/Reverse`,
///   `optDcComSteps14/28`, `optDcComAnalogNo/Yes`, `optDcComSpdTblNo/Yes`,
///   `optDcComDetectPulseNo/Yes`, `optDcComRailComNo/Yes`, `optDcComManBitNo/Yes`; on the drive tab
///   `labDcDrvSteps`, `optDcDrvSteps14/28`, `labDcDrvSpdTbl`, `optDcDrvSpdTblNo/Yes`;
/// - the speed table: `lblDcDrvLeg2`, `cmdSmooth`, `cmdTblList`, `cmdLoadTable`, `cmdSaveTable`;
/// - the grid's edit box `tabText`.
///
/// Rows of the pages 3 to 6 are no members: see PageRow.
class BenchControls : public QObject {
  Q_OBJECT

 public:
  BenchControls();

  bool has(const QString& name) const { return controls_.contains(name); }
  /// A name that is not listed above is a programming error: std::logic_error.
  const Control& at(const QString& name) const;
  QStringList names() const { return controls_.keys(); }

  /// Each tells `changed` when it changes something, and gives whether it did.
  bool setText(const QString& name, const QString& text);
  bool setCaption(const QString& name, const QString& caption);
  bool setTag(const QString& name, const QString& tag);
  bool setItems(const QString& name, const QStringList& items);
  bool setEnabled(const QString& name, bool enabled);
  bool setVisible(const QString& name, bool visible);
  bool setLocked(const QString& name, bool locked);
  bool setChecked(const QString& name, bool checked);
  bool setColour(const QString& name, TextColour colour);
  bool setHolds(const QString& name, const std::optional<QString>& holds);
  bool setIdle(const QString& name, const QString& reason);

 signals:
  void changed(const QString& name);

 private:
  template <typename T>
  bool set(const QString& name, T Control::*member, const T& value);

  QHash<QString, Control> controls_;
};

}  // namespace lokari
