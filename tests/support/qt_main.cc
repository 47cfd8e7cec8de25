// The main() of form tests: one application on the offscreen platform for all tests of a program.
#include <gmock/gmock.h>

#include <QApplication>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
