#include "filetools/forms/file_path_box.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>

#include "platform/forms/qt_text.h"
#include "platform/names/names.h"
#include "views/forms/dragged_paths.h"

namespace vantrel {

FilePathBox::FilePathBox(Side side, const FileSystem& files, EventLoopPort& loop, const bool& autoComplete,
                         QWidget* parent)
    : QLineEdit(parent), autoComplete_(files, loop), completes_(autoComplete) {
    const bool left = side == Side::Left;
    setObjectName(left ? QStringLiteral("txtFileOne") : QStringLiteral("txtFileTwo"));
    setAccessibleName(left ? QStringLiteral("Path of File One") : QStringLiteral("Path of File Two"));
    setPlaceholderText(left ? QStringLiteral("File One") : QStringLiteral("File Two"));
    setAcceptDrops(true);
    connect(this, &QLineEdit::textEdited, this, [this] {
        if (completes_) autoComplete_.Run(*this);
    });
}

std::string FilePathBox::Path() const {
    const QString text = this->text().trimmed();
    return text.isEmpty() ? std::string() : PathFromUser(FromQString(text));
}

void FilePathBox::SetPath(std::string_view path) {
    setText(ToQString(path));
}

std::string FilePathBox::Text() const {
    return FromQString(text());
}

void FilePathBox::SetTextWithProposal(const std::string& text, std::size_t selectFrom) {
    const QString shown = ToQString(text);
    const auto from = static_cast<int>(ToQString(std::string_view(text).substr(0, selectFrom)).size());
    setText(shown);
    // From the end backwards: the cursor stands where typing goes on, as if the proposal were not there.
    setSelection(static_cast<int>(shown.size()), from - static_cast<int>(shown.size()));
}

void FilePathBox::keyPressEvent(QKeyEvent* event) {
    const bool types = event->text().size() == 1 && event->text().front().isPrint() &&
                       !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    autoComplete_.SetArmed(types);
    QLineEdit::keyPressEvent(event);
}

bool FilePathBox::Accepts(QDropEvent* event) const {
    const bool usable = !isReadOnly() && (event->mimeData()->hasUrls() || event->mimeData()->hasText());
    if (!usable) {
        event->ignore();
        return false;
    }
    // The source keeps what it has: only its path is used.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    return true;
}

void FilePathBox::dragEnterEvent(QDragEnterEvent* event) {
    Accepts(event);
}

void FilePathBox::dragMoveEvent(QDragMoveEvent* event) {
    Accepts(event);
}

void FilePathBox::dropEvent(QDropEvent* event) {
    if (!Accepts(event)) return;
    const std::vector<std::string> paths = DroppedPaths(*event->mimeData());
    if (!paths.empty())
        SetPath(paths.front());
    else if (event->mimeData()->hasText())
        setText(event->mimeData()->text().section(QLatin1Char('\n'), 0, 0).trimmed());
    Q_EMIT PathDropped();
}

}  // namespace vantrel
