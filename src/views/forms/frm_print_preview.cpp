#include "views/forms/frm_print_preview.h"

#include <QGraphicsView>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>
#include <utility>

#include "platform/forms/accessible_role.h"
#include "platform/forms/window_size.h"
#include "views/forms/page_painter.h"

namespace vantrel {

namespace {

QPushButton* Button(const char* caption, const char* name, const QKeySequence& key = {}) {
    auto* button = new QPushButton(QLatin1String(caption));
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    if (!key.isEmpty()) {
        button->setShortcut(key);
        button->setToolTip(key.toString(QKeySequence::NativeText));
    }
    return button;
}

}  // namespace

frmPrintPreview::frmPrintPreview(const Toolbox& tools, QPrinter& printer,
                                 std::function<bool(Paper& paper)> print, QWidget* parent)
    : QDialog(parent),
      lblPage(new QLabel),
      cmdPrevious(Button("Pre&vious", "cmdPrevious", Qt::Key_PageUp)),
      cmdNext(Button("&Next", "cmdNext", Qt::Key_PageDown)),
      cmdZoomIn(Button("Zoom &In", "cmdZoomIn", QKeySequence(QStringLiteral("Ctrl++")))),
      cmdZoomOut(Button("Zoom &Out", "cmdZoomOut", QKeySequence(QStringLiteral("Ctrl+-")))),
      cmdFitPage(Button("Whole Pa&ge", "cmdFitPage", QKeySequence(QStringLiteral("Ctrl+0")))),
      cmdFitWidth(Button("Page &Width", "cmdFitWidth", QKeySequence(QStringLiteral("Ctrl+1")))),
      cmdPrint(Button("&Print", "cmdPrint")),
      cmdClose(Button("&Close", "cmdClose")),
      tools_(tools),
      print_(std::move(print)),
      view_(new QPrintPreviewWidget(&printer)) {
    setObjectName(QStringLiteral("frmPrintPreview"));
    setWindowTitle(QStringLiteral("Print Preview"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    lblPage->setObjectName(QStringLiteral("lblPage"));
    // The control that takes the focus stands within the toolkit's one.
    if (auto* pages = view_->findChild<QGraphicsView*>()) {
        pages->setAccessibleName(QStringLiteral("Pages"));
        SetAccessibleRole(*pages, QAccessible::Document);
    }
    view_->setObjectName(QStringLiteral("view"));
    view_->setAccessibleName(QStringLiteral("The pages as they will be printed"));
    cmdPrint->setDefault(true);
    LayOut();
    Wire();
}

void frmPrintPreview::LayOut() {
    auto* top = new QHBoxLayout;
    for (QWidget* widget : std::initializer_list<QWidget*>{cmdPrevious, cmdNext, lblPage})
        top->addWidget(widget);
    top->addStretch();
    for (QPushButton* button : {cmdZoomIn, cmdZoomOut, cmdFitPage, cmdFitWidth}) top->addWidget(button);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(cmdPrint);
    bottom->addWidget(cmdClose);
    auto* column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(view_, 1);
    column->addLayout(bottom);
    const int unit = fontMetrics().averageCharWidth();
    ResizeWithinScreen(*this, {unit * 120, unit * 110});
}

void frmPrintPreview::Wire() {
    // Qt knows no exceptions.
    connect(view_, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* printer) {
        tools_.reporter.GuardRun("frmPrintPreview.Paint", [&] { Paint(*printer); });
    });
    connect(view_, &QPrintPreviewWidget::previewChanged, this, [this] { ShowPage(); });
    connect(cmdPrevious, &QPushButton::clicked, this, [this] { GoBy(-1); });
    connect(cmdNext, &QPushButton::clicked, this, [this] { GoBy(1); });
    connect(cmdZoomIn, &QPushButton::clicked, view_, [this] { view_->zoomIn(); });
    connect(cmdZoomOut, &QPushButton::clicked, view_, [this] { view_->zoomOut(); });
    connect(cmdFitPage, &QPushButton::clicked, view_, &QPrintPreviewWidget::fitInView);
    connect(cmdFitWidth, &QPushButton::clicked, view_, &QPrintPreviewWidget::fitToWidth);
    connect(cmdPrint, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void frmPrintPreview::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    view_->updatePreview();
    ShowPage();
}

void frmPrintPreview::Paint(QPrinter& printer) {
    DevicePaper paper(printer, {}, kMostPages);
    if (print_(paper)) paper.Finish();
    isCut_ = paper.IsCut();
}

void frmPrintPreview::GoBy(int pages) {
    view_->setCurrentPage(view_->currentPage() + pages);
    ShowPage();
}

void frmPrintPreview::ShowPage() {
    const int page = view_->currentPage(), pages = view_->pageCount();
    QString text = QStringLiteral("Page %1 of %2").arg(page).arg(pages);
    if (isCut_) text += QStringLiteral(" shown here; more are printed");
    lblPage->setText(text);
    cmdPrevious->setEnabled(page > 1);
    cmdNext->setEnabled(page < pages);
}

}  // namespace vantrel
