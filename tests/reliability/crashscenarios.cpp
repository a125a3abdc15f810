#include "reliability/crashscenarios.h"

#include <algorithm>
#include <cerrno>

#include "system/preferences.h"

using namespace Qt::StringLiterals;

using platform::Preferences;
using systemcalls::Call;
using systemcalls::Kind;

namespace {

/// Keeps the calls that change something in a folder, with their paths in it. After a given number
/// of them all fail, as if the process had been killed.
class Recorder final : public systemcalls::Watcher {
 public:
    explicit Recorder(QByteArray folder, qsizetype mostCalls = 1000)
        : folder_(std::move(folder)), mostCalls_(mostCalls) {}

    int errorOf(const Call &call) override {
        const bool isDead = concerns(call) && calls_.size() == mostCalls_;
        wasKilled_ = wasKilled_ || isDead;
        return isDead ? EIO : 0;
    }
    void succeeded(const Call &call) override {
        if (concerns(call)) {
            calls_ << call;
            calls_.last().path = call.path.sliced(qMin(folder_.size() + 1, call.path.size()));
            calls_.last().oldPath =
                call.oldPath.sliced(qMin(folder_.size() + 1, call.oldPath.size()));
        }
    }

    const QList<Call> &calls() const { return calls_; }
    bool wasKilled() const { return wasKilled_; }

 private:
    bool concerns(const Call &call) const {
        return call.kind != Kind::Read && systemcalls::isIn(folder_, call.path);
    }

    QByteArray folder_;
    qsizetype mostCalls_;
    QList<Call> calls_;
    bool wasKilled_ = false;
};

QString around(const Configuration &configuration) {
    return QFileInfo(configuration.home()).path();
}

Tree treeIn(const QString &folder) {
    Tree tree{{QByteArray(), std::nullopt}};
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext()) {
        QFile file(all.next());
        const bool isRead = file.open(QIODevice::ReadOnly);
        tree[QDir(folder).relativeFilePath(file.fileName()).toUtf8()] =
            isRead ? std::optional(file.readAll()) : std::nullopt;
    }
    return tree;
}

void perform(Preferences &preferences, const Values &values) {
    std::optional<Preferences::Batch> batch;
    if (values.size() > 1) {
        batch.emplace(preferences);
    }
    for (auto value = values.begin(); value != values.end(); ++value) {
        preferences.setValueForKey(*value, value.key());
    }
}

void apply(CrashingDisk &disk, const QList<Call> &calls) {
    for (const Call &call : calls) {
        disk.apply(call);
    }
}

/// A configuration home with these files in the program's folder.
Tree home(const QMap<QByteArray, QByteArray> &files) {
    Tree tree{{"", std::nullopt}, {"home", std::nullopt}, {"home/Zorvan", std::nullopt}};
    for (auto file = files.begin(); file != files.end(); ++file) {
        tree["home/Zorvan/" + file.key()] = *file;
    }
    return tree;
}

Values seeding() {
    Values values{
        {u"currentTest"_s, u"0"_s}, {u"currentStatus"_s, u"0"_s}, {u"firstRun"_s, u"false"_s}};
    for (int quiz = 1; quiz <= 7; ++quiz) {
        values.insert(u"quiz%1"_s.arg(quiz), u"0"_s);
    }
    return values;
}

}  // namespace

QList<Scenario> crashScenarios() {
    const Values pass{{u"quiz1"_s, u"1"_s}};
    const Values endOfQuiz{
        {u"currentStatus"_s, u"pass"_s}, {u"quiz3"_s, u"2"_s}, {u"currentTest"_s, u"3"_s}};
    const QByteArray seed(seeded);
    const QByteArray others =
        "; of the learner\r\n[General]\r\ncolour=blue\r\nquiz1=0;first\r\n[Window]\r\nsize=3\r\n";
    // More than a page of memory or a block of a disk.
    const QByteArray large = seed + "notes=" + QByteArray(9000, 'n') + '\n';
    // QSettings finds the last of several entries for a key.
    const QByteArray alias = seed + "quiz%31=2\n";

    QList<Scenario> scenarios{
        {.name = "first write, configuration home missing",
         .before = {{"", std::nullopt}},
         .writes = {pass}},
        {.name = "first write, folder missing",
         .before = {{"", std::nullopt}, {"home", std::nullopt}},
         .writes = {pass}},
        {.name = "first write, folder there", .before = home({}), .writes = {pass}},
        {.name = "later write", .before = home({{"Zorvan.conf", seed}}), .writes = {pass}},
        {.name = "seeding, folder missing",
         .before = {{"", std::nullopt}, {"home", std::nullopt}},
         .writes = {seeding()}},
        {.name = "end of a quiz", .before = home({{"Zorvan.conf", seed}}), .writes = {endOfQuiz}},
        {.name = "clearing",
         .before = home({{"Zorvan.conf",
                          "[General]\ncurrentStatus=pass\ncurrentTest=3\n"
                          "firstRun=false\nquiz1=3\nquiz3=2\ntimedQuizzes=yes\n"}}),
         .writes = {seeding()}},
        {.name = "leftovers of a kill",
         .before = home({{"Zorvan.conf", seed}, {".Zorvan.conf.writing", "[General]\nquiz1=3\n"}}),
         .writes = {pass, endOfQuiz}},
        {.name = "leftovers of a kill, no file yet",
         .before = home({{".Zorvan.conf.writing", "[Gene"}}),
         .writes = {pass, endOfQuiz}},
        {.name = "keys and comments of others",
         .before = home({{"Zorvan.conf", others}}),
         .writes = {pass, endOfQuiz}},
        {.name = "large file", .before = home({{"Zorvan.conf", large}}), .writes = {endOfQuiz}},
        {.name = "kept aside",
         .before = home({{"Zorvan.conf", alias}}),
         .writes = {pass},
         .kept = "home/Zorvan/Zorvan.conf.kept-1"},
        {.name = "kept aside before, with another content",
         .before = home({{"Zorvan.conf", alias}, {"Zorvan.conf.kept-1", seed}}),
         .writes = {pass},
         .kept = "home/Zorvan/Zorvan.conf.kept-2"},
        {.name = "kept aside before, with the same content",
         .before = home({{"Zorvan.conf", alias}, {"Zorvan.conf.kept-1", alias}}),
         .writes = {pass},
         .kept = "home/Zorvan/Zorvan.conf.kept-1"},
    };
    Scenario row{.name = "writes in a row", .before = home({}), .writes = {seeding()}};
    for (int quiz = 1; quiz <= 7; ++quiz) {
        const QString id = QString::number(quiz);
        row.writes << Values{{u"currentTest"_s, id}}
                   << Values{{u"currentStatus"_s, u"pass"_s}, {u"quiz"_s + id, u"1"_s}};
    }
    scenarios << row;
    return scenarios;
}

