// A tree as a person knows it: a folder that holds a client, a Mac volume for instance. What it is called
// wherever one must be told from another, and why a folder is none.
#pragma once

#include <QString>
#include <string>

namespace corvane::qt {

/// The folder's own name.
[[nodiscard]] QString treeName(const QString& folder);
/// The folder's own name and its whole path: "Macintosh HD — /media/clerk/Macintosh HD". Empty for an empty
/// prefix: the running system needs no name.
[[nodiscard]] QString treeTitle(const std::string& rootPrefix);
/// What a sheet or panel says of the tree that it is about; empty for an empty prefix.
[[nodiscard]] QString treeNote(const std::string& rootPrefix);

/// Whether a client lies below the folder. Looks at two folders and reads nothing.
[[nodiscard]] bool holdsClient(const std::string& folder);
/// Why the folder can't be opened as a tree, in a sentence; empty when a client lies below it.
[[nodiscard]] QString objectionTo(const QString& folder);
/// The root prefix for a folder: its path without links; empty for "/".
[[nodiscard]] std::string rootPrefixOf(const QString& folder);

}  // namespace corvane::qt
