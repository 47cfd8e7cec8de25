#include "views/forms/path_box.h"

#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>
#include <QToolButton>
#include <utility>

#include "platform/forms/icons.h"
#include "platform/forms/qt_text.h"
#include "platform/names/names.h"
#include "platform/names/paths.h"
#include "platform/names/uri_list.h"
#include "settings/path_history.h"
#include "views/forms/dragged_paths.h"

namespace vantrel {
namespace {

struct IconEntry {
    const char* picture;
    PerSide<const char*> tips;
};
constexpr std::array<IconEntry, kPathIconCount> kIcons{{
    {"select-folder", {{"Select Left Folder", "Select Right Folder"}}},
    {"parent", {{"Up to Parent", "Up to Parent"}}},
    {"new-folder", {{"Create New Sub-Folder", "Create New Sub-Folder"}}},
    {"explore", {{"Explore this folder", "Explore this folder"}}},
}};

// Whether a key arms the completion: letters, digits and signs do, keys that move or delete do not.
bool IsPrintable(const QKeyEvent& key) {
    if (key.text().size() != 1 || (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier))) return false;
    const QChar character = key.text().front();
    return (character.unicode() >= 32 && character.unicode() <= 122) ||
           (character.unicode() >= 128 && character.isPrint());
}

QString FirstLine(const QString& text) {
    return text.trimmed().section(QLatin1Char('\n'), 0, 0).trimmed();
}

}  // namespace

PathBox::PathBox(Side side, const FileSystem& files, EventLoopPort& loop, QWidget* parent)
    : QWidget(parent), side_(side), files_(files), autoComplete_(files, loop) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    MakeCombo();
    layout->addWidget(combo_, 1);
    MakeIcons();
    for (QToolButton* icon : icons_) layout->addWidget(icon);
}

void PathBox::MakeCombo() {
    const bool left = side_ == Side::Left;
    combo_ = new QComboBox(this);
    combo_->setObjectName(left ? QStringLiteral("cboSourcePath") : QStringLiteral("cboTargetPath"));
    combo_->setEditable(true);
    combo_->setInsertPolicy(QComboBox::NoInsert);
    combo_->setCompleter(nullptr);
    combo_->setMaxVisibleItems(20);
    combo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo_->setMinimumContentsLength(8);
    combo_->setToolTip(left ? QStringLiteral("Left Folder Path") : QStringLiteral("Right Folder Path"));
    combo_->setAccessibleName(combo_->toolTip());
    combo_->setAcceptDrops(true);
    combo_->lineEdit()->setAcceptDrops(true);
    combo_->installEventFilter(this);
    combo_->lineEdit()->installEventFilter(this);
    setFocusProxy(combo_);
    connect(combo_, &QComboBox::editTextChanged, this, &PathBox::OnTextChanged);
    connect(combo_, &QComboBox::activated, this, [this] {
        if (state_.busy()) return;
        OnTextChanged();
        Q_EMIT ChosenFromList();
    });
    connect(combo_->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        if (!state_.busy()) Q_EMIT CompareRequested();
    });
}

void PathBox::MakeIcons() {
    const QString name =
        side_ == Side::Left ? QStringLiteral("imgSelectSource(%1)") : QStringLiteral("imgSelectTarget(%1)");
    for (std::size_t i = 0; i < icons_.size(); ++i) {
        auto* icon = new QToolButton(this);
        icon->setObjectName(name.arg(i));
        icon->setIcon(CommandIcon(QLatin1String(kIcons[i].picture)));
        icon->setIconSize(QSize(16, 16));
        icon->setAutoRaise(true);
        icon->setFocusPolicy(Qt::TabFocus);
        icon->setToolTip(QString::fromLatin1(kIcons[i].tips[side_]));
        icon->setAccessibleName(icon->toolTip());
        connect(icon, &QToolButton::clicked, this, [this, i] {
            if (!state_.busy()) Q_EMIT IconClicked(static_cast<PathIcon>(i));
        });
        icons_[i] = icon;
    }
}

void PathBox::ShowBusy(bool busy) {
    combo_->setEnabled(!busy);
    for (QToolButton* icon : icons_) icon->setEnabled(!busy);
}

std::string PathBox::Path() const {
    const std::string text = FromQString(combo_->currentText());
    std::string named = PathFromFileUri(text);
    return named.empty() ? PathFromUser(text) : named;
}

