#include "single_instance.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QSignalSpy>
#include <QThread>
#include <memory>

#include "support/temp_folder.h"

namespace vantrel {
namespace {

class Instances : public ::testing::Test {
  protected:
    QString Folder() const { return QString::fromStdString(folder.Path()).chopped(1); }
    // Claims in another thread, as another process would, while this one's events pass.
    SingleInstance::Start ClaimAgain(const QString& version, const QString& session = {}) {
        auto start = SingleInstance::Start::First;
        const std::unique_ptr<QThread> second(
            QThread::create([&] { start = SingleInstance(Folder(), version).Claim(session); }));
        second->start();
        while (!second->isFinished()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        return start;
    }
    testing::TempFolder folder;
};

TEST_F(Instances, ASecondStartOfTheSameVersionRaisesTheFirst) {
    SingleInstance first(Folder(), QStringLiteral("1.0.0"));
    QSignalSpy raised(&first, &SingleInstance::RaiseRequested);
    EXPECT_EQ(first.Claim(), SingleInstance::Start::First);
    EXPECT_EQ(ClaimAgain(QStringLiteral("1.0.0")), SingleInstance::Start::OtherRaised);
    EXPECT_EQ(raised.count(), 1);
    EXPECT_EQ(ClaimAgain(QStringLiteral("1.0.0")), SingleInstance::Start::OtherRaised);
    EXPECT_EQ(raised.count(), 2);
    EXPECT_EQ(ClaimAgain(QStringLiteral("1.0.1")), SingleInstance::Start::First);
    EXPECT_EQ(raised.count(), 2);
}

TEST_F(Instances, ASecondStartHandsItsSessionOver) {
    SingleInstance first(Folder(), QStringLiteral("1.0.0"));
    QSignalSpy raised(&first, &SingleInstance::RaiseRequested);
    QSignalSpy session(&first, &SingleInstance::SessionRequested);
    EXPECT_EQ(first.Claim(), SingleInstance::Start::First);
    const QString path = QString::fromUtf8("/a b/\xC3\xA9 raise.vts") + QString(5000, QLatin1Char('x'));
    EXPECT_EQ(ClaimAgain(QStringLiteral("1.0.0"), path), SingleInstance::Start::OtherRaised);
    EXPECT_EQ(raised.count(), 1);
    ASSERT_EQ(session.count(), 1);
    EXPECT_EQ(session[0][0].toString(), path);
    EXPECT_EQ(ClaimAgain(QStringLiteral("1.0.0")), SingleInstance::Start::OtherRaised);
    EXPECT_EQ(session.count(), 1);
}

TEST_F(Instances, WhatAKilledOneLeftBehindIsTakenOver) {
    // A lock of a process that is gone, and the socket that nobody listens at.
    folder.Write("vantrel-1.0.0.lock", "2147483646\nvantrel\n" + std::string("nowhere\n"));
    folder.Write("vantrel-1.0.0.socket", "");
    {
        SingleInstance instance(Folder(), QStringLiteral("1.0.0"));
        const auto start = instance.Claim();
        EXPECT_TRUE(start == SingleInstance::Start::First || start == SingleInstance::Start::Alone);
    }
    std::string host(256, '\0');
    gethostname(host.data(), host.size());
    folder.Write("vantrel-1.0.0.lock", "2147483646\nvantrel\n" + std::string(host.c_str()) + "\n");
    SingleInstance instance(Folder(), QStringLiteral("1.0.0"));
    EXPECT_EQ(instance.Claim(), SingleInstance::Start::First);
    EXPECT_EQ(ClaimAgain(QStringLiteral("1.0.0")), SingleInstance::Start::OtherRaised);
}

TEST_F(Instances, WithoutAPlaceForTheLockTheProgramStarts) {
    SingleInstance instance(Folder() + QStringLiteral("/missing"), QStringLiteral("1.0.0"));
    EXPECT_EQ(instance.Claim(), SingleInstance::Start::Alone);
}

}  // namespace
}  // namespace vantrel
