// What the syntax checker of a Mac does when the lock opens, with the product's own reader. The pane's
// process does it with the user's rights: files that anybody may have written are not for root to take apart.
#pragma once

#include <string>

namespace corvane {

/// Reads every file of the housekeeping list below the root prefix, once the modes are reset. Answers one
/// line about those that hold no property list; empty when there are none. What can't be read is passed over.
[[nodiscard]] std::string checkSyntax(const std::string& root);

}  // namespace corvane
