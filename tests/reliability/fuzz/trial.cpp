#include "trial.h"

#include <optional>
#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>

#include "lostparts.h"
#include "system/settingsfile.h"

using namespace Qt::StringLiterals;

namespace settingsfile = platform::settingsfile;

namespace {

const QStringList &keys() {
    static const QStringList keys{u"quiz1"_s,        u"quiz2"_s,       u"quiz3"_s,
                                  u"quiz4"_s,        u"quiz5"_s,       u"quiz6"_s,
                                  u"quiz7"_s,        u"currentTest"_s, u"currentStatus"_s,
                                  u"timedQuizzes"_s, u"firstRun"_s};
    return keys;
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void create(const QString &path, const QByteArray &content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) ||
        file.write(content) != content.size()) {
        throw std::runtime_error("no file can be created in " + path.toStdString());
    }
}

/// What QSettings makes of a file.
struct Reading {
    QVariantMap values;
    bool isParsable = true;

    std::optional<QString> text(const QString &key) const {
        const auto found = values.constFind(key);
        return found == values.constEnd() ? std::nullopt : std::optional(found->toString());
    }
};

Reading read(const QByteArray &content) {
    // In a folder of its own: QSettings tells versions of a file apart by size and time, but here
    // files change more often than the time does.
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"read.conf"_s);
    create(path, content);
    Reading reading;
    const QSettings settings(path, QSettings::IniFormat);
    for (const QString &key : settings.allKeys()) {
        // QSettings leaves out such slashes if it is asked for a key.
        if (!QString(u'/' + key + u'/').contains(u"//"_s)) {
            reading.values.insert(key, settings.value(key));
        }
    }
    reading.isParsable = settings.status() == QSettings::NoError;
    return reading;
}

/// What to do with which file.
struct Task {
    QByteArray content;
    QVariantMap values;
};

Task taskOf(const QByteArray &input) {
    const QByteArray line = input.split('\n').constFirst();
    Task task{input.mid(line.size() + 1), {}};

    const QByteArray choice = line.split('=').constFirst();
    QMap<qsizetype, qsizetype> named;
    qsizetype last = 0;
    for (const char byte : choice) {
        // The character 1 gives zero.
        last = (static_cast<unsigned char>(byte) + 6) % keys().size();
        ++named[last];
    }
    if (named.isEmpty() || named.size() == keys().size()) {
        named = {{last, 1}};
    }
    for (auto times = named.begin(); times != named.end(); ++times) {
        task.values.insert(keys().at(times.key()), QString::number(*times));
    }
    if (choice != line) {
        const QString text = QString::fromUtf8(line.sliced(choice.size() + 1)).replace(u'|', u'\n');
        const QString &key = keys().at(last);
        task.values.insert(
            key, text.isEmpty() ? read(task.content).text(key).value_or(QString()) : text);
    }
    return task;
}

/// Whether QSettings sees the same lines and keys in the file as an editor does. Of bytes beyond
/// ASCII it may see nothing, such as a mark of the byte order before a key.
bool isSimple(const QByteArray &content) {
    static const QRegularExpression odd(uR"([\x80-\xff"\\%@]|\r(?!\n))"_s);
    return !QString::fromLatin1(content).contains(odd);
}

/// A file in a folder of its own. What is wrong is thrown.
class Trial final {
 public:
    explicit Trial(Task task) : task_(std::move(task)), before_(read(task_.content)) {
        create(path_, task_.content);
    }

    void readsAsQSettingsDoes() const {
        wants(settingsfile::isParsable(path_) == before_.isParsable, "isParsable() is wrong");
        for (const QString &key : keys()) {
            wants(settingsfile::value(path_, key) == before_.text(key),
                  "value() is wrong for " + key.toUtf8());
        }
        wants(contentOf(path_) == task_.content, "reading has changed the file");
    }

    void losesNothing() {
        aside_ = settingsfile::write(path_, task_.values);
        const QByteArray content = contentOf(path_);
        QVariantMap expected = before_.values;
        expected.insert(task_.values);
        const Reading after = read(content);
        if (aside_) {
            wants(contentOf(*aside_) == task_.content, "the file kept aside is not the old one");
            wants(!before_.isParsable || !isSimple(task_.content), "a new file was not needed");
            wants(after.isParsable, "the new file is not parsable");
            static const QRegularExpression plain(uR"(^[A-Za-z0-9]+\z)"_s);
            expected.removeIf([](std::pair<const QString &, QVariant &> entry) {
                return !entry.first.contains(plain) || entry.second.typeId() != QMetaType::QString;
            });
        } else {
            const QByteArray what = lost(task_.content, content, task_.values.keys());
            wants(what.isEmpty(), "the edit has lost " + what);
        }
        wants(after.values == expected, "QSettings reads other values");
        const QString &key = task_.values.firstKey();
        wants(settingsfile::value(path_, key) == task_.values.first().toString(),
              "value() does not see the new " + key.toUtf8());
        hasNoOtherFiles();
    }

    void changesNothingTheSecondTime() {
        const QByteArray content = contentOf(path_);
        wants(!settingsfile::write(path_, task_.values), "a second file was kept aside");
        wants(contentOf(path_) == content, "a second write has changed the file");
        hasNoOtherFiles();
    }

 private:
    void hasNoOtherFiles() const {
        const QStringList files = QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden);
        wants(files.size() == (aside_ ? 2 : 1), "the files are " + files.join(u' ').toUtf8());
    }

    void wants(bool holds, const QByteArray &otherwise) const {
        if (holds) {
            return;
        }
        QByteArray account = "Fault: " + otherwise + "\nwritten:\n";
        for (auto value = task_.values.begin(); value != task_.values.end(); ++value) {
            account += value.key().toUtf8() + '=' + value->toString().toUtf8() + '\n';
        }
        account += "before:\n" + task_.content + "\nnow:\n" + contentOf(path_) + '\n';
        throw std::runtime_error(account.toStdString());
    }

    const QTemporaryDir folder_;
    const QString path_ = folder_.filePath(u"edited.conf"_s);
    Task task_;
    Reading before_;
    std::optional<QString> aside_;
};

}  // namespace

QByteArray faultIn(const QByteArray &input) {
    try {
        Trial trial(taskOf(input));
        trial.readsAsQSettingsDoes();
        trial.losesNothing();
        trial.changesNothingTheSecondTime();
        return {};
    } catch (const std::exception &fault) {
        return fault.what();
    }
}
