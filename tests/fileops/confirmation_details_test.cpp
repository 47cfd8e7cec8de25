#include "fileops/confirmation_details.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(ConfirmationDetails, HasALineForEachName) {
    Confirmation confirmation{"", "", "Copy", {"/a/x.txt", "/a/Sub/"}, "/a", "/b"};
    EXPECT_EQ("COPY x.txt FROM /a TO /b\r\nCOPY Sub FROM /a TO /b\r\n", ConfirmationDetails(confirmation));
    EXPECT_EQ("COPY x.txt FROM /a TO /b\r\n... and 1 more", ConfirmationDetails(confirmation, 1));
    confirmation.operation = "Delete";
    confirmation.names = {"/a/x.txt"};
    EXPECT_EQ("DELETE x.txt FROM /a\r\n", ConfirmationDetails(confirmation));
}

}  // namespace
}  // namespace vantrel
