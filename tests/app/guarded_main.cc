// The main() of the tests of the window program: its own application, on the offscreen platform.
#include <gmock/gmock.h>

#include "last_resort.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    vantrel::GuardedApplication application(argc, argv);
    vantrel::GuardedApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
