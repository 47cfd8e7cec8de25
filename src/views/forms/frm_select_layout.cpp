// The part of frmSelect that makes its controls and wires them.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"
#include "views/forms/file_type_list_view.h"
#include "views/forms/frm_select.h"

namespace vantrel {
namespace {

// Captions of chkFileType, and what a screen reader says where the caption alone says too little.
struct TypeBox {
    const char* caption;
    const char* spoken;
};
constexpr std::array<TypeBox, kResultTypeCount + 1> kTypeBoxes{
    {{"", ""},
     {"&Newer", "Newer files"},
     {"&Older", "Older files"},
     {"S&ame", "Same files"},
     {"O&rphan", "Orphan files"},
     {"&Contents Differ", "Files whose contents differ"},
     {"Identical", "Identical sub-folders"},
     {"Different", "Different sub-folders"},
     {"Orphan", "Orphan sub-folders"}}};
constexpr std::size_t kFirstFolderType = 6;

template <typename Widget>
Widget* Named(Widget* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

QWidget* Page(int number) {
    return Named(new QWidget, QStringLiteral("picOptions(%1)").arg(number));
}

QLabel* LabelOf(const char* text, QWidget* buddy) {
    auto* label = new QLabel(QLatin1String(text));
    label->setBuddy(buddy);
    return label;
}

}  // namespace

frmSelect::frmSelect(Parts parts, QWidget* parent)
    : QDialog(parent),
      tbsOptions(Named(new QTabWidget, QStringLiteral("tbsOptions"))),
      cmdSelect{Named(new QPushButton(QStringLiteral("&Select")), QStringLiteral("cmdSelect(0)")),
                Named(new QPushButton(QStringLiteral("&Deselect")), QStringLiteral("cmdSelect(1)"))},
      cmdClose(Named(new QPushButton(QStringLiteral("Close")), QStringLiteral("cmdClose"))),
      optPane{{Named(new QRadioButton(QStringLiteral("Left Pane")), QStringLiteral("optPane(0)")),
               Named(new QRadioButton(QStringLiteral("Right Pane")), QStringLiteral("optPane(1)"))}},
      cboSizeOperators(Named(new QComboBox, QStringLiteral("cboSizeOperators"))),
      txtByteSize(Named(new QLineEdit(QStringLiteral("-1")), QStringLiteral("txtByteSize"))),
      cboDateOperator(Named(new QComboBox, QStringLiteral("cboDateOperator"))),
      dtpDate(Named(new QDateEdit, QStringLiteral("dtpDate"))),
      lstFileTypes(new FileTypeList),
      parts_(std::move(parts)),
      today_(DayOf(FileTimeToLocalFileTime(parts_.tools.clock.Now()))) {
    setObjectName(QStringLiteral("frmSelect"));
    setWindowTitle(QStringLiteral("Select Wizard"));
    LayOut();
    optPane[parts_.panes.CurrentListview().value_or(Side::Left)]->setChecked(true);
    Wire();
    ResizeWithinScreen(*this, sizeHint().expandedTo({460, 340}));
}

void frmSelect::LayOut() {
    tbsOptions->addTab(TypePage(), QStringLiteral("Result Type && Pane"));
    tbsOptions->addTab(SizePage(), QStringLiteral("Date && Size"));
    tbsOptions->addTab(FileTypePage(), QStringLiteral("File Type "));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : cmdSelect) buttons->addWidget(button);
    buttons->addStretch(1);
    buttons->addWidget(cmdClose);
    auto* column = new QVBoxLayout(this);
    column->addWidget(tbsOptions, 1);
    column->addLayout(buttons);
    cmdSelect[0]->setDefault(true);
    cmdSelect[1]->setAutoDefault(false);
    cmdClose->setAutoDefault(false);
}

QWidget* frmSelect::TypePage() {
    QWidget* page = Page(0);
    auto* panes = new QHBoxLayout;
    for (const Side side : kBothSides) panes->addWidget(optPane[side]);
    panes->addStretch(1);
    auto* fraTypes = Named(new QGroupBox(QStringLiteral("Types")), QStringLiteral("fraTypes"));
    auto* grid = new QGridLayout(fraTypes);
    grid->addWidget(new QLabel(QStringLiteral("Files")), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("Sub-Folders")), 0, 1);
    for (std::size_t type = 1; type < chkFileType.size(); ++type) {
        auto* box = Named(new QCheckBox(QLatin1String(kTypeBoxes[type].caption)),
                          QStringLiteral("chkFileType(%1)").arg(type));
        box->setAccessibleName(QLatin1String(kTypeBoxes[type].spoken));
        if (parts_.icons) box->setIcon(parts_.icons(static_cast<ResultType>(type), true));
        const bool folder = type >= kFirstFolderType;
        grid->addWidget(box, static_cast<int>(folder ? type - kFirstFolderType : type - 1) + 1,
                        folder ? 1 : 0);
        chkFileType[type] = box;
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(static_cast<int>(kFirstFolderType), 1);
    auto* column = new QVBoxLayout(page);
    column->addLayout(panes);
    column->addWidget(fraTypes, 1);
    return page;
}

QWidget* frmSelect::SizePage() {
    QWidget* page = Page(1);
    for (const char* text : {"equals", "is less than", "is greater than"})
        cboSizeOperators->addItem(QLatin1String(text));
    for (const char* text : {"is on", "is before", "is after"}) cboDateOperator->addItem(QLatin1String(text));
    cboSizeOperators->setCurrentIndex(static_cast<int>(SizeOperator::IsGreaterThan));
    cboDateOperator->setCurrentIndex(static_cast<int>(DateOperator::IsBefore));
    txtByteSize->setAlignment(Qt::AlignRight);
    txtByteSize->setAccessibleName(QStringLiteral("Size in bytes; -1 for any"));
    dtpDate->setAccessibleName(QStringLiteral("Date"));
    dtpDate->setCalendarPopup(true);
    dtpDate->setMinimumDate(QDate(1601, 1, 1));
    dtpDate->setDate(QDate(1601, 1, 1).addDays(today_ + 1));
    auto* grid = new QGridLayout(page);
    grid->addWidget(LabelOf("Whose Size:", cboSizeOperators), 0, 0);
    grid->addWidget(cboSizeOperators, 0, 1);
    grid->addWidget(txtByteSize, 0, 2);
    grid->addWidget(new QLabel(QStringLiteral("bytes")), 0, 3);
    grid->addWidget(LabelOf("Whose Date:", cboDateOperator), 1, 0);
    grid->addWidget(cboDateOperator, 1, 1);
    grid->addWidget(dtpDate, 1, 2);
    grid->setColumnStretch(2, 1);
    grid->setRowStretch(2, 1);
    return page;
}

QWidget* frmSelect::FileTypePage() {
    QWidget* page = Page(kFileTypeTab);
    auto* column = new QVBoxLayout(page);
    column->addWidget(LabelOf("Files Types:", lstFileTypes));
    lstFileTypes->setAccessibleName(QStringLiteral("File Types"));
    column->addWidget(lstFileTypes, 1);
    return page;
}

void frmSelect::Wire() {
    const auto guarded = [this](const char* routine, auto work) {
        return [this, routine, work] { parts_.tools.reporter.GuardRun(routine, work); };
    };
    for (std::size_t i = 0; i < cmdSelect.size(); ++i)
        connect(cmdSelect[i], &QPushButton::clicked, this,
                guarded("frmSelect.cmdSelect_Click", [this, i] { cmdSelect_Click(i == 0); }));
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    connect(tbsOptions, &QTabWidget::currentChanged, this, &frmSelect::ShowTab);
    lstFileTypes->Chosen = guarded("frmSelect.lstFileTypes_Click", [this] { AskForPatterns(); });
    // Behind what took the focus away: a message must not come in the midst of that.
    connect(txtByteSize, &QLineEdit::editingFinished, this,
            guarded("frmSelect.txtByteSize_LostFocus",
                    [this] {
                        if (isVisible() && focusWidget() != txtByteSize) CheckByteSize();
                    }),
            Qt::QueuedConnection);
    for (const auto& [keys, by] : {std::pair{"Ctrl+Tab", 1}, std::pair{"Ctrl+Shift+Tab", -1}}) {
        auto* shortcut = new QShortcut(QKeySequence(QLatin1String(keys)), this);
        connect(shortcut, &QShortcut::activated, this, [this, by = by] { TurnTab(by); });
    }
}

}  // namespace vantrel
