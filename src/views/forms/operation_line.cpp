#include "views/forms/operation_line.h"

#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

#include "platform/forms/elided_label.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

OperationLine::OperationLine(QWidget* parent)
    : QWidget(parent), lblOperation_(new ElidedLabel(this)), cmdNotDone_(new QToolButton(this)) {
    setObjectName(QStringLiteral("OperationLine"));
    lblOperation_->setObjectName(QStringLiteral("lblOperation"));
    lblOperation_->setTextFormat(Qt::PlainText);
    cmdNotDone_->setObjectName(QStringLiteral("cmdNotDone"));
    cmdNotDone_->setText(QStringLiteral("Show What Was Not Done..."));
    cmdNotDone_->setAccessibleName(cmdNotDone_->text());
    cmdNotDone_->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    cmdNotDone_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    cmdNotDone_->setFocusPolicy(Qt::TabFocus);
    auto* close = new QToolButton(this);
    close->setObjectName(QStringLiteral("cmdCloseOperation"));
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAutoRaise(true);
    close->setFocusPolicy(Qt::TabFocus);
    close->setToolTip(QStringLiteral("Close"));
    close->setAccessibleName(QStringLiteral("Close"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(lblOperation_);
    row->addWidget(cmdNotDone_);
    row->addStretch(1);
    row->addWidget(close);
    connect(cmdNotDone_, &QToolButton::clicked, this, &OperationLine::ListAsked);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

OperationLine::~OperationLine() = default;

void OperationLine::Tell(const std::string& text, const std::string& notDone) {
    notDone_ = notDone;
    lblOperation_->setText(ToQString(text));
    lblOperation_->setToolTip(lblOperation_->text());
    cmdNotDone_->setVisible(!notDone.empty());
    show();
}

}  // namespace vantrel
