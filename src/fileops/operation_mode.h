#pragma once

namespace vantrel {

// Whether the user is asked before an operation begins, and told when it was done.
enum class Confirm : bool { No, Yes };

// What an operation is a part of. Within a synchronisation nothing selected is no message, the space is not
// checked, and showing the outcome is left to the caller.
enum class PartOf : bool { Command, Synchronization };

// Whether a permanent delete says that nothing is selected, and asks: not where the user was asked already.
enum class Prompts : bool { Shown, Quiet };

}  // namespace vantrel
