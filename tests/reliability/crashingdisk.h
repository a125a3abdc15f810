#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include <QByteArrayList>

#include "systemcalls.h"

/// The files and folders in a folder by their paths in it. A folder has no content; the one that
/// they all are in has an empty path.
using Tree = std::map<QByteArray, std::optional<QByteArray>>;

/// A disk that promises what POSIX promises. Until a file is synced, any part of what was written
/// may be missing after a crash. Until a folder is synced, each of its names may be what it has
/// been at any time since the last sync, whatever became of the others.
class CrashingDisk final {
 public:
    /// All of the tree survives a crash.
    explicit CrashingDisk(const Tree &tree) {
        add(true);
        // A folder comes before what is in it.
        for (const auto &[path, content] : tree) {
            if (!path.isEmpty()) {
                const std::size_t node = add(!content);
                nodes_.at(node).contents = {content.value_or(QByteArray())};
                folderOf(path).syncedNames[nameOf(path)] = node;
            }
        }
    }

    /// The call's paths are paths in the tree.
    void apply(const systemcalls::Call &call) {
        using systemcalls::Kind;
        const std::optional<std::size_t> node = find(call.path);
        switch (call.kind) {
            case Kind::Read:
                return;
            case Kind::MakeFolder:
                name(call.path, add(true));
                return;
            case Kind::Remove:
                name(call.path, std::nullopt);
                return;
            case Kind::Rename:
                name(call.path, find(call.oldPath));
                name(call.oldPath, std::nullopt);
                return;
            case Kind::Open:
                if (!node) {
                    name(call.path, add(false));
                } else if (call.empties) {
                    nodes_.at(*node).contents.append(QByteArray());
                }
                return;
            case Kind::Write:
                // A file that has no name any more is of no interest.
                if (node) {
                    QByteArrayList &contents = nodes_.at(*node).contents;
                    QByteArray content = contents.constLast();
                    content.resize(qMax(content.size(), qsizetype(call.offset)), '\0');
                    contents.append(content.replace(call.offset, call.bytes.size(), call.bytes));
                }
                return;
            case Kind::Sync:
                if (node) {
                    Node &synced = nodes_.at(*node);
                    synced.contents = {synced.contents.constLast()};
                    synced.syncedNames = namesNow(synced);
                    synced.changes.clear();
                }
                return;
        }
    }

    /// All that a crash may leave.
    std::set<Tree> afterCrash() const { return treesAfterCrash(0, {QByteArray()}); }

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

    static QByteArray nameOf(const QByteArray &path) {
        return path.sliced(path.lastIndexOf('/') + 1);
    }

    static void apply(const NameChange &change, Names &names) {
        if (change.node) {
            names[change.name] = *change.node;
        } else {
            names.erase(change.name);
        }
    }

    static Names namesNow(const Node &folder) {
        Names names = folder.syncedNames;
        for (const NameChange &change : folder.changes) {
            apply(change, names);
        }
        return names;
    }

    std::size_t add(bool isFolder) {
        nodes_.push_back({.isFolder = isFolder});
        return nodes_.size() - 1;
    }

    std::optional<std::size_t> find(const QByteArray &path) const {
        std::size_t node = 0;
        for (const QByteArray &name : path.isEmpty() ? QByteArrayList() : path.split('/')) {
            const Names names = namesNow(nodes_.at(node));
            const auto found = names.find(name);
            if (found == names.end()) {
                return std::nullopt;
            }
            node = found->second;
        }
        return node;
    }

    Node &folderOf(const QByteArray &path) {
        return nodes_.at(find(path.first(qMax(path.lastIndexOf('/'), 0))).value());
    }

    void name(const QByteArray &path, std::optional<std::size_t> node) {
        folderOf(path).changes.push_back({nameOf(path), node});
    }

    static std::set<Names> namesAfterCrash(const Node &folder) {
        std::set<Names> all{folder.syncedNames};
        for (const NameChange &change : folder.changes) {
            for (Names names : std::set<Names>(all)) {
                apply(change, names);
                all.insert(names);
            }
        }
        return all;
    }

    static std::set<QByteArray> contentsAfterCrash(const Node &file) {
        const QByteArray &synced = file.contents.constFirst();
        std::set<QByteArray> all{synced};
        for (const QByteArray &written : file.contents.sliced(1)) {
            all.insert(written);
            const qsizetype size = written.size();
            for (const qsizetype cut : {qsizetype(0), qMin<qsizetype>(1, size), size / 4, size / 2,
                                        size * 3 / 4, qMax<qsizetype>(size - 1, 0)}) {
                const QByteArray beginning = written.first(cut);
                const QByteArray end = written.sliced(cut);
                all.insert(beginning);
                all.insert(beginning + QByteArray(end.size(), '\0'));
                all.insert(QByteArray(cut, '\0') + end);
                all.insert(beginning + synced.sliced(qMin(cut, synced.size())));
            }
        }
        return all;
    }

    /// What may be left of the node, which has these paths.
    std::set<Tree> treesAfterCrash(std::size_t node, const QByteArrayList &paths) const {
        std::set<Tree> all;
        const Node &top = nodes_.at(node);
        if (!top.isFolder) {
            for (const QByteArray &content : contentsAfterCrash(top)) {
                Tree tree;
                for (const QByteArray &path : paths) {
                    tree[path] = content;
                }
                all.insert(tree);
            }
            return all;
        }
        const QByteArray &folder = paths.constFirst();
        for (const Names &names : namesAfterCrash(top)) {
            // A file with two names has the same content under both.
            std::map<std::size_t, QByteArrayList> pathsOfNode;
            for (const auto &[name, named] : names) {
                pathsOfNode[named] << (folder.isEmpty() ? name : folder + '/' + name);
            }
            std::set<Tree> trees{Tree{{folder, std::nullopt}}};
            for (const auto &[named, itsPaths] : pathsOfNode) {
                std::set<Tree> grown;
                for (const Tree &branch : treesAfterCrash(named, itsPaths)) {
                    for (Tree tree : trees) {
                        tree.insert(branch.begin(), branch.end());
                        grown.insert(tree);
                    }
                }
                trees = grown;
            }
            all.merge(trees);
        }
        return all;
    }

    /// The first is the folder that everything is in. Nodes without a name stay: a crash may give
    /// them back.
    std::vector<Node> nodes_;
};
