#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "fileops/forms/frm_rename_multiple.h"
#include "fileops/forms/rename_list_model.h"
#include "platform/forms/named_control.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/window_size.h"

namespace vantrel {

frmRenameMultiple::frmRenameMultiple(RenameMultipleParts parts, ShellRoot folder,
                                     std::vector<ObjectToRename> objects, QWidget* parent)
    : QDialog(parent),
      chkShortFileName(MakeNamed<QCheckBox>("Short File Name", "chkShortFileName")),
      chkRemoveSpaces(MakeNamed<QCheckBox>("Remove Internal Spaces", "chkRemoveSpaces")),
      chkRemoveExtension(MakeNamed<QCheckBox>("Remove Extension", "chkRemoveExtension")),
      cboCapitalization(Named(new QComboBox, "cboCapitalization")),
      chkChangeFileName(MakeNamed<QCheckBox>("Replace File Name with Text", "chkChangeFileName")),
      chkChangeExtension(MakeNamed<QCheckBox>("Replace Extension with Text", "chkChangeExtension")),
      chkAddPrefixToFilename(MakeNamed<QCheckBox>("Add Prefix to File Names", "chkAddPrefixToFilename")),
      chkAddSuffixToFilename(MakeNamed<QCheckBox>("Add Suffix to File Names", "chkAddSuffixToFilename")),
      txtFileName(Named(new QLineEdit, "txtFileName")),
      txtExtension(Named(new QLineEdit, "txtExtension")),
      txtNamePrefix(Named(new QLineEdit, "txtNamePrefix")),
      txtNameSuffix(Named(new QLineEdit, "txtNameSuffix")),
      chkNameAutoNumber(MakeNamed<QCheckBox>("Auto Generate Sequence of Numbers", "chkNameAutoNumber")),
      fraAutoNumber(Named(new QGroupBox, "fraAutoNumber")),
      optNumberFilename(MakeNamed<QRadioButton>("Replace File Name", "optNumberFilename")),
      optNumberExtension(MakeNamed<QRadioButton>("Replace File Extension", "optNumberExtension")),
      txtStartsWith(MakeNamed<QLineEdit>("1", "txtStartsWith")),
      txtIncrement(MakeNamed<QLineEdit>("1", "txtIncrement")),
      txtLength(MakeNamed<QLineEdit>("8", "txtLength")),
      lblPadMsg(MakeNamed<QLabel>("(Left pad with leading zeroes until length is arrived at.)", "lblPadMsg")),
      lvwObjects(Named(new QTableView, "lvwObjects")),
      lblOutcome(Named(new QLabel, "lblOutcome")),
      ProgressBar1(Named(new QProgressBar, "ProgressBar1")),
      cmdPreview(MakeNamed<QPushButton>("Preview", "cmdPreview")),
      cmdUndo(MakeNamed<QPushButton>("Undo Last Rename", "cmdUndo")),
      cmdOK(MakeNamed<QPushButton>("OK", "cmdOK")),
      cmdClose(MakeNamed<QPushButton>("&Close", "cmdClose")),
      parts_(std::move(parts)),
      folder_(std::move(folder)),
      objects_(std::move(objects)),
      model_(new RenameListModel(objects_, this)),
      previewSoon_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmRenameMultiple"));
    setWindowTitle(QStringLiteral("Rename Multiple Objects"));
    NameControls();
    LayOut();
    Connect();
    EnableFields();
}

void frmRenameMultiple::NameControls() {
    cboCapitalization->addItems({QStringLiteral("Leave Unchanged"), QStringLiteral("Upper Case"),
                                 QStringLiteral("Lower Case"), QStringLiteral("Proper Case"),
                                 QStringLiteral("Toggle Case")});
    const std::pair<QLineEdit*, QCheckBox*> fields[]{{txtFileName, chkChangeFileName},
                                                     {txtExtension, chkChangeExtension},
                                                     {txtNamePrefix, chkAddPrefixToFilename},
                                                     {txtNameSuffix, chkAddSuffixToFilename}};
    for (const auto& [field, check] : fields) field->setAccessibleName(check->text());
    optNumberFilename->setChecked(true);
    lblPadMsg->setWordWrap(true);
    lblPadMsg->setMinimumHeight(2 * fontMetrics().lineSpacing());
    ProgressBar1->setTextVisible(false);
    lvwObjects->setAccessibleName(QStringLiteral("Objects to rename"));
    cmdOK->setDefault(true);
    for (QPushButton* button : {cmdPreview, cmdUndo, cmdClose}) button->setAutoDefault(false);
    const auto undo = parts_.rename.UndoFolder();
    if (!undo)
        cmdUndo->hide();
    else
        cmdUndo->setToolTip(
            QStringLiteral("Gives the objects that were renamed last, in %1, their former names")
                .arg(DisplayQString(*undo)));
    previewSoon_->setSingleShot(true);
}

