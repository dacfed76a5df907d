// Names of controls and texts that the sources of the record form share.
#pragma once

#include <QString>
#include <QStringList>

namespace lokari::form {

/// A name that stands in the code as a constant and becomes a QString where one is needed.
struct Name {
  const char16_t* text;
  operator QString() const { return QString::fromUtf16(text); }  // NOLINT: that is its purpose
};

inline constexpr Name kNavigator{u"Data1"};
inline constexpr Name kMaker{u"dc_manuf"};
inline constexpr Name kAddress{u"dc_adr"};
inline constexpr Name kCollection{u"dc_coll"};
inline constexpr Name kType{u"dc_type"};
inline constexpr Name kShortName{u"st_sname"};
inline constexpr Name kDecoder{u"dc_decoder"};
inline constexpr Name kOk{u"butOK"};
inline constexpr Name kCancel{u"butCancel"};
inline constexpr Name kFilter{u"butFilter"};
inline constexpr Name kPicLink{u"butPicLink"};
inline constexpr Name kPicDel{u"butPicDel"};
inline constexpr Name kInsert{u"mnuEditInsert"};

inline constexpr Name kUndo{u"butUndo"};
inline constexpr Name kFindNext{u"mnuEditFindNext"};
inline constexpr Name kUndoEntry{u"mnuEditUndo"};

inline constexpr Name kPictureColumn{u"MD_PIC"};
inline constexpr Name kNewRecord{u"neuer Satz"};

/// Lowest and highest address of a decoder.
inline constexpr int kLowestAddress = 1;
inline constexpr int kHighestAddress = 10239;

inline bool isAddress(double value) {
  return value >= kLowestAddress && value <= kHighestAddress;
}

inline QStringList toolbar() {
  return {QStringLiteral("butTable"), QStringLiteral("butFind"), QStringLiteral("butNew"),
          QStringLiteral("butDelete")};
}
inline QStringList drivingButtons() {
  return {QStringLiteral("butProg"), QStringLiteral("butDrive"), QStringLiteral("butSwitch")};
}
/// Those that only browsing mode has.
inline QStringList menuEntries() {
  return {QStringLiteral("mnuDbPrint"), QStringLiteral("mnuEditNew"), QStringLiteral("mnuEditCopy"),
          QStringLiteral("mnuEditDelete"), QStringLiteral("mnuEditFind")};
}

}  // namespace lokari::form
