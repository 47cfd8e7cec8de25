#pragma once

#include <functional>

#include "support/temp_folder.h"

namespace vantrel::testing {

// Runs `body` as a user whom the system may refuse something. Where root runs the tests this is a child
// process that has dropped its rights, and `folder` with all it holds belongs to that user from then on; else
// it is this process. What fails in `body` fails the test that calls this; what `body` changes in memory is
// lost.
void AsPlainUser(const TempFolder& folder, const std::function<void()>& body);

}  // namespace vantrel::testing
