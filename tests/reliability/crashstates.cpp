#include "crashstates.h"

#include <algorithm>

#include <QDebug>

using systemcalls::Call;
using systemcalls::Kind;

namespace {

QByteArray parentOf(const QByteArray &path) {
    return path.first(qMax(path.lastIndexOf('/'), 0));
}

QByteArray nameOf(const QByteArray &path) {
    return path.sliced(path.lastIndexOf('/') + 1);
}

/// The places at which the test cuts a content in two.
std::set<qsizetype> cutsOf(const QByteArray &content) {
    const qsizetype size = content.size();
    return {0, qMin<qsizetype>(1, size), size / 4, size / 2, size * 3 / 4, qMax(size - 1, 0)};
}

}  // namespace

QByteArray asText(const Tree &tree) {
    QString text;
    for (const auto &[path, content] : tree) {
        QDebug(&text).nospace() << "  " << path << ": " << content.value_or("(folder)").left(300)
                                << '\n';
    }
    return text.toUtf8();
}

CrashingDisk::CrashingDisk(const Tree &tree) {
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

std::size_t CrashingDisk::add(bool isFolder) {
    nodes_.push_back({.isFolder = isFolder});
    return nodes_.size() - 1;
}

void CrashingDisk::apply(const NameChange &change, Names &names) {
    if (change.node) {
        names[change.name] = *change.node;
    } else {
        names.erase(change.name);
    }
}

CrashingDisk::Names CrashingDisk::namesNow(const Node &folder) {
    Names names = folder.syncedNames;
    for (const NameChange &change : folder.changes) {
        apply(change, names);
    }
    return names;
}

std::optional<std::size_t> CrashingDisk::find(const QByteArray &path) const {
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

CrashingDisk::Node &CrashingDisk::folderOf(const QByteArray &path) {
    return nodes_.at(find(parentOf(path)).value());
}

void CrashingDisk::name(const QByteArray &path, std::optional<std::size_t> node) {
    folderOf(path).changes.push_back({nameOf(path), node});
}

void CrashingDisk::sync(Node &node) {
    node.contents = {node.contents.constLast()};
    node.syncedNames = namesNow(node);
    node.changes.clear();
}

void CrashingDisk::apply(const Call &call) {
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
                sync(nodes_.at(*node));
            }
            return;
    }
}

std::set<CrashingDisk::Names> CrashingDisk::namesAfterCrash(const Node &folder) {
    std::set<Names> all{folder.syncedNames};
    for (const NameChange &change : folder.changes) {
        for (Names names : std::set<Names>(all)) {
            apply(change, names);
            all.insert(names);
        }
    }
    return all;
}

std::set<QByteArray> CrashingDisk::contentsAfterCrash(const Node &file) {
    const QByteArray &synced = file.contents.constFirst();
    std::set<QByteArray> all{synced};
    for (const QByteArray &written : file.contents.sliced(1)) {
        all.insert(written);
        for (const qsizetype cut : cutsOf(written)) {
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

std::set<Tree> CrashingDisk::treesAfterCrash(std::size_t node, const QByteArrayList &paths) const {
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

std::set<Tree> CrashingDisk::afterCrash() const {
    return treesAfterCrash(0, {QByteArray()});
}

Tree CrashingDisk::now() const {
    CrashingDisk synced(*this);
    std::ranges::for_each(synced.nodes_, sync);
    return *synced.afterCrash().begin();
}
