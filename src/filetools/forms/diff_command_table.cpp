#include "filetools/forms/diff_command_table.h"

#include <string>
#include <vector>

#include "filetools/text_encoding.h"

namespace vantrel {
namespace {

using enum CommandKind;

constexpr CommandEntry kDiffMenus[] = {
    {Menu, "mnuFile", "", "&File"},
    {Command, "mnuFileSelectFileOne", "mnuFile", "Select File One...", "select-file-one", "Ctrl+1"},
    {Command, "mnuFileSelectFileTwo", "mnuFile", "Select File Two...", "select-file-two", "Ctrl+2"},
    {Command, "mnuFileCompare", "mnuFile", "Compare the Files", "compare-files", "F5"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileShowFirstDiff", "mnuFile", "Show First Difference", "", "Ctrl+F7"},
    {Command, "mnuFileShowNextDiff", "mnuFile", "Show &Next Difference", "next-difference", "F7"},
    {Command, "mnuFileShowPreviousDiff", "mnuFile", "Show &Previous Difference", "previous-difference",
     "Shift+F7"},
    {Command, "mnuFileShowLastDiff", "mnuFile", "Show Last Difference", "", "Ctrl+Shift+F7"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileFind", "mnuFile", "&Find...", "find", "Ctrl+F"},
    {Command, "mnuFileFindNext", "mnuFile", "Find Next", "find-next", "F3"},
    {Command, "mnuFileFindPrevious", "mnuFile", "Find Previous", "find-previous", "Shift+F3"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileToggleBookmark", "mnuFile", "Toggle Bookmark", "toggle-bookmark", "Ctrl+F2"},
    {Command, "mnuFileNextBookmark", "mnuFile", "Next Bookmark", "next-bookmark", "F2"},
    {Command, "mnuFilePreviousBookmark", "mnuFile", "Previous Bookmark", "previous-bookmark", "Shift+F2"},
    {Command, "mnuFileClearAllBookmarks", "mnuFile", "Clear All Bookmarks", "clear-bookmarks",
     "Ctrl+Shift+F2"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFilePrint", "mnuFile", "Print...", "print", "Ctrl+P"},
    SeparatorIn("mnuFile"),
    {Command, "mnuFileGoBack", "mnuFile", "<-- Go Back to Previous Window", "go-back", "Ctrl+W"},

    {Menu, "mnuOptions", "", "&Options"},
    {Check, "mnuOptionsIgnoreCase", "mnuOptions", "Ignore &Case"},
    {Check, "mnuOptionsIgnoreWhitespace", "mnuOptions", "Ignore &Whitespace"},

    {Menu, "mnuView", "", "&View"},
    {Menu, "mnuViewFileOne", "mnuView", "View File One"},
    {Command, "mnuViewFileOneUseNotepad", "mnuViewFileOne", "Use Notepad"},
    {Command, "mnuViewFileOneUseAssociated", "mnuViewFileOne", "Use Associated Program"},
    {Menu, "mnuViewFileTwo", "mnuView", "View File Two"},
    {Command, "mnuViewFileTwoUseNotepad", "mnuViewFileTwo", "Use Notepad"},
    {Command, "mnuViewFileTwoUseAssociated", "mnuViewFileTwo", "Use Associated Program"},

    {Menu, "mnuExtras", "", "E&xtras"},
    {Command, "mnuExtrasSaveAsPatch", "mnuExtras", "&Save as Patch...", "", "Ctrl+S"},
    {Command, "mnuExtrasGoToMoved", "mnuExtras", "&Go to Other Place of Moved Lines", "", "Ctrl+M"},
    SeparatorIn("mnuExtras"),
    {Check, "mnuExtrasInlineDifferences", "mnuExtras", "Mark &Differing Characters", "", "Ctrl+D"},
    {Check, "mnuExtrasWrapLines", "mnuExtras", "&Wrap Long Lines", "", "Ctrl+L"},
    {Check, "mnuExtrasFoldEqualLines", "mnuExtras", "&Fold Equal Lines", "", "Ctrl+E"},
    SeparatorIn("mnuExtras"),
    {Command, "mnuExtrasZoomIn", "mnuExtras", "Zoom &In", "", "Ctrl++"},
    {Command, "mnuExtrasZoomOut", "mnuExtras", "Zoom &Out", "", "Ctrl+-"},
    {Command, "mnuExtrasNormalSize", "mnuExtras", "&Normal Size", "", "Ctrl+0"},
    SeparatorIn("mnuExtras"),
    {Menu, "mnuExtrasEncodingOne", "mnuExtras", "Encoding of File One"},
    {Menu, "mnuExtrasEncodingTwo", "mnuExtras", "Encoding of File Two"},
};

constexpr DiffToolbarEntry kToolbar[] = {
    {1, "mnuFileSelectFileOne", "select-file-one", "Select File One..."},
    {2, "mnuFileSelectFileTwo", "select-file-two", "Select File Two..."},
    {3, "mnuFileCompare", "compare-files", "Compare the Files"},
    {5, "mnuFileShowPreviousDiff", "previous-difference", "Previous Difference (Shift+F7)"},
    {6, "mnuFileShowNextDiff", "next-difference", "Next Difference (F7)"},
    {8, "mnuFileFind", "find", "Find (Ctrl+F)"},
    {9, "mnuFileFindNext", "find-next", "Find Next (F3)"},
    {10, "mnuFileFindPrevious", "find-previous", "Find Previous (Shift+F3)"},
    {12, "mnuFileToggleBookmark", "toggle-bookmark", "Toggle Bookmark (Ctrl+F2)"},
    {13, "mnuFileNextBookmark", "next-bookmark", "Next Bookmark (F2)"},
    {14, "mnuFilePreviousBookmark", "previous-bookmark", "Previous Bookmark (Shift+F2)"},
    {15, "mnuFileClearAllBookmarks", "clear-bookmarks", "Clear All Bookmarks"},
    {17, "mnuFilePrint", "print", "Print the differences"},
    {18, "mnuFileGoBack", "go-back", "Go Back to Previous Window"},
};

constexpr PerSide<std::string_view> kEncodingMenus{{"mnuExtrasEncodingOne", "mnuExtrasEncodingTwo"}};

// The names of the items of the two menus of encodings, which the entries look at.
const PerSide<std::vector<std::string>>& EncodingItems() {
    static const PerSide<std::vector<std::string>> names = [] {
        PerSide<std::vector<std::string>> all;
        for (const Side side : kBothSides)
            for (std::size_t number = 0; number <= OfferedEncodings().size(); ++number)
                all[side].push_back(std::string(kEncodingMenus[side]) + "(" + std::to_string(number) + ")");
        return all;
    }();
    return names;
}

const std::vector<CommandEntry>& AllEntries() {
    static const std::vector<CommandEntry> entries = [] {
        std::vector<CommandEntry> all(std::begin(kDiffMenus), std::end(kDiffMenus));
        for (const Side side : kBothSides) {
            all.push_back({Exclusive, EncodingItem(side, 0), kEncodingMenus[side], "&Found Automatically"});
            all.push_back(SeparatorIn(kEncodingMenus[side]));
            for (std::size_t number = 1; number <= OfferedEncodings().size(); ++number)
                all.push_back({Exclusive, EncodingItem(side, number), kEncodingMenus[side],
                               OfferedEncodings()[number - 1]});
        }
        return all;
    }();
    return entries;
}

}  // namespace

std::string_view EncodingItem(Side side, std::size_t number) {
    return EncodingItems()[side][number];
}

CommandTables FileDiffTables() {
    static constexpr std::string_view kBusyMenus[]{"mnuFile", "mnuOptions", "mnuView", "mnuExtras"};
    static constexpr OddRoutine kOddRoutines[]{
        {"mnuFileShowFirstDiff", "frmFileDiffs.mnuFileShowFirstDiff"},
        {"mnuFileShowLastDiff", "frmFileDiffs.mnuFileShowLastDiff"},
        {"mnuFileShowNextDiff", "frmFileDiffs.GetNextDiff"},
        {"mnuFileShowPreviousDiff", "frmFileDiffs.GetPreviousDiff"},
        {"mnuFileFind", "frmFileDiffs.Find"},
        {"mnuFileFindNext", "frmFileDiffs.Find"},
        {"mnuFileFindPrevious", "frmFileDiffs.Find"},
        {"mnuFileToggleBookmark", "frmFileDiffs.ToggleBookmark"},
        {"mnuFileNextBookmark", "frmFileDiffs.GetNextBookmark"},
        {"mnuFilePreviousBookmark", "frmFileDiffs.GetPreviousBookmark"},
        {"mnuFileClearAllBookmarks", "frmFileDiffs.ClearAllBookmarks"},
    };
    return {.menuBar = AllEntries(),
            .popups = {},
            .separate = {},
            .busyMenus = kBusyMenus,
            .window = "frmFileDiffs",
            .oddRoutines = kOddRoutines};
}

std::span<const DiffToolbarEntry> FileDiffToolbar() {
    return kToolbar;
}

}  // namespace vantrel
