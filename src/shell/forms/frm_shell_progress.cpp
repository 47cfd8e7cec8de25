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

Currency Whole(std::uint64_t value) {
    return Currency::FromWhole(static_cast<std::int64_t>(value));
}

QString Elided(const QLabel* label, const std::string& path) {
    return label->fontMetrics().elidedText(DisplayQString(path), Qt::ElideMiddle,
                                           std::max(label->width(), label->minimumWidth()));
}

}  // namespace

frmShellProgress::frmShellProgress(const LocaleFormats& locale, QWidget* parent)
    : QDialog(parent),
      lblOperation(new QLabel),
      lblFileName(new QLabel),
      lblTarget(new QLabel),
      lblCount(new QLabel),
      lblPace(new QLabel),
      prgProgress(new QProgressBar),
      cmdCancel(new QPushButton(QStringLiteral("&Cancel"))),
      locale_(locale) {
    setObjectName(QStringLiteral("frmShellProgress"));
    lblFileName->setObjectName(QStringLiteral("lblFileName"));
    prgProgress->setObjectName(QStringLiteral("prgProgress"));
    lblTarget->setObjectName(QStringLiteral("lblTarget"));
    lblCount->setObjectName(QStringLiteral("lblCount"));
    lblPace->setObjectName(QStringLiteral("lblPace"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    // The window comes of itself, over whatever is being typed: the button is for the mouse, the keys are ESC
    // and the button's letter.
    cmdCancel->setAutoDefault(false);
    cmdCancel->setFocusPolicy(Qt::NoFocus);
    cmdCancel->setToolTip(QStringLiteral("Esc"));
    setWindowModality(Qt::ApplicationModal);
    for (QLabel* label : {lblFileName, lblTarget, lblCount, lblPace}) {
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
    grid->addWidget(lblPace, 4, 1);
    grid->addWidget(cmdCancel, 3, 2, 2, 1, Qt::AlignRight | Qt::AlignVCenter);
    grid->setColumnStretch(1, 1);
    connect(cmdCancel, &QPushButton::clicked, this, &frmShellProgress::reject);
}

void frmShellProgress::Show(ShellOperation operation, const std::string& title) {
    const Look look = LookOf(operation);
    setWindowTitle(title.empty() ? QString::fromUtf8(look.title) : ToQString(title));
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    lblOperation->setPixmap(
        CommandIcon(QLatin1String(look.icon)).pixmap(QSize(size, size), devicePixelRatioF()));
    show();
}

void frmShellProgress::Paint(const std::string& path, const std::string& target, ShellProgress::Totals done,
                             ShellProgress::Totals totals, const std::string& pace) {
    lblFileName->setText(Elided(lblFileName, path));
    lblTarget->setText(target.empty() ? QString() : QStringLiteral("to %1").arg(Elided(lblTarget, target)));
    if (cancelled_) {
        lblCount->setText(QStringLiteral("Cancelling..."));
    } else if (totals.objects > 0) {
        const auto size = [](std::uint64_t bytes) {
            return ToQString(ConvertBytesToCorrectByteTypeString(Whole(bytes)));
        };
        const auto number = [this](std::uint64_t count) { return ToQString(locale_.Number(Whole(count))); };
        QString text = QStringLiteral("%1 of %2 object(s)").arg(number(done.objects), number(totals.objects));
        if (totals.bytes > 0) text += QStringLiteral(", %1 of %2").arg(size(done.bytes), size(totals.bytes));
        lblCount->setText(text);
    } else {
        lblCount->setText(QStringLiteral("Counting..."));
    }
    lblPace->setText(cancelled_ ? QString() : ToQString(pace));
    // A range of nothing shows that something goes on.
    prgProgress->setRange(0, totals.objects > 0 ? kBarSteps : 0);
    prgProgress->setValue(static_cast<int>(PartDone(done, totals) * kBarSteps));
}

void frmShellProgress::reject() {
    cancelled_ = true;
    cmdCancel->setEnabled(false);
    lblCount->setText(QStringLiteral("Cancelling..."));
    lblPace->clear();
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
    title_.clear();
    path_.clear();
    target_.clear();
    begun_ = painted_ = clock_.GetTickCount();
    pace_.Begin(begun_);
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
        window_ = std::make_unique<frmShellProgress>(locale_, over);
        // The window that the operation belongs to shows that it is busy, and may be closed; all others are
        // kept from input.
        if (over && over == parent_) window_->setWindowModality(Qt::NonModal);
        window_->Show(operation_, title_);
        painted_ = now - kPaintEvery;
    }
    if (window_ && now - painted_ >= kPaintEvery) {
        pace_.Note(now, done_, totals_);
        window_->Paint(path_, target_, done_, totals_, pace_.Describe());
        painted_ = now;
    }
    return window_ && window_->Cancelled();
}

void QtShellProgress::End() {
    running_ = false;
    window_.reset();
}

}  // namespace vantrel
