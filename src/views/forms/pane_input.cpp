// The part of PaneView that takes keys, mouse and drops.
#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <algorithm>

#include "platform/forms/qt_text.h"
#include "views/forms/pane_view.h"
#include "views/list_lookup.h"

namespace vantrel {
namespace {

SelectionKeys KeysOf(Qt::KeyboardModifiers modifiers) {
    return {.extend = modifiers.testFlag(Qt::ShiftModifier),
            .toggle = modifiers.testFlag(Qt::ControlModifier)};
}

bool IsText(const QKeyEvent& event) {
    return !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) &&
           !event.text().isEmpty() && event.text().front().isPrint();
}

bool IsOneLetterRepeated(const QString& text) {
    return std::all_of(text.begin(), text.end(), [&](QChar letter) { return letter == text.front(); });
}

}  // namespace

// The row that a key of movement leads to; nothing for other keys and in an empty list.
std::optional<std::size_t> PaneView::GoalOfKey(int key) const {
    const int last = static_cast<int>(List().Count()) - 1;
    if (last < 0) return std::nullopt;
    const auto item = List().SelectedItem();
    const int from = item ? static_cast<int>(*item) : -1;
    int goal = 0;
    switch (key) {
        case Qt::Key_Up:
            goal = from - 1;
            break;
        case Qt::Key_Down:
            goal = from + 1;
            break;
        case Qt::Key_PageUp:
            goal = from - RowsOnPage();
            break;
        case Qt::Key_PageDown:
            goal = std::max(from, 0) + RowsOnPage();
            break;
        case Qt::Key_Home:
            break;
        case Qt::Key_End:
            goal = last;
            break;
        default:
            return std::nullopt;
    }
    return static_cast<std::size_t>(std::clamp(goal, 0, last));
}

bool PaneView::HandleCommandKey(const QKeyEvent& event) {
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
    const auto item = List().SelectedItem();
    switch (event.key()) {
        case Qt::Key_A:
            if (control) selector_.SelectAll();
            return control;
        case Qt::Key_D:
            if (control) selector_.DeselectAll();
            return control;
        case Qt::Key_Delete:
            Q_EMIT DeleteRequested(shift);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (item && List().SelectedObject()) Q_EMIT RowActivated(*item, MenuPlace(*item));
            return item.has_value();
        case Qt::Key_Space:
            if (item) selector_.Click(item, {.extend = shift, .toggle = !shift});
            return item.has_value();
        default:
            return false;
    }
}

void PaneView::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    if (!selector_.IsEnabled()) return;
    // A blank is part of a name that is being typed.
    const bool typing = !searchText_.isEmpty() && searchClock_.isValid() &&
                        !searchClock_.hasExpired(QApplication::keyboardInputInterval());
    if (!(typing && event->key() == Qt::Key_Space && IsText(*event)) && HandleCommandKey(*event)) {
        event->accept();
    } else if (const auto goal = GoalOfKey(event->key())) {
        searchText_.clear();
        selector_.MoveTo(*goal, KeysOf(event->modifiers()));
        EnsureVisible(*goal);
        event->accept();
    } else if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        // To scroll sideways, where the table's own handler would move the current index.
        QAbstractScrollArea::keyPressEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    } else if (IsText(*event)) {
        keyboardSearch(event->text());
        event->accept();
    }
}

void PaneView::keyboardSearch(const QString& text) {
    if (text.isEmpty() || List().Count() == 0) return;
    if (!searchClock_.isValid() || searchClock_.hasExpired(QApplication::keyboardInputInterval()))
        searchText_.clear();
    searchClock_.start();
    searchText_ += text;
    // The same letter again and again goes from one name of that letter to the next.
    const bool onward = IsOneLetterRepeated(searchText_);
    const QString wanted = onward ? searchText_.left(1) : searchText_;
    const auto item = List().SelectedItem();
    const std::size_t start = item ? *item + (onward ? 1 : 0) : 0;
    if (const auto row = FindRowByPrefix(List().Rows(), start, FromQString(wanted))) {
        selector_.MoveTo(*row, {});
        EnsureVisible(*row);
    }
}

