#include <QCheckBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <array>

#include "main/forms/options/option_pages.h"

namespace vantrel {

CheckBoxPage::CheckBoxPage(OptionTab tab, const OptionsContext& context, const std::vector<Frame>& frames)
    : OptionPage(tab, context) {
    auto* row = new QHBoxLayout;
    std::array<QVBoxLayout*, 2> columns{};
    for (const Frame& frame : frames) {
        QVBoxLayout*& column = columns[static_cast<std::size_t>(frame.column)];
        if (column == nullptr) row->addLayout(column = new QVBoxLayout);
        QVBoxLayout* boxes = AddFrame(*column, QString::fromLatin1(frame.title));
        for (const std::string_view key : frame.keys) AddCheck(*boxes, key);
    }
    for (QVBoxLayout* column : columns)
        if (column != nullptr) column->addStretch(1);
    Column().addLayout(row);
    Column().addStretch(1);
}

CheckBoxPage* CheckBoxPage::General(const OptionsContext& context) {
    return new CheckBoxPage(
        OptionTab::General, context,
        {{"Confirmations",
          0,
          {"ShowCopyConfirmations", "ShowMoveConfirmations", "ShowDeleteConfirmations",
           "ShowSynchronizeConfirmations", "ShowDateTimeChangeConfirmations"}},
         {"Others",
          0,
          {"SyncScrolling", "ShowGraphAfterCompare", "PromptForSyncMethod", "AutoCompleteFolderPath"}},
         {"Auto Compare",
          1,
          {"AutoCompareAfterFilter", "AutoCompareAfterFileOp", "AutoCompareAfterSync",
           "AutoCompareAfterCreationOfNewFolder", "AutoCompareAfterDateTimeChange",
           "AutoCompareAfterCompareMethodChange"}}});
}

CheckBoxPage* CheckBoxPage::ViewFileDiffs(const OptionsContext& context) {
    return new CheckBoxPage(
        OptionTab::ViewFileDiffs, context,
        {{"View File Difference Options",
          0,
          {"ViewFileDiffIgnoreWhitespace", "ViewFileDiffIgnoreCase", "ViewFileDiffPromptForOptions"}}});
}

}  // namespace vantrel
