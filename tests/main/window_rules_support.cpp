#include "window_rules_support.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabBar>
#include <algorithm>
#include <map>
#include <set>

namespace vantrel::testing {
namespace {

constexpr QSize kSmallScreen(800, 500);
constexpr QSize kFrame(16, 48);

std::string Describe(const QWidget& widget) {
    std::string text = widget.metaObject()->className();
    for (const QWidget* at = &widget; at != nullptr && !at->isWindow(); at = at->parentWidget())
        if (!at->objectName().isEmpty()) return text + " " + at->objectName().toStdString();
    return text;
}

// Tab goes to the chosen one of a set of option buttons, and the arrow keys to the others.
bool IsReachedByArrows(const QWidget& widget) {
    const auto* option = qobject_cast<const QRadioButton*>(&widget);
    return option != nullptr && !option->isChecked();
}

// A text of which the mouse can take a part.
bool IsText(const QWidget& widget) {
    return qobject_cast<const QLabel*>(&widget) != nullptr;
}

// The inner parts of combo boxes and the like belong to them.
bool IsPartOfControl(const QWidget& widget) {
    const QWidget* owner = widget.parentWidget();
    return qobject_cast<const QComboBox*>(owner) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(owner) != nullptr ||
           widget.objectName().startsWith(QLatin1String("qt_"));
}

std::vector<QWidget*> ControlsInView(const QWidget& window) {
    std::vector<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->window() == &window && widget->isVisible() && widget->focusPolicy() != Qt::NoFocus &&
            widget->focusProxy() == nullptr && !IsPartOfControl(*widget))
            controls.push_back(widget);
    return controls;
}

// Upper case; null where none is marked.
QChar MarkedLetter(QString text) {
    text.replace(QStringLiteral("&&"), QString());
    const qsizetype at = text.indexOf(QLatin1Char('&'));
    return at >= 0 && at + 1 < text.size() ? text[at + 1].toUpper() : QChar();
}

using Letters = std::multimap<QChar, QString>;

void ExpectEachOnce(const Letters& letters, const char* where) {
    for (auto at = letters.begin(); at != letters.end(); at = letters.upper_bound(at->first)) {
        if (letters.count(at->first) == 1) continue;
        std::string texts;
        for (auto same = at; same != letters.upper_bound(at->first); ++same)
            texts += " \"" + same->second.toStdString() + "\"";
        ADD_FAILURE() << where << ": Alt+" << QString(at->first).toStdString() << " means" << texts;
    }
}

void Add(Letters& letters, const QString& text) {
    if (const QChar letter = MarkedLetter(text); !letter.isNull()) letters.emplace(letter, text);
}

void AddActions(Letters& letters, const QList<QAction*>& actions) {
    for (const QAction* action : actions)
        if (action->isVisible() && !action->isSeparator()) Add(letters, action->text());
}

QString CaptionOf(const QWidget& widget) {
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return qobject_cast<const QPushButton*>(button) || button->isCheckable() ? button->text() : QString();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) return group->title();
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return label != nullptr && label->buddy() != nullptr ? label->text() : QString();
}

Letters LettersInView(const QWidget& window) {
    Letters letters;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->window() != &window || !widget->isVisible()) continue;
        if (const auto* bar = qobject_cast<const QMenuBar*>(widget)) AddActions(letters, bar->actions());
        if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i) Add(letters, tabs->tabText(i));
        Add(letters, CaptionOf(*widget));
    }
    return letters;
}

}  // namespace

QSize LeastSize(const QWidget& window) {
    return window.minimumSizeHint().expandedTo(window.minimumSize());
}

void ExpectNamesForScreenReaders(QWidget& window) {
    EXPECT_FALSE(window.windowTitle().isEmpty());
    ForEachTab(window, [&window] {
        for (QWidget* control : ControlsInView(window)) {
            const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(control);
            if (face == nullptr) {
                ADD_FAILURE() << Describe(*control) << " is not there for screen readers";
                continue;
            }
            EXPECT_FALSE(face->text(QAccessible::Name).trimmed().isEmpty())
                << Describe(*control) << " has no name";
            EXPECT_NE(face->role(), QAccessible::NoRole) << Describe(*control);
            EXPECT_NE(face->role(), QAccessible::Client) << Describe(*control) << " has no role";
        }
    });
}

