#include "platform/forms/qt_ports.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "platform/forms/qt_text.h"
#include "support/temp_folder.h"

namespace vantrel {
namespace {

// Runs `look` on the dialog that the next statement opens. A dialog that is still open after it is closed, so
// that a failing test cannot hang.
template <class Dialog, class Look>
void WhenOpen(Look look) {
    QTimer::singleShot(0, [look] {
        QWidget* open = QApplication::activeModalWidget();
        auto* dialog = qobject_cast<Dialog*>(open);
        EXPECT_NE(dialog, nullptr) << "another dialog, or none";
        if (dialog != nullptr) look(*dialog);
        if (open != nullptr) QTimer::singleShot(0, open, &QWidget::close);
    });
}

void Press(QWidget& widget, Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

TEST(QtMessages, ShowsExactlyWhatIsAskedAndGivesTheButtonPressed) {
    struct Case {
        MessageButtons buttons;
        QMessageBox::StandardButtons shown;
        QMessageBox::StandardButton pressed;
        MessageAnswer answer;
        MessageAnswer escape;
    };
    const Case cases[] = {
        {MessageButtons::Ok, QMessageBox::Ok, QMessageBox::Ok, MessageAnswer::Ok, MessageAnswer::Ok},
        {MessageButtons::OkCancel, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok, MessageAnswer::Ok,
         MessageAnswer::Cancel},
        {MessageButtons::YesNo, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, MessageAnswer::Yes,
         MessageAnswer::No},
        {MessageButtons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
         QMessageBox::No, MessageAnswer::No, MessageAnswer::Cancel},
        {MessageButtons::RetryCancel, QMessageBox::Retry | QMessageBox::Cancel, QMessageBox::Retry,
         MessageAnswer::Retry, MessageAnswer::Cancel},
    };
    QtMessages messages;
    for (const Case& expected : cases) {
        Message message;
        message.title = "Files & Folders";
        message.text = "Is \"<b>a</b>\" one of yours?\r\n\r\nSure?";
        message.icon = MessageIcon::Warning;
        message.buttons = expected.buttons;
        WhenOpen<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Files & Folders"));
            EXPECT_EQ(box.text(), QStringLiteral("Is \"<b>a</b>\" one of yours?\n\nSure?"));
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
            EXPECT_EQ(box.standardButtons(), expected.shown);
            box.button(expected.pressed)->click();
        });
        EXPECT_EQ(messages.Ask(message), expected.answer);
        WhenOpen<QMessageBox>([&](QMessageBox& box) { Press(box, Qt::Key_Escape); });
        EXPECT_EQ(messages.Ask(message), expected.escape);
    }
}

TEST(QtMessages, TakesTheDefaultButtonAndTheFirstOneWithoutIt) {
    QtMessages messages;
    for (const auto& [asked, button] : {std::pair(std::optional<MessageAnswer>(), QMessageBox::Yes),
                                        std::pair(std::optional(MessageAnswer::No), QMessageBox::No)}) {
        WhenOpen<QMessageBox>([button = button](QMessageBox& box) {
            EXPECT_EQ(box.defaultButton(), box.button(button));
            Press(box, Qt::Key_Return);
        });
        Message message;
        message.buttons = MessageButtons::YesNo;
        message.defaultAnswer = asked;
        EXPECT_EQ(messages.Ask(message), asked.value_or(MessageAnswer::Yes));
    }
}

TEST(QtMessages, LetsALongPathBreakAndShowsTheOrdinaryPointerMeanwhile) {
    QtMessages messages;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    WhenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Information);
        EXPECT_EQ(box.text().remove(QChar(0x200B)).size(), 4'000);
        EXPECT_LT(box.width(), 2'000);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    });
    messages.ShowInformationMessage("Long", std::string(4'000, 'x'));
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
}

TEST(QtMessages, ConfirmsThroughTheWindowOfItsOwnerOrElseByAPlainQuestion) {
    QtMessages messages;
    Confirmation confirmation;
    confirmation.question = "Copy them?";
    confirmation.names = {"/a/one", "/a/two"};
    WhenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.detailedText(), QStringLiteral("/a/one\n/a/two"));
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(messages.Confirm(confirmation), MessageAnswer::Yes);
    messages.showConfirmation = [](const Confirmation& asked) {
        return asked.names.size() == 2 ? MessageAnswer::No : MessageAnswer::Cancel;
    };
    EXPECT_EQ(messages.Confirm(confirmation), MessageAnswer::No);
}

TEST(QtMessages, AsksForATextAndTellsEmptyFromCancelled) {
    QtMessages messages;
    WhenOpen<QInputDialog>([](QInputDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Find"));
        EXPECT_EQ(dialog.labelText(), QStringLiteral("Enter search text.\n\n<i>"));
        EXPECT_EQ(dialog.textValue(), ToQString("\u00FCber"));
        dialog.setTextValue(QString());
        dialog.accept();
    });
    EXPECT_EQ(messages.AskForText("Find", "Enter search text.\r\n\r\n<i>", "\u00FCber"), std::string());
    WhenOpen<QInputDialog>([](QInputDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(messages.AskForText("Find", "", "x"), std::nullopt);
}

TEST(QtMessages, PicksFilesAndFolders) {
    const testing::TempFolder folder;
    folder.Write("old list.lst", "x");
    folder.MakeFolder("sub");
    QtMessages messages;
    FileDialog asked;
    asked.title = "Load Filter List";
    asked.filter = "Filter List Files (*.lst)|*.lst";
    asked.startFolder = folder.Path() + "gone/deeper/";
    WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Load Filter List"));
        EXPECT_EQ(dialog.nameFilters(), QStringList(QStringLiteral("Filter List Files (*.lst)")));
        EXPECT_EQ(FromDialogPath(dialog.directory().absolutePath()) + "/", folder.Path());
        dialog.findChild<QLineEdit*>()->setText(QStringLiteral("old list.lst"));
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    EXPECT_EQ(messages.AskForFile(asked), folder / "old list.lst");

    asked.save = true;
    WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(QStringLiteral("new"));
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
    });
    EXPECT_EQ(messages.AskForFile(asked), folder / "new.lst");
    WhenOpen<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(messages.AskForFile(asked), std::nullopt);

    WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("lblPrompt"))->text(),
                  QStringLiteral("Select the left folder."));
        dialog.findChild<QLineEdit*>()->setText(QStringLiteral("sub"));
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    EXPECT_EQ(messages.PickDirectory("Select Folder", "Select the left folder.", folder.Path()),
              folder / "sub");
    // Nothing named: the folder that the dialog stands in.
    WhenOpen<QFileDialog>([&](QFileDialog& dialog) {
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
    EXPECT_EQ(messages.PickDirectory("Select Folder", "", folder / "sub"), folder / "sub");
}

TEST(NameFilters, TurnsPairsOfDescriptionAndPatternsIntoQtsForm) {
    EXPECT_EQ(NameFilters("Pictures|*.png;*.jpg|All Files (*.*)|*.*"),
              QStringList({QStringLiteral("Pictures (*.png *.jpg)"), QStringLiteral("All Files (*)")}));
    EXPECT_EQ(NameFilters(""), QStringList());
}

TEST(QtEventLoop, LetsEventsThroughAtItsPaceAndAlsoFromInsideAHandler) {
    QtEventLoop loop;
    int turns = 0;
    int inner = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        ++turns;
        loop.YieldNow();
    });
    QObject::connect(&timer, &QTimer::timeout, [&] { ++inner; });
    timer.start(0);
    QElapsedTimer elapsed;
    elapsed.start();
    long calls = 0;
    for (; inner < 4 && elapsed.elapsed() < 10'000; ++calls) loop.Yield();
    // A coarse clock moves in steps of up to 10 milliseconds; hence 5 for 15.
    EXPECT_LE(turns, 2 * (elapsed.elapsed() / 5 + 2));
    EXPECT_GE(inner, 4);
    EXPECT_GT(calls, 1'000);
}

TEST(QtEventLoop, KeepsTheWishToCancelUntilItIsReset) {
    QtEventLoop loop;
    EXPECT_FALSE(loop.CancelRequested());
    loop.RequestCancel();
    loop.Yield();
    EXPECT_TRUE(loop.CancelRequested());
    loop.ResetCancel();
    EXPECT_FALSE(loop.CancelRequested());
}

}  // namespace
}  // namespace vantrel