void PaneView::mousePressEvent(QMouseEvent* event) {
    clickOnRelease_.reset();
    mayDrag_ = false;
    searchText_.clear();
    if (!selector_.IsEnabled()) return;
    selector_.Pressed();
    const auto row = RowAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton) {
        pressedAt_ = event->position().toPoint();
        PressLeft(row, KeysOf(event->modifiers()));
    } else if (event->button() == Qt::RightButton) {
        PressRight(row);
    }
}

void PaneView::PressLeft(std::optional<std::size_t> row, SelectionKeys keys) {
    const bool onSelected = row && List()[*row].selected;
    if (onSelected && !keys.extend) {
        // The press may begin a drag of all that is selected: what a click does waits for the release.
        selector_.MoveTo(*row, {.toggle = true});
        clickOnRelease_ = row;
        releaseKeys_ = keys;
    } else {
        selector_.Click(row, keys);
    }
    mayDrag_ = row && List()[*row].selected;
}

void PaneView::PressRight(std::optional<std::size_t> row) {
    if (row && List()[*row].selected)
        selector_.MoveTo(*row, {.toggle = true});
    else
        selector_.Click(row, {});
}

void PaneView::mouseMoveEvent(QMouseEvent* event) {
    if (!mayDrag_ || !(event->buttons() & Qt::LeftButton) || !selector_.IsEnabled()) return;
    if ((event->position().toPoint() - pressedAt_).manhattanLength() < QApplication::startDragDistance())
        return;
    mayDrag_ = false;
    clickOnRelease_.reset();
    Q_EMIT DragRequested();
}

void PaneView::mouseReleaseEvent(QMouseEvent* event) {
    mayDrag_ = false;
    if (event->button() != Qt::LeftButton || !clickOnRelease_) return;
    const auto row = clickOnRelease_;
    clickOnRelease_.reset();
    if (selector_.IsEnabled() && *row < List().Count()) selector_.Click(row, releaseKeys_);
}

void PaneView::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    mayDrag_ = false;
    clickOnRelease_.reset();
    if (event->button() != Qt::LeftButton || !selector_.IsEnabled()) return;
    const auto row = RowAt(event->position().toPoint());
    if (row && List()[*row].IsReal()) Q_EMIT RowActivated(*row, event->globalPosition().toPoint());
}

QPoint PaneView::MenuPlace(std::size_t row) {
    EnsureVisible(row);
    const QRect place = RectOfRow(row) & viewport()->rect();
    return viewport()->mapToGlobal(place.bottomLeft() + QPoint(iconSize().width(), 0));
}

void PaneView::contextMenuEvent(QContextMenuEvent* event) {
    if (!selector_.IsEnabled()) return;
    QPoint position = event->globalPos();
    const auto item = List().SelectedItem();
    if (event->reason() == QContextMenuEvent::Keyboard)
        position = item ? MenuPlace(*item) : viewport()->mapToGlobal(QPoint());
    event->accept();
    Q_EMIT MenuRequested(position);
}

void PaneView::dragEnterEvent(QDragEnterEvent* event) {
    event->setAccepted(selector_.IsEnabled() && event->mimeData()->hasUrls());
}

void PaneView::dragMoveEvent(QDragMoveEvent* event) {
    event->setAccepted(selector_.IsEnabled() && event->mimeData()->hasUrls());
}

void PaneView::dragLeaveEvent(QDragLeaveEvent*) {
}

void PaneView::dropEvent(QDropEvent* event) {
    if (!selector_.IsEnabled() || !event->mimeData()->hasUrls()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    Q_EMIT UrisDropped(event->mimeData()->urls(), event->modifiers());
}

bool PaneView::viewportEvent(QEvent* event) {
    // No hover: there is nothing to react to, and the rows stay unpainted when the mouse passes.
    if (event->type() == QEvent::HoverMove || event->type() == QEvent::HoverEnter) return true;
    return QTableView::viewportEvent(event);
}

}  // namespace vantrel
