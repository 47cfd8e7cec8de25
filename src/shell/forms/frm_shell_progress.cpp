#include "shell/forms/frm_shell_progress.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <algorithm>

#include "platform/currency.h"
#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"

namespace vantrel {
namespace {

constexpr std::uint32_t kShowAfter = 500;  // milliseconds
constexpr std::uint32_t kPaintEvery = 50;  // milliseconds
constexpr int kBarSteps = 1000;

struct Look {
    const char* title;
    const char* icon;
};

Look LookOf(ShellOperation operation) {
    switch (operation) {
        case ShellOperation::Copy:
            return {"Copying...", "copy"};
        case ShellOperation::Move:
            return {"Moving...", "move"};
        case ShellOperation::Delete:
            return {"Deleting...", "delete"};
        case ShellOperation::Recycle:
            return {"Sending to the Recycle Bin...", "delete"};
        case ShellOperation::Rename:
            return {"Renaming...", "move"};
    }
    return {"", ""};
}

double PartOf(std::uint64_t done, std::uint64_t all) {
    return all > 0 ? std::min(static_cast<double>(done) / static_cast<double>(all), 1.0) : 1.0;
}

// The lesser part of the two: neither one large file nor thousands of empty ones shall look like the end.
int BarValue(ShellProgress::Totals done, ShellProgress::Totals totals) {
    const double part = std::min(PartOf(done.bytes, totals.bytes), PartOf(done.objects, totals.objects));
    return static_cast<int>(part * kBarSteps);
}

QString Elided(const QLabel* label, const std::string& path) {
    return label->fontMetrics().elidedText(DisplayQString(path), Qt::ElideMiddle,
                                           std::max(label->width(), label->minimumWidth()));
}

}  // namespace

frmShellProgress::frmShellProgress(QWidget* parent)
    : QDialog(parent),
      lblOperation(new QLabel),
      lblFileName(new QLabel),
      lblTarget(new QLabel),
      lblCount(new QLabel),
      prgProgress(new QProgressBar),
      cmdCancel(new QPushButton(QStringLiteral("Cancel"))) {
    setObjectName(QStringLiteral("frmShellProgress"));
    lblFileName->setObjectName(QStringLiteral("lblFileName"));
    prgProgress->setObjectName(QStringLiteral("prgProgress"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    setWindowModality(Qt::ApplicationModal);
    for (QLabel* label : {lblFileName, lblTarget, lblCount}) {
        label->setTextFormat(Qt::PlainText);
        label->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    }
    prgProgress->setTextVisible(false);
    prgProgress->setAccessibleName(QStringLiteral("Progress"));

    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(2 * style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
    grid->addWidget(lblOperation, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(lblFileName, 0, 1, 1, 2);
    grid->addWidget(lblTarget, 1, 1, 1, 2);
    grid->addWidget(prgProgress, 2, 1, 1, 2);
    grid->addWidget(lblCount, 3, 1);
    grid->addWidget(cmdCancel, 3, 2, Qt::AlignRight);
    grid->setColumnStretch(1, 1);
    connect(cmdCancel, &QPushButton::clicked, this, &frmShellProgress::reject);
}

void frmShellProgress::Show(ShellOperation operation) {
    const Look look = LookOf(operation);
    setWindowTitle(QString::fromUtf8(look.title));
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    lblOperation->setPixmap(
        CommandIcon(QLatin1String(look.icon)).pixmap(QSize(size, size), devicePixelRatioF()));
    show();
}

void frmShellProgress::Paint(const std::string& path, const std::string& target, ShellProgress::Totals done,
                             ShellProgress::Totals totals) {
    lblFileName->setText(Elided(lblFileName, path));
    lblTarget->setText(target.empty() ? QString() : QStringLiteral("to %1").arg(Elided(lblTarget, target)));
    if (cancelled_) {
        lblCount->setText(QStringLiteral("Cancelling..."));
    } else if (totals.objects > 0) {
        const auto size = [](std::uint64_t bytes) {
            return ToQString(
                ConvertBytesToCorrectByteTypeString(Currency::FromWhole(static_cast<std::int64_t>(bytes))));
        };
        QString text = QStringLiteral("%1 of %2 object(s)").arg(done.objects).arg(totals.objects);
        if (totals.bytes > 0) text += QStringLiteral(", %1 of %2").arg(size(done.bytes), size(totals.bytes));
        lblCount->setText(text);
    }
    // A range of nothing shows that something goes on.
    prgProgress->setRange(0, totals.objects > 0 ? kBarSteps : 0);
    prgProgress->setValue(BarValue(done, totals));
}

void frmShellProgress::reject() {
    cancelled_ = true;
    cmdCancel->setEnabled(false);
    lblCount->setText(QStringLiteral("Cancelling..."));
}

void frmShellProgress::closeEvent(QCloseEvent* event) {
    event->ignore();
    reject();
}

QtShellProgress::~QtShellProgress() = default;

void QtShellProgress::Begin(ShellOperation operation) {
    running_ = true;
    operation_ = operation;
    totals_ = done_ = {};
    path_.clear();
    target_.clear();
    begun_ = painted_ = clock_.GetTickCount();
}

void QtShellProgress::Item(std::string_view path, std::string_view target) {
    path_ = path;
    target_ = target;
}

bool QtShellProgress::CancelAsked() {
    if (!running_) return false;
    const std::uint32_t now = clock_.GetTickCount();
    if (!window_ && now - begun_ >= kShowAfter) {
        QWidget* const modal = QApplication::activeModalWidget();
        QWidget* const over = modal ? modal : parent_ ? parent_.data() : QApplication::activeWindow();
        window_ = std::make_unique<frmShellProgress>(over);
        window_->Show(operation_);
        painted_ = now - kPaintEvery;
    }
    if (window_ && now - painted_ >= kPaintEvery) {
        window_->Paint(path_, target_, done_, totals_);
        painted_ = now;
    }
    return window_ && window_->Cancelled();
}

void QtShellProgress::End() {
    running_ = false;
    window_.reset();
}

}  // namespace vantrel
