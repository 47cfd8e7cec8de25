#include "last_resort.h"

#include <gmock/gmock.h>

#include <QMessageBox>
#include <QTimer>
#include <cstdlib>
#include <new>

#include "platform/error.h"

namespace vantrel {
namespace {

// Runs `program` and closes the message box that comes up; its caption and text go to `told`.
int RunAndClose(const std::function<int()>& program, std::string& told) {
    told.clear();
    QTimer closing;
    QObject::connect(&closing, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        told = box->windowTitle().toStdString() + ": " + box->text().toStdString();
        box->reject();
    });
    closing.start(10);
    return RunGuarded(program);
}

TEST(LastResort, WhatFailsAtTheStartIsToldTwiceAndEndsWithAStatus) {
    std::string told;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(
        EXIT_FAILURE,
        RunAndClose([]() -> int { throw ErrorException(Error(ErrorNumber::DiskFull, "Disk full")); }, told));
    // The window system may add words of its own.
    EXPECT_THAT(::testing::internal::GetCapturedStderr(),
                ::testing::StartsWith("vantrel: unexpected error in modVantrel.Main: Disk full\n"));
    EXPECT_EQ("Unexpected Error in modVantrel.Main: Disk full", told);

    for (void (*raise)() : {+[] { throw std::bad_alloc(); }, +[] { throw 1; }}) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(EXIT_FAILURE, RunAndClose(
                                    [&] {
                                        raise();
                                        return 0;
                                    },
                                    told));
        EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::StartsWith("vantrel: unexpected"));
        EXPECT_NE("", told);
    }
    EXPECT_EQ(3, RunAndClose([] { return 3; }, told));
    EXPECT_EQ(EXIT_FAILURE, RunAndClose([]() -> int { throw Cancelled(); }, told));
    EXPECT_EQ("", told);
}

// Its handler of events throws what it was told to.
class Thrower : public QObject {
  public:
    explicit Thrower(void (*raise)()) : raise_(raise) {}
    bool event(QEvent*) override {
        raise_();
        return true;
    }

  private:
    void (*raise_)();
};

TEST(LastResort, WhatComesOutOfAnEventIsToldAndTheProgramGoesOn) {
    struct Case {
        void (*raise)();
        const char* told;
    };
    for (const Case& each :
         {Case{[] { throw ErrorException(Error(ErrorNumber::DiskFull, "Disk full")); }, ": Disk full"},
          Case{[] { throw std::bad_alloc(); }, ": std::bad_alloc"}, Case{[] { throw 1; }, ": unknown"},
          Case{[] { throw Cancelled(); }, ""}, Case{[] {}, ""}}) {
        const std::string title = "Unexpected Error in modVantrel.Main";
        Thrower thrower(each.raise);
        bool wentOn = false;
        std::string told;
        ::testing::internal::CaptureStderr();
        const int status = RunAndClose(
            [&] {
                QCoreApplication::postEvent(&thrower, new QEvent(QEvent::User));
                // Once the event is behind it, and the box that it may have opened.
                QTimer later;
                QObject::connect(&later, &QTimer::timeout, [&] {
                    if (QApplication::activeModalWidget()) return;
                    wentOn = true;
                    QCoreApplication::exit(7);
                });
                later.start(30);
                return QCoreApplication::exec();
            },
            told);
        const std::string line = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(7, status);
        EXPECT_TRUE(wentOn);
        EXPECT_EQ(*each.told == '\0' ? "" : title + each.told, told);
        EXPECT_EQ(*each.told != '\0', line.find(each.told) != std::string::npos && !line.empty());
    }
}

}  // namespace
}  // namespace vantrel
