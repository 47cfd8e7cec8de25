#pragma once

#include <QDialog>
#include <functional>

#include "core/toolbox.h"
#include "views/printed_pages.h"

class QLabel;
class QPrintPreviewWidget;
class QPrinter;
class QPushButton;

namespace vantrel {

// "Print Preview": the pages as they will be printed. Accepted where the user wants them printed.
class frmPrintPreview : public QDialog {
    Q_OBJECT

  public:
    // A preview holds all its pages in memory, so it shows the first ones only.
    static constexpr std::size_t kMostPages = 100;

    // `print` prints the pages; the printer is not printed on. Both must outlive the window.
    frmPrintPreview(const Toolbox& tools, QPrinter& printer, std::function<bool(Paper& paper)> print,
                    QWidget* parent = nullptr);

    QPrintPreviewWidget* View() const { return view_; }
    QLabel* lblPage;
    QPushButton* cmdPrevious;
    QPushButton* cmdNext;
    QPushButton* cmdZoomIn;
    QPushButton* cmdZoomOut;
    QPushButton* cmdFitPage;
    QPushButton* cmdFitWidth;
    QPushButton* cmdPrint;
    QPushButton* cmdClose;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void LayOut();
    void Wire();
    void Paint(QPrinter& printer);
    void GoBy(int pages);
    void ShowPage();

    const Toolbox& tools_;
    std::function<bool(Paper& paper)> print_;
    QPrintPreviewWidget* view_;
    bool isCut_ = false;
};

}  // namespace vantrel
