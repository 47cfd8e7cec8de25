// What the menu of extras does.
#include <QGuiApplication>

#include "filetools/forms/diff_command_table.h"
#include "filetools/forms/fixed_font.h"
#include "filetools/forms/frm_file_diffs.h"
#include "filetools/forms/frm_file_diffs_run.h"
#include "platform/files/replace_file.h"
#include "platform/names/paths.h"

namespace vantrel {

void frmFileDiffs::Zoom(int steps) {
    zoom_ = ClampedZoom(steps);
    const QFont font = FixedFont(zoom_);
    for (const Side side : kBothSides) {
        grdFile[side]->SetGridFont(font);
        rtfLineDiff[Index(side)]->SetBoxFont(font);
    }
    if (wraps_ && HasResult()) LayOutRows(contents_.layout.Folds());
}

void frmFileDiffs::FlipInlineDifferences() {
    bool& option = parts_.settings.inlineDifferences;
    option = !option;
    contents_.markCharacters = option;
    ContentsChanged();
}

void frmFileDiffs::FlipWrapLines() {
    if (!wraps_ && HasResult() && columnsOfRows_.empty()) {
        const Run run(*this);
        columnsOfRows_ = ColumnsOfRows(contents_.grids, [this] {
            parts_.tools.loop.Yield();
            if (parts_.tools.loop.CancelRequested()) throw Cancelled();
        });
    }
    wraps_ = !wraps_;
    if (HasResult()) LayOutRows(contents_.layout.Folds());
}

void frmFileDiffs::FlipFoldEqualLines() {
    folds_ = !folds_;
    if (!HasResult()) return;
    FoldRows();
    GoToRow(CurrentRow());
}

void frmFileDiffs::GoToMoved() {
    const std::int32_t row = contents_.OtherPlaceOf(CurrentRow());
    if (row > 0)
        ShowSelectedRows(row);
    else
        Tell("Go to Other Place", "The lines of this row do not stand at another place.");
}

void frmFileDiffs::InstallEncodings() {
    for (const Side side : kBothSides)
        for (std::size_t number = 0; number <= OfferedEncodings().size(); ++number) {
            const std::string encoding(number == 0 ? std::string_view() : OfferedEncodings()[number - 1]);
            const std::string_view item = EncodingItem(side, number);
            commands_.BindCheck(
                item, [this, side, encoding] { return parts_.options.Encodings[side] == encoding; });
            commands_.SetHandler(item, [this, side, encoding] { ChooseEncoding(side, encoding); });
        }
}

void frmFileDiffs::ChooseEncoding(Side side, const std::string& encoding) {
    parts_.options.Encodings[side] = encoding;
    mnuFileCompare_Click();
}

void frmFileDiffs::SaveAsPatch() {
    FileDialog dialog;
    dialog.title = "Save as Patch";
    dialog.filter = "Patch Files (*.patch)|*.patch|All Files (*.*)|*.*";
    dialog.save = true;
    dialog.startFolder = GetParentFolderName(parts_.options.FileTwo);
    const auto path = parts_.tools.messages.AskForFile(dialog);
    if (!path) return;
    FileInfo target;
    const bool exists = parts_.tools.files.Stat(*path, LinkPolicy::Follow, target).IsOk();
    for (const Side side : kBothSides)
        if (exists && target.id == contents_.grids.Diff()->texts[side].id)
            return Tell("Save as Patch", "The patch cannot replace one of the two files that are compared.",
                        MessageIcon::Warning);
    WritePatch(*path);
}

// The files are read again as they are stored, and nothing is ignored: the patch makes file two of file one,
// byte for byte.
void frmFileDiffs::WritePatch(const std::string& path) {
    const Run run(*this);
    FileDiffEngine engine(parts_.tools);
    engine.Encodings = {};
    const std::int32_t code = engine.CompareFiles(parts_.options.FileOne, parts_.options.FileTwo);
    if (code == FileDiffEngine::kFailed)
        return Tell("Save as Patch", engine.OutputLine(0), MessageIcon::Warning);
    if (code == FileDiffEngine::kIdentical) return Tell("Save as Patch", "The files are identical");
    if (engine.IsBinary() || engine.DiffersOnlyInForm())
        return Tell("Save as Patch", engine.OutputLine(0), MessageIcon::Warning);
    const FileDiff& diff = *engine.Result();
    PerSide<std::string> names;
    for (const Side side : kBothSides)
        names[side] = UnifiedName(diff.texts[side].path, diff.texts[side].lastWrite);
    ThrowIfFailed(ReplaceFileInPieces(parts_.tools.files, path, [&](const PieceSink& sink) {
        WriteUnified(diff.hunks, diff.Views(), names, sink);
    }));
}

}  // namespace vantrel
