#include "filetools/forms/frm_hex_dump.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <utility>

#include "filetools/forms/file_path_box.h"
#include "filetools/forms/frm_hex_dump_run.h"
#include "platform/forms/qt_text.h"

namespace vantrel {

namespace {

constexpr const char* kUnableToLoad =
    "Unable to load file contents.\r\n\r\n"
    "Possible reasons include:\r\n"
    "1) The file has no contents.\r\n"
    "2) The file is in use.";

QString Hexadecimal(std::uint64_t value, int digits) {
    return QStringLiteral("%1").arg(static_cast<qulonglong>(value), digits, 16, QLatin1Char('0'));
}

}  // namespace

void frmHexDump::ShowForm(const PerSide<std::string>& paths) {
    FormLoad(paths);
    if (!closeAfterRun_) exec();
}

void frmHexDump::FormLoad(const PerSide<std::string>& paths) {
    parts_.tools.reporter.GuardRun("frmHexDump.Form_Load", [&] {
        ShowBeside(!paths[Side::Right].empty());
        for (const Side side : kBothSides)
            if (!paths[side].empty()) OpenFile(side, paths[side]);
    });
}

void frmHexDump::OpenFile(Side side, const std::string& path) {
    if (side == Side::Right && !isBesideShown_) ShowBeside(true);
    txtFile[side]->SetPath(path);
    contents_.Close(side);
    Error error;
    {
        const Run run(*this);
        rtfHexDump[side]->SetPrompt(QStringLiteral("Loading..."));
        ContentsChanged();
        parts_.tools.loop.Yield();
        // Beside another file one without contents is a file like any other: all of that one differs.
        error =
            contents_.Open(parts_.tools, side, path, isBesideShown_ ? EmptyFile::Taken : EmptyFile::Refused);
    }
    rtfHexDump[side]->SetPrompt({});
    ContentsChanged();
    if (error.IsOk()) return rtfHexDump[side]->setFocus();
    lblFile[side]->setText(DisplayQString(error.Description()));
    lblFile[side]->setToolTip(WithLineBreaks(lblFile[side]->text()));
    Tell("Hex Dump Viewer", kUnableToLoad, MessageIcon::Warning);
}

void frmHexDump::OnDropped(Side side, const std::vector<std::string>& paths) {
    if (busy_.IsBusy() || paths.empty()) return;
    if (paths.size() == 1) return OpenFile(side, paths.front());
    ShowBeside(true);
    OpenFile(Side::Left, paths[0]);
    OpenFile(Side::Right, paths[1]);
    if (contents_.IsPair()) GoToDifference(0, SearchDirection::Forward, false);
}

void frmHexDump::Tell(const char* title, const std::string& text, MessageIcon icon) {
    parts_.tools.messages.Ask({.title = title, .text = text, .icon = icon, .defaultAnswer = {}});
}

void frmHexDump::LookAgain() {
    if (busy_.IsBusy()) return;
    for (const Side side : kBothSides) {
        if (contents_.LookAgain(parts_.tools.files, side)) {
            ShowFileState(side);
            ShowStatus();
        }
        if (contents_.Change(side) != FileChange::None) rtfHexDump[side]->viewport()->update();
    }
}

// Files or sizes are others now.
void frmHexDump::ContentsChanged() {
    for (const Side side : kBothSides) {
        rtfHexDump[side]->ContentsChanged();
        ShowFileState(side);
    }
    EnableCommands();
    ShowStatus();
}

void frmHexDump::GoTo(std::uint64_t offset, SelectionStep step, Placing placing) {
    if (contents_.IsEmpty()) return;
    contents_.MoveTo(offset, step);
    SelectionChanged(placing);
}

void frmHexDump::SelectionChanged(Placing placing) {
    HexView* view = rtfHexDump[Side::Left];
    const std::uint64_t cursor = contents_.Cursor(), line = cursor / kHexDumpBytes;
    if (!view->IsSeen(cursor)) {
        const auto seen = static_cast<std::uint64_t>(view->LinesSeen());
        const std::uint64_t above = placing == Placing::Middle ? seen / 3 : line < view->Top() ? 0 : seen - 1;
        view->SetTop(line - std::min(line, above));
    }
    for (const Side side : kBothSides) {
        rtfHexDump[side]->viewport()->update();
        if (contents_.Has(side))
            rtfHexDump[side]->setAccessibleDescription(ToQString(contents_.LineAt(side, line).text));
    }
    ShowStatus();
}

void frmHexDump::ShowStatus() {
    if (contents_.IsEmpty()) {
        lblPosition->clear();
        lblBytes->clear();
        return;
    }
    const auto digits = static_cast<int>(contents_.OffsetDigits());
    lblPosition->setText(QStringLiteral("Offset %1 (%2)")
                             .arg(Hexadecimal(contents_.Cursor(), digits),
                                  locale().toString(static_cast<qulonglong>(contents_.Cursor()))));
    ShowBytes();
}

void frmHexDump::ShowBytes() {
    const ByteRange selection = contents_.Selection();
    if (selection.size > 1) {
        lblBytes->setText(QStringLiteral("%1 bytes selected")
                              .arg(locale().toString(static_cast<qulonglong>(selection.size))));
        return;
    }
    QStringList bytes;
    for (const Side side : kBothSides) {
        if (!contents_.Has(side)) continue;
        const auto byte = contents_.Files()[side].At(contents_.Cursor(), 1);
        bytes += byte.empty() ? QStringLiteral("none")
                              : QStringLiteral("%1 (%2)").arg(Hexadecimal(byte[0], 2)).arg(byte[0]);
    }
    lblBytes->setText(QStringLiteral("Byte ") + bytes.join(QStringLiteral(" | ")));
}

void frmHexDump::ShowFileState(Side side) {
    QString text;
    if (contents_.Has(side)) {
        const std::uint64_t size = contents_.Files()[side].Size();
        if (isBesideShown_)
            text = side == Side::Left ? QStringLiteral("File One: ") : QStringLiteral("File Two: ");
        text += size == 1 ? QStringLiteral("1 byte")
                          : QStringLiteral("%1 bytes").arg(locale().toString(static_cast<qulonglong>(size)));
        const std::string_view change = FileChangeText(contents_.Change(side));
        if (!change.empty())
            text += QStringLiteral(". ") + ToQString(change) + QStringLiteral(" F5 reads it again.");
    }
    lblFile[side]->setText(text);
    lblFile[side]->setToolTip(text);
}

bool frmHexDump::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && busy_.IsBusy() && watched->isWidgetType() &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        parts_.requestCancel();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmHexDump::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    lookAgain_.start();
    if (std::exchange(wasShown_, true)) return;
    // What differs may stand far down in a large file: the window is there while that is looked for.
    QTimer::singleShot(0, this, Guarded("Form_Activate", [this] {
                           if (contents_.IsPair() && !busy_.IsBusy() && contents_.Cursor() == 0)
                               GoToDifference(0, SearchDirection::Forward, false);
                       }));
}

void frmHexDump::hideEvent(QHideEvent* event) {
    lookAgain_.stop();
    QDialog::hideEvent(event);
}

void frmHexDump::done(int result) {
    // The work holds on to what the window owns: it is asked to end, and the window closes behind it.
    if (busy_.IsBusy()) {
        closeAfterRun_ = true;
        parts_.requestCancel();
        return;
    }
    for (const Side side : kBothSides) contents_.Close(side);
    QDialog::done(result);
}

}  // namespace vantrel