QLayout* frmRenameMultiple::LayOutRules() {
    auto* rules = new QGridLayout;
    int row = 0;
    for (QCheckBox* check : {chkShortFileName, chkRemoveSpaces, chkRemoveExtension})
        rules->addWidget(check, row++, 0, 1, 2);
    auto* label = new QLabel(QStringLiteral("Capitalization:"));
    label->setBuddy(cboCapitalization);
    rules->addWidget(label, row, 0);
    rules->addWidget(cboCapitalization, row++, 1);
    const std::pair<QCheckBox*, QLineEdit*> texts[]{{chkChangeFileName, txtFileName},
                                                    {chkChangeExtension, txtExtension},
                                                    {chkAddPrefixToFilename, txtNamePrefix},
                                                    {chkAddSuffixToFilename, txtNameSuffix}};
    for (const auto& [check, field] : texts) {
        rules->addWidget(check, row, 0);
        rules->addWidget(field, row++, 1);
    }
    rules->setColumnStretch(1, 1);
    rules->setRowStretch(row, 1);
    return rules;
}

QLayout* frmRenameMultiple::LayOutNumbers() {
    auto* grid = new QGridLayout(fraAutoNumber);
    grid->addWidget(optNumberFilename, 0, 0, 1, 2);
    grid->addWidget(optNumberExtension, 1, 0, 1, 2);
    const std::pair<const char*, QLineEdit*> fields[]{
        {"Starts With:", txtStartsWith}, {"Increment By:", txtIncrement}, {"Length:", txtLength}};
    int row = 2;
    for (const auto& [caption, field] : fields) {
        auto* label = new QLabel(QLatin1String(caption));
        label->setBuddy(field);
        field->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row++, 1);
    }
    grid->addWidget(lblPadMsg, row, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    auto* column = new QVBoxLayout;
    column->addWidget(chkNameAutoNumber);
    column->addWidget(fraAutoNumber);
    column->addStretch(1);
    return column;
}

void frmRenameMultiple::LayOutList() {
    lvwObjects->setModel(model_);
    lvwObjects->setItemDelegateForColumn(RevisedNameColumn, new RevisedNameDelegate(lvwObjects));
    lvwObjects->setSelectionBehavior(QAbstractItemView::SelectRows);
    lvwObjects->setSelectionMode(QAbstractItemView::SingleSelection);
    lvwObjects->setTabKeyNavigation(false);
    lvwObjects->setShowGrid(false);
    lvwObjects->setWordWrap(false);
    lvwObjects->setTextElideMode(Qt::ElideMiddle);
    lvwObjects->verticalHeader()->hide();
    lvwObjects->verticalHeader()->setDefaultSectionSize(fontMetrics().lineSpacing() + 4);
    lvwObjects->setMinimumHeight(fontMetrics().lineSpacing() * 6);
    QHeaderView* header = lvwObjects->horizontalHeader();
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSectionResizeMode(OriginalName, QHeaderView::Stretch);
    header->setSectionResizeMode(RevisedNameColumn, QHeaderView::Stretch);
    header->resizeSection(ConflictsColumn, fontMetrics().averageCharWidth() * 16);
    lvwObjects->setCurrentIndex(model_->index(0, OriginalName));
}

QLayout* frmRenameMultiple::LayOutButtons() {
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdPreview);
    buttons->addWidget(cmdUndo);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdClose);
    return buttons;
}

void frmRenameMultiple::LayOut() {
    LayOutList();
    auto* top = new QHBoxLayout;
    top->addLayout(LayOutRules(), 3);
    top->addSpacing(fontMetrics().averageCharWidth() * 2);
    top->addLayout(LayOutNumbers(), 2);
    auto* column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(lvwObjects, 1);
    column->addWidget(lblOutcome);
    column->addWidget(ProgressBar1);
    column->addLayout(LayOutButtons());
    ResizeWithinScreen(*this, {760, 600});
}

void frmRenameMultiple::Connect() {
    const auto guarded = [this](const char* routine, auto work) {
        return [this, routine, work] { parts_.tools.reporter.GuardRun(routine, [&] { (this->*work)(); }); };
    };
    connect(cmdPreview, &QPushButton::clicked, this,
            guarded("frmRenameMultiple.cmdPreview_Click", &frmRenameMultiple::cmdPreview_Click));
    connect(cmdOK, &QPushButton::clicked, this,
            guarded("frmRenameMultiple.cmdOK_Click", &frmRenameMultiple::cmdOK_Click));
    connect(cmdUndo, &QPushButton::clicked, this,
            guarded("frmRenameMultiple.cmdUndo_Click", &frmRenameMultiple::cmdUndo_Click));
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(previewSoon_, &QTimer::timeout, this,
            guarded("frmRenameMultiple.cmdPreview_Click", &frmRenameMultiple::Preview));
    connect(optNumberFilename, &QRadioButton::clicked, this,
            [this] { txtLength->setText(QStringLiteral("8")); });
    connect(optNumberExtension, &QRadioButton::clicked, this,
            [this] { txtLength->setText(QStringLiteral("3")); });
    for (auto* check : findChildren<QCheckBox*>()) {
        connect(check, &QCheckBox::toggled, this, &frmRenameMultiple::EnableFields);
        connect(check, &QCheckBox::toggled, this, &frmRenameMultiple::RulesChanged);
    }
    connect(optNumberFilename, &QRadioButton::toggled, this, &frmRenameMultiple::RulesChanged);
    connect(cboCapitalization, &QComboBox::currentIndexChanged, this, &frmRenameMultiple::RulesChanged);
    for (auto* field : findChildren<QLineEdit*>())
        connect(field, &QLineEdit::textChanged, this, &frmRenameMultiple::RulesChanged);
    for (QLineEdit* field : {txtStartsWith, txtIncrement, txtLength}) field->installEventFilter(this);
}

}  // namespace vantrel