void settle(const Configuration &configuration, const Tree &tree) {
    const QDir folder(around(configuration));
    folder.rmdir(configuration.home());
    for (const auto &[path, content] : tree) {
        const QString target = folder.filePath(QString::fromUtf8(path));
        QFile file(target);
        if (path.isEmpty()) {
            continue;
        }
        if (content ? !file.open(QIODevice::WriteOnly) || file.write(*content) != content->size()
                    : !folder.mkdir(target)) {
            qFatal("%s cannot be made", path.constData());
        }
    }
    qputenv("XDG_CONFIG_HOME", configuration.home().toUtf8());
}

Values readPreferences() {
    Preferences preferences;
    Values values;
    QStringList keys = seeding().keys();
    for (const QString &key : keys << u"timedQuizzes"_s << u"colour"_s << u"notes"_s) {
        if (const auto value = preferences.valueForKey(key)) {
            values.insert(key, *value);
        }
    }
    return values;
}

void eachCrash(const Scenario &scenario, const std::function<bool(const Crash &)> &look) {
    const Configuration configuration;
    settle(configuration, scenario.before);
    Preferences preferences;
    CrashingDisk disk(scenario.before);
    Moment last{scenario.before, readPreferences()};
    for (const Values &write : scenario.writes) {
        QList<Call> calls;
        {
            Recorder recorder(around(configuration).toUtf8());
            perform(preferences, write);
            calls = recorder.calls();
        }
        const Tree tree = treeIn(around(configuration));
        Moment next{tree, last.values};
        next.values.insert(write);
        if (!scenario.kept.isEmpty()) {
            next.tree[scenario.kept] = scenario.before.at(storeInTree);
        }
        std::set<Tree> seen;
        for (const Call &call : calls) {
            disk.apply(call);
            std::set<Tree> states = disk.afterCrash();
            std::erase_if(states, [&](const Tree &state) { return seen.contains(state); });
            seen.insert(states.begin(), states.end());
            if (!look({call.name, states, {last, next}})) {
                return;
            }
        }
        if (disk.now() != tree) {
            qFatal("Calls that are not watched have changed files. Wanted\n%sfound\n%s",
                   qUtf8Printable(asText(disk.now())), qUtf8Printable(asText(tree)));
        }
        if (!look({"the write's end", disk.afterCrash(), {next}})) {
            return;
        }
        last = next;
    }
}

std::optional<Crash> crashAfterKill(const Scenario &scenario, qsizetype calls, const Values &more) {
    const Configuration configuration;
    settle(configuration, scenario.before);
    CrashingDisk disk(scenario.before);
    Values values = scenario.writes.constFirst();
    Moment end{{}, readPreferences()};
    {
        Recorder recorder(around(configuration).toUtf8(), calls);
        Preferences preferences;
        perform(preferences, values);
        if (!recorder.wasKilled()) {
            return std::nullopt;
        }
        apply(disk, recorder.calls());
    }
    values.insert(more);
    {
        Recorder recorder(around(configuration).toUtf8());
        Preferences preferences;
        perform(preferences, values);
        apply(disk, recorder.calls());
    }
    end.values.insert(values);
    end.tree = disk.now();
    // An unfinished file may have taken the name.
    if (!scenario.kept.isEmpty() && std::ranges::none_of(end.tree, [&](const auto &file) {
            return file.second == scenario.before.at(storeInTree);
        })) {
        end.tree[scenario.kept] = scenario.before.at(storeInTree);
    }
    return Crash{"the write after the kill", disk.afterCrash(), {end}};
}
