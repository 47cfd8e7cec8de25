#include "fileops/forms/frm_confirmation.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <algorithm>

#include "fileops/confirmation_details.h"
#include "platform/forms/icons.h"
#include "platform/forms/path_label.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"

namespace vantrel {
namespace {

// Without the details: 2,110 twips, at 15 to the pixel.
constexpr int kHeightWithoutDetails = 2110 / 15;
constexpr int kDetailsRow = 3;

QIcon IconOf(const Confirmation& confirmation, const QStyle& style) {
    const std::string& operation = confirmation.operation;
    if (IsForGood(confirmation)) return style.standardIcon(QStyle::SP_MessageBoxWarning);
    if (operation == "Copy") return CommandIcon(QLatin1String("copy"));
    if (operation == "Move") return CommandIcon(QLatin1String("move"));
    if (operation == "Delete") return CommandIcon(QLatin1String("delete"));
    return {};
}

}  // namespace

frmConfirmation::frmConfirmation(QWidget* parent)
    : QDialog(parent),
      imgIcon(new QLabel),
      lblMsg(new QLabel),
      lblTo(new QLabel(QStringLiteral("To:"))),
      lblTarget(new PathLabel),
      cmdYes(new QPushButton(QStringLiteral("&Yes"))),
      cmdNo(new QPushButton(QStringLiteral("&No"))),
      cmdDetails(new QPushButton),
      txtDetails(new QPlainTextEdit) {
    setObjectName(QStringLiteral("frmConfirmation"));
    imgIcon->setObjectName(QStringLiteral("imgIcon"));
    lblMsg->setObjectName(QStringLiteral("lblMsg"));
    lblTarget->setObjectName(QStringLiteral("lblTarget"));
    cmdYes->setObjectName(QStringLiteral("cmdYes"));
    cmdNo->setObjectName(QStringLiteral("cmdNo"));
    cmdDetails->setObjectName(QStringLiteral("cmdDetails"));
    txtDetails->setObjectName(QStringLiteral("txtDetails"));

    lblMsg->setTextFormat(Qt::PlainText);
    lblMsg->setWordWrap(true);
    lblMsg->setMinimumWidth(fontMetrics().averageCharWidth() * 56);
    lblMsg->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    txtDetails->setReadOnly(true);
    txtDetails->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtDetails->setTabChangesFocus(true);
    txtDetails->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtDetails->setAccessibleName(QStringLiteral("Details"));
    cmdDetails->setAutoDefault(false);
    LayOut();
    HideDetails();

    connect(cmdYes, &QPushButton::clicked, this, [this] { Finish(MessageAnswer::Yes); });
    connect(cmdNo, &QPushButton::clicked, this, [this] { Finish(MessageAnswer::No); });
    connect(cmdDetails, &QPushButton::clicked, this, &frmConfirmation::ToggleDetails);
}

void frmConfirmation::LayOut() {
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(cmdYes, QDialogButtonBox::YesRole);
    buttons->addButton(cmdNo, QDialogButtonBox::NoRole);
    buttons->addButton(cmdDetails, QDialogButtonBox::ActionRole);

    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(2 * style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
    grid->addWidget(imgIcon, 0, 0, Qt::AlignVCenter);
    grid->addWidget(lblMsg, 0, 1, 1, 2);
    grid->addWidget(lblTo, 1, 1);
    grid->addWidget(lblTarget, 1, 2);
    grid->addWidget(buttons, 2, 0, 1, 3);
    grid->addWidget(txtDetails, kDetailsRow, 0, 1, 3);
    grid->setColumnStretch(2, 1);
    setTabOrder(cmdYes, cmdNo);
    setTabOrder(cmdNo, cmdDetails);
    setTabOrder(cmdDetails, txtDetails);
}

MessageAnswer frmConfirmation::ShowForm(const Confirmation& confirmation) {
    confirmation_ = confirmation;
    answer_ = MessageAnswer::No;
    setWindowTitle(ToQString(confirmation.title));
    lblMsg->setText(WithLineBreaks(MessageQString(confirmation.question)));
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize);
    imgIcon->setPixmap(IconOf(confirmation, *style()).pixmap(QSize(size, size), devicePixelRatioF()));
    lblTarget->SetPath(confirmation.target);
    for (QLabel* label : {lblTo, static_cast<QLabel*>(lblTarget)})
        label->setVisible(!confirmation.target.empty());
    HideDetails();
    QPushButton* proposed = confirmation.operation == "Delete" ? cmdNo : cmdYes;
    proposed->setDefault(true);
    proposed->setFocus();
    exec();
    return answer_;
}

// Gives all room that is left to one row.
void frmConfirmation::Stretch(int row) {
    auto* grid = static_cast<QGridLayout*>(layout());
    for (int each = 0; each < grid->rowCount(); ++each) grid->setRowStretch(each, each == row ? 1 : 0);
}

void frmConfirmation::Finish(MessageAnswer answer) {
    answer_ = answer;
    done(answer == MessageAnswer::Yes ? Accepted : Rejected);
}

void frmConfirmation::ToggleDetails() {
    if (txtDetails->isVisibleTo(this)) {
        HideDetails();
        return;
    }
    cmdDetails->setText(QStringLiteral("&Hide"));
    txtDetails->setPlainText(MessageQString(ConfirmationDetails(confirmation_)));
    txtDetails->show();
    Stretch(kDetailsRow);
    ResizeWithinScreen(*this,
                       {std::max(width(), fontMetrics().averageCharWidth() * 90), sizeHint().height()});
}

void frmConfirmation::HideDetails() {
    cmdDetails->setText(QStringLiteral("&Details..."));
    txtDetails->clear();
    txtDetails->hide();
    Stretch(0);
    layout()->activate();
    resize(std::max(width(), minimumSizeHint().width()),
           std::max(kHeightWithoutDetails, minimumSizeHint().height()));
}

MessageAnswer ShowConfirmation(const Confirmation& confirmation) {
    QWidget* owner = QApplication::activeModalWidget();
    frmConfirmation form(owner ? owner : QApplication::activeWindow());
    return form.ShowForm(confirmation);
}

}  // namespace vantrel
