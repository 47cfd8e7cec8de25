#include "views/forms/frm_select.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QMimeDatabase>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "core/row_texts.h"
#include "platform/forms/qt_text.h"
#include "platform/names/paths.h"
#include "views/file_type_list.h"
#include "views/forms/file_type_list_view.h"

namespace vantrel {
namespace {

const QDate kFirstDay(1601, 1, 1);  // CalendarDay 0

// What the desktop calls the type of a file of this name; a type that it does not know is named by the
// extension.
std::string DescribeFileType(std::string_view fileName) {
    const QMimeType type =
        QMimeDatabase().mimeTypeForFile(ToQString(fileName), QMimeDatabase::MatchExtension);
    if (!type.isDefault()) return FromQString(type.comment());
    return FromQString(ToQString(GetFilenameExtension(fileName)).toUpper()) + " File";
}

}  // namespace

SelectCriteria frmSelect::Criteria(bool select) const {
    SelectCriteria criteria;
    for (std::size_t type = 1; type < chkFileType.size(); ++type)
        criteria.types[type] = chkFileType[type]->isChecked();
    criteria.patterns = ExtractTypes(lstFileTypes->CurrentEntry());
    criteria.select = select;
    criteria.byteSize =
        SizeFromText(FromQString(txtByteSize->text()), parts_.tools.locale).value_or(criteria.byteSize);
    criteria.sizeOperator = static_cast<SizeOperator>(cboSizeOperators->currentIndex());
    criteria.date = kFirstDay.daysTo(dtpDate->date());
    criteria.dateOperator = static_cast<DateOperator>(cboDateOperator->currentIndex());
    criteria.today = today_;
    return criteria;
}

void frmSelect::cmdSelect_Click(bool select) {
    if (!CheckByteSize()) return;
    const BusyState::Wait wait(parts_.busy);
    const Side side = optPane[Side::Left]->isChecked() ? Side::Left : Side::Right;
    parts_.panes.SetCurrentListview(side);
    parts_.panes.SelectFileTypesInList(side, Criteria(select));
}

// What is no number is told and taken back; a number is written as one.
bool frmSelect::CheckByteSize() {
    const std::optional<Currency> size = SizeFromText(FromQString(txtByteSize->text()), parts_.tools.locale);
    txtByteSize->setText(ToQString(size ? parts_.tools.locale.Number(*size) : "-1"));
    if (size) return true;
    parts_.tools.messages.Ask({.title = "Input Error",
                               .text = "Byte Size is not a valid numeral",
                               .icon = MessageIcon::Warning,
                               .defaultAnswer = {}});
    return false;
}

void frmSelect::TurnTab(int by) {
    const int count = tbsOptions->count();
    tbsOptions->setCurrentIndex((tbsOptions->currentIndex() + by + count) % count);
}

void frmSelect::ShowTab(int tab) {
    if (tab == kFileTypeTab && lstFileTypes->count() == 0) LoadFileTypesList();
}

void frmSelect::LoadFileTypesList() {
    const BusyState::Wait wait(parts_.busy);
    parts_.tools.reporter.Guard("frmSelect.LoadFileTypesList", [this] {
        const Side side = parts_.panes.CurrentListview().value_or(Side::Left);
        const std::string& folder = parts_.folders[side];
        lstFileTypes->Fill(FileTypeEntries(
            parts_.panes.Hold()[side], {.exists =
                                            [this, &folder](const ResultRow& row) {
                                                return parts_.tools.files.FileExists(ObjectPath(folder, row));
                                            },
                                        .describe = DescribeFileType}));
    });
}

void frmSelect::AskForPatterns() {
    const std::string entry = lstFileTypes->CurrentEntry();
    if (!IsUserDefined(entry)) return;
    const auto patterns = parts_.tools.messages.AskForText(
        "User-defined files to select", "Please enter a comma separated list of file patterns.",
        ProposedPatterns(entry));
    if (patterns && !patterns->empty()) lstFileTypes->SetCurrentEntry(UserDefinedEntry(*patterns));
}

}  // namespace vantrel
