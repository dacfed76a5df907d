#include "app/ui/list_menu.h"

#include "app/ui/main_menu.h"
#include "app/workbench.h"
#include "base/prompt.h"
#include "base/ui/window_scale.h"
#include "db/database_session.h"
#include "db/reference_lists.h"
#include "db/ui/dlg_dc_decoder.h"
#include "db/ui/dlg_dc_manuf.h"
#include "db/ui/dlg_list.h"

namespace lokari {
namespace {

struct ListEntry {
  const char16_t* entry;
  const char16_t* control;  ///< the drop-down that the list feeds
};

constexpr ListEntry kLists[] = {
    {u"mnuFzTypeValues", u"fz_ftype"}, {u"mnuLineValues", u"fz_line"},
    {u"mnuEraValues", u"fz_era"},      {u"mnuManufValues", u"md_manuf"},
    {u"mnuMotorValues", u"md_motor"},
};

/// What the dialogs need, asked when one is opened.
class ListMenu {
 public:
  ListMenu(Workbench& workbench, const WindowScale& scale, QWidget* parent)
      : workbench_(workbench), scale_(scale), parent_(parent) {}

  void editList(const QString& control) const {
    show<DlgList>(*referenceListOf(control), database(), workbench_.prompt());
    // The drop-down gets the new entries; its text is the record's, whatever became of the entry.
    form().refreshList(control);
  }

  void editMakers() const {
    show<DlgDcManuf>(database(), workbench_.prompt(), files());
    form().refreshMaker();
  }

  void editTypes() const {
    show<DlgDcDecoder>(database(), workbench_.prompt(), files(), form().workingCopy().recManuf);
  }

  bool isOpen() const { return workbench_.session().hasDatabase(); }

 private:
  Database& database() const { return workbench_.session().database(); }
  RecordForm& form() const { return workbench_.session().form(); }
  CatalogueFiles files() const { return CatalogueFiles(workbench_.paths().appPath); }

  template <typename Dialog, typename... Parts>
  void show(Parts&&... parts) const {
    try {
      Dialog dialog(std::forward<Parts>(parts)..., scale_, parent_);
      scale_.ResizeWindow(&dialog);
      dialog.exec();
    } catch (const StorageError& error) {
      workbench_.prompt().message(error.text());
    }
  }

  Workbench& workbench_;
  const WindowScale& scale_;
  QWidget* parent_;
};

}  // namespace

void offerLists(Workbench& workbench, MainMenu& menu, const WindowScale& scale, QWidget* parent) {
  const ListMenu lists(workbench, scale, parent);
  const auto offer = [&menu, lists](const QString& entry, auto open) {
    menu.enable(entry, [lists, open] {
      if (lists.isOpen()) open(lists);
    });
  };
  for (const ListEntry& list : kLists) {
    offer(QString::fromUtf16(list.entry),
          [control = QString::fromUtf16(list.control)](const ListMenu& opened) {
            opened.editList(control);
          });
  }
  offer(QStringLiteral("mnuDcManufValues"), [](const ListMenu& opened) { opened.editMakers(); });
  offer(QStringLiteral("mnuDcTypeValues"), [](const ListMenu& opened) { opened.editTypes(); });
}

}  // namespace lokari