void PathBox::SetPath(std::string_view path) {
    combo_->setEditText(ToQString(path));
}

void PathBox::SetFolders(const std::vector<std::string>& folders) {
    combo_->setUpdatesEnabled(false);
    combo_->clear();
    for (const std::string& folder : folders) combo_->addItem(ToQString(folder));
    combo_->setCurrentIndex(folders.empty() ? -1 : 0);
    combo_->lineEdit()->home(false);
    combo_->setUpdatesEnabled(true);
}

std::vector<std::string> PathBox::Folders() const {
    std::vector<std::string> folders;
    folders.reserve(static_cast<std::size_t>(combo_->count()));
    for (int i = 0; i < combo_->count(); ++i) folders.push_back(FromQString(combo_->itemText(i)));
    return folders;
}

void PathBox::OnTextChanged() {
    if (TakeAddress() || state_.fillingOrRun()) return;
    Q_EMIT Changed();
    if (state_.autoComplete()) autoComplete_.Run(*this);
}

// An address that comes in one piece was pasted. Its first line becomes the path that it names, and by that
// change all follows. One that is typed stays until it is used.
bool PathBox::TakeAddress() {
    const QString text = combo_->currentText();
    const qsizetype added = text.size() - std::exchange(lengthBefore_, text.size());
    if (added < 2) return false;
    const std::string path = PathFromFileUri(FromQString(FirstLine(text)));
    if (path.empty()) return false;
    SetPathOfObject(path);
    return true;
}

// Of a file its folder.
void PathBox::SetPathOfObject(const std::string& path) {
    SetPath(files_.FileExists(path) ? GetParentFolderName(path) : path);
}

// A click into the prompt is meant for what will stand there instead.
bool PathBox::SelectPrompt(const QEvent& event) {
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    if (mouse.button() != Qt::LeftButton || FromQString(combo_->currentText()) != kNoFolderPrompt)
        return false;
    combo_->lineEdit()->selectAll();
    return true;
}

std::string PathBox::Text() const {
    return FromQString(combo_->currentText());
}

void PathBox::SetTextWithProposal(const std::string& text, std::size_t selectFrom) {
    const QString shown = ToQString(text);
    const auto from = static_cast<int>(ToQString(std::string_view(text).substr(0, selectFrom)).size());
    combo_->setEditText(shown);
    // From the end backwards: the cursor stands where typing goes on, as if the proposal were not there.
    combo_->lineEdit()->setSelection(static_cast<int>(shown.size()), from - static_cast<int>(shown.size()));
}

bool PathBox::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
            // Seen before the box takes the key, and so before its text changes.
            autoComplete_.SetArmed(IsPrintable(static_cast<QKeyEvent&>(*event)));
            break;
        case QEvent::FocusIn:
            // Behind whatever the focus does to the selection; a click has its own rule below.
            if (watched == combo_ && static_cast<QFocusEvent*>(event)->reason() != Qt::MouseFocusReason)
                QTimer::singleShot(0, this, [this] {
                    if (FromQString(combo_->currentText()) == kNoFolderPrompt)
                        combo_->lineEdit()->selectAll();
                });
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            if (watched == combo_->lineEdit() && SelectPrompt(*event)) return true;
            break;
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            return TakeDrop(event);
        default:
            break;
    }
    return QWidget::eventFilter(watched, event);
}

// A text replaces the text of the box; of dropped files the first one counts, and of a file its folder.
bool PathBox::TakeDrop(QEvent* event) {
    auto& drop = static_cast<QDropEvent&>(*event);
    const bool usable = !state_.busy() && (drop.mimeData()->hasUrls() || drop.mimeData()->hasText());
    if (!usable) {
        drop.ignore();
        return true;
    }
    // The source keeps what it has: only its path is used.
    drop.setDropAction(Qt::CopyAction);
    drop.accept();
    if (event->type() != QEvent::Drop) return true;

    const std::vector<std::string> paths = DroppedPaths(*drop.mimeData());
    if (!paths.empty()) {
        SetPathOfObject(paths.front());
    } else if (drop.mimeData()->hasText()) {
        const QString text = FirstLine(drop.mimeData()->text());
        const std::string named = PathFromFileUri(FromQString(text));
        named.empty() ? combo_->setEditText(text) : SetPathOfObject(named);
    }
    return true;
}

}  // namespace vantrel
