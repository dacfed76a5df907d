// `dlgPreview`: the pages of a document on the screen, before they are on paper.
#pragma once

#include <QDialog>
#include <QPageLayout>

#include <memory>

class QBoxLayout;
class QLabel;
class QPushButton;

namespace lokari {

class PagePictures;
class PageView;
class PrintDocument;
class WindowScale;

class DlgPreview final : public QDialog {
  Q_OBJECT

 public:
  /// `document` must outlive the window. It is accepted when the document is to be printed.
  DlgPreview(PrintDocument& document, const QPageLayout& layout, const WindowScale& scale,
             QWidget* parent);
  ~DlgPreview() override;

  /// Paints the pages; long work can be cancelled, the pages so far are shown then. Throws what
  /// the document throws.
  void load();

 private:
  QPushButton* addButton(QBoxLayout* row, const char16_t* name, const QString& text,
                         const QString& tip);
  void addTools(QBoxLayout* rows);
  void turn(int pages);
  void showPage();

  PrintDocument& document_;
  std::unique_ptr<PagePictures> paper_;
  PageView* pages_;
  int page_ = 1;
  QPushButton* cmdPrevious_ = nullptr;
  QPushButton* cmdNext_ = nullptr;
  QLabel* labPage_ = nullptr;
  bool whole_ = true;  // all pages were painted
};

}  // namespace lokari