void ExpectAccessKeysWithoutClashes(QWidget& window) {
    ForEachTab(window, [&window] { ExpectEachOnce(LettersInView(window), "window"); });
    for (const QMenu* menu : window.findChildren<QMenu*>()) {
        Letters letters;
        AddActions(letters, menu->actions());
        ExpectEachOnce(letters, menu->objectName().toUtf8());
    }
}

void ExpectReachableByTab(QWidget& window) {
    ForEachTab(window, [&window] {
        std::set<const QWidget*> ring;
        for (const QWidget* at = window.nextInFocusChain(); at != &window; at = at->nextInFocusChain())
            if (!ring.insert(at).second) break;
        for (const QWidget* control : ControlsInView(window)) {
            if (!control->isEnabled() || IsText(*control) || IsReachedByArrows(*control)) continue;
            EXPECT_TRUE(control->focusPolicy() & Qt::TabFocus) << Describe(*control) << " is left out by Tab";
            EXPECT_TRUE(ring.count(control)) << Describe(*control) << " is not in the ring";
        }
    });
}

void ExpectFitsSmallScreen(QWidget& window) {
    const QSize least = LeastSize(window) + kFrame;
    if (QSize(kSmallScreen).expandedTo(least) == kSmallScreen) return;
    std::string wide;
    for (const QWidget* part : window.findChildren<QWidget*>())
        if (part->isVisible() && part->minimumSizeHint().width() > kSmallScreen.width() / 4)
            wide += "\n" + Describe(*part) + " " + std::to_string(part->minimumSizeHint().width());
    ADD_FAILURE() << least.width() << " by " << least.height() << " is too large; the widest parts:" << wide;
}

void ExpectCurrentRows(QWidget& window) {
    ForEachTab(window, [&window] {
        for (QAbstractItemView* view : window.findChildren<QAbstractItemView*>())
            if (view->window() == &window && view->isVisible() && view->focusPolicy() != Qt::NoFocus &&
                view->isEnabled() && view->selectionMode() != QAbstractItemView::NoSelection &&
                view->model() != nullptr && view->model()->rowCount(view->rootIndex()) > 0) {
                view->setFocus(Qt::TabFocusReason);
                QApplication::processEvents();
                EXPECT_TRUE(view->currentIndex().isValid()) << Describe(*view) << " has no current row";
            }
    });
}

void ExpectDefaultButton(QWidget& window) {
    QList<QPushButton*> buttons = window.findChildren<QPushButton*>();
    buttons.removeIf(
        [&window](const QPushButton* button) { return button->window() != &window || !button->isVisible(); });
    const auto isDefault = [](const QPushButton* button) { return button->isDefault(); };
    ASSERT_EQ(std::count_if(buttons.begin(), buttons.end(), isDefault), 1);
    const QPushButton* const atFirst = *std::find_if(buttons.begin(), buttons.end(), isDefault);

    QWidget* elsewhere = window.nextInFocusChain();
    for (; elsewhere != &window; elsewhere = elsewhere->nextInFocusChain())
        if (elsewhere->window() == &window && elsewhere->isVisible() && elsewhere->isEnabled() &&
            (elsewhere->focusPolicy() & Qt::TabFocus) == Qt::TabFocus &&
            qobject_cast<QPushButton*>(elsewhere) == nullptr)
            break;
    if (elsewhere == &window) return;
    for (QPushButton* button : buttons) {
        if (!button->isEnabled()) continue;
        button->setFocus(Qt::TabFocusReason);
        elsewhere->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
        EXPECT_TRUE(atFirst->isDefault()) << Describe(*atFirst) << " after " << Describe(*button);
    }
}

}  // namespace vantrel::testing
