#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include <QByteArrayList>

#include "systemcalls.h"

/// The files and folders in a folder by their paths in it. A folder has no content; the one that
/// they all are in has an empty path.
using Tree = std::map<QByteArray, std::optional<QByteArray>>;

QByteArray asText(const Tree &tree);

/// A disk that promises what POSIX promises. Until a file is synced, any part of what was written
/// may be missing after a crash. Until a folder is synced, each of its names may be what it has
/// been at any time since the last sync, whatever became of the others.
class CrashingDisk final {
 public:
    /// All of the tree survives a crash.
    explicit CrashingDisk(const Tree &tree);

    /// The call's paths are paths in the tree.
    void apply(const systemcalls::Call &call);

    /// What processes see.
    Tree now() const;
    /// All that a crash may leave.
    std::set<Tree> afterCrash() const;

 private:
    using Names = std::map<QByteArray, std::size_t>;
    struct NameChange {
        QByteArray name = {};
        /// Nothing if the name is removed.
        std::optional<std::size_t> node = {};
    };
    /// A file or a folder.
    struct Node {
        bool isFolder = false;
        /// A file's content: as it was synced, and after each operation since then.
        QByteArrayList contents = {QByteArray()};
        /// A folder's names as they were synced, and what has been done to them since then.
        Names syncedNames = {};
        std::vector<NameChange> changes = {};
    };

    std::size_t add(bool isFolder);
    std::optional<std::size_t> find(const QByteArray &path) const;
    Node &folderOf(const QByteArray &path);
    void name(const QByteArray &path, std::optional<std::size_t> node);
    static void apply(const NameChange &change, Names &names);
    static Names namesNow(const Node &folder);
    static void sync(Node &node);
    static std::set<Names> namesAfterCrash(const Node &folder);
    static std::set<QByteArray> contentsAfterCrash(const Node &file);
    /// What may be left of the node, which has these paths.
    std::set<Tree> treesAfterCrash(std::size_t node, const QByteArrayList &paths) const;

    /// The first is the folder that everything is in. Nodes without a name stay: a crash may give
    /// them back.
    std::vector<Node> nodes_;
};
