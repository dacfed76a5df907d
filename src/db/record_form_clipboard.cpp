// Copying a record, pasting it over another one, and the vehicle's picture.
#include <QImage>

#include "base/desktop.h"
#include "base/ini_file.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/prompt.h"
#include "base/settings.h"
#include "base/text_file.h"
#include "db/database.h"
#include "db/form_clipboard.h"
#include "db/form_fields.h"
#include "db/form_names.h"
#include "db/record_form.h"

namespace lokari {
namespace {

struct CopySlot {
  const char16_t* control;
  const char16_t* slot;
};

// In the order of copying. Two controls share a slot, so the later one stays in it; the slot that
// the paste reads for `md_user_2` is never filled.
constexpr CopySlot kCopied[] = {
    {u"dc_adr", u"dc_adr"},           {u"dc_coll", u"dc_coll"},     {u"st_sname", u"st_sname"},
    {u"st_group", u"st_group"},       {u"fz_lname", u"fz_lname"},   {u"fz_ftype", u"fz_ftype"},
    {u"md_info", u"md_info"},         {u"fz_code", u"fz_code"},     {u"fz_opcode", u"fz_opcode"},
    {u"fz_maxspeed", u"fz_maxspeed"}, {u"fz_line", u"fz_line"},     {u"fz_era", u"fz_era"},
    {u"md_manuf", u"md_manuf"},       {u"md_catno", u"md_catno"},   {u"md_scale", u"md_scale"},
    {u"md_price", u"md_price"},       {u"md_motor", u"md_motor"},   {u"md_user_1", u"md_user_1"},
    {u"md_user_2", u"md_user_3"},     {u"md_user_3", u"md_user_3"},
};

constexpr int kPicDirSize = 128;

// To be sure, it is taken apart: a head alone is no picture.
bool isPicture(const QByteArray& data) {
  return !QImage::fromData(data).isNull();
}

}  // namespace

void RecordForm::mnuEditCopy() {
  if (!loaded_) {
    parts_.prompt.message(
        QStringLiteral("Der Datensatz konnte nicht gelesen werden und wird daher nicht kopiert."));
    return;
  }
  *clipboard_ = FormClipboard();
  clipboard_->cv = working_;
  for (const CopySlot& copied : kCopied) {
    clipboard_->texts.insert(QString::fromUtf16(copied.slot),
                             text(QString::fromUtf16(copied.control)));
  }
  const std::optional<double> type = parseNumber(text(form::kType));
  clipboard_->type = type ? static_cast<int>(*type) : 0;
  clipboard_->picture = !picture_.isEmpty();
  parts_.desktop.setClipboardPicture(picture_);
  setEnabled({form::kInsert}, true);
}

void RecordForm::mnuEditInsert() {
  // The edit begins ahead of the texts, so that no drop-down stores a half-pasted record.
  if (editMode() == EditMode::None && !beginEdit()) return;
  recordDirty = true;
  typed_ = true;
  working_ = clipboard_->cv;
  // The address is not pasted.
  if (text(form::kAddress) != clipboard_->texts.value(form::kAddress)) working_.clearAddressMarks();
  for (const CopySlot& copied : kCopied) {
    const QString control = QString::fromUtf16(copied.control);
    if (control != form::kAddress) pasteText(control, clipboard_->texts.value(control));
  }
  if (clipboard_->type != 0) changeText(form::kType, QString::number(clipboard_->type));
  if (clipboard_->picture) {
    const QByteArray picture = parts_.desktop.clipboardPicture();
    if (!picture.isEmpty()) {
      setPicture(picture);
      pictureChanged_ = true;
    }
  }
  if (!working_.hasArrays()) InitDcData();
  if (working_.recManuf == 0) working_.recDecoder.clear();
  if (!attempt([this] { assignCvRecord(records_, working_); })) return;
  addressTyped_ = false;
  changed_.insert(form::kShortName);
  noteUnsaved();
}

void RecordForm::pasteText(const QString& control, const QString& text) {
  if (this->text(control) == text) return;
  setText(control, text);
  changed_.insert(control);
  const FormField* field = formField(control);
  if (field == nullptr || field->binding != Binding::DropDown) return;
  attempt([&] { records_.setValue(QString::fromUtf16(field->column), text); });
}

void RecordForm::butPicLink() {
  const QString section = QString::fromUtf16(kSettingsSection);
  const QString key = QStringLiteral("PicDir");
  const QString start = parts_.ini.getString(section, key, parts_.appPath, kPicDirSize);
  const QString path = parts_.prompt.openFile(
      {QStringLiteral("Grafik öffnen"),
       QStringLiteral("Bilder(*.bmp,*.jpg)|*.bmp;*.jpg|Alle Dateien (*.*)|*.*"), start, QString()});
  if (path.isEmpty()) return;
  const QString folder = folderOf(path);
  if (!folder.isEmpty() && folder.compare(start, Qt::CaseInsensitive) != 0) {
    parts_.ini.writeString(section, key, folder);
  }
  const QByteArray data = readPlainFile(path).value_or(QByteArray());
  if (!isPicture(data)) {
    parts_.prompt.message(
        QStringLiteral("Grafikdatei %1 kann nicht geladen werden!").arg(fileNameOf(path)));
    return;
  }
  if (editMode() == EditMode::None && position() >= 0 && !loadingRecord && !beginEdit()) return;
  setPicture(data);
  pictureChanged_ = true;
  typed_ = true;
  noteUnsaved();
}

void RecordForm::butPicDel() {
  if (picture_.isEmpty()) return;
  setPicture(QByteArray());
  pictureChanged_ = true;
  typed_ = true;
  noteUnsaved();
}

}  // namespace lokari
