// Edits settings files of every kind, and looks for what is lost.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <vector>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QSettings>
#include <QTemporaryDir>

#include "system/exception.h"
#include "system/settingsfile.h"

using namespace Qt::StringLiterals;

namespace settingsfile = platform::settingsfile;

namespace {

struct Key {
    QString name;
    /// What the program writes under it.
    QStringList texts;
};

const std::array<Key, 11> &keys() {
    static const QStringList counts{u"1"_s, u"2"_s, u"3"_s, u"0"_s};
    static const std::array<Key, 11> keys{{
        {u"quiz1"_s, counts},
        {u"quiz2"_s, counts},
        {u"quiz3"_s, counts},
        {u"quiz4"_s, counts},
        {u"quiz5"_s, counts},
        {u"quiz6"_s, counts},
        {u"quiz7"_s, counts},
        {u"currentTest"_s, {u"5"_s, u"0"_s}},
        {u"currentStatus"_s, {u"pass"_s, u"fail"_s, u"0"_s}},
        {u"timedQuizzes"_s, {u"yes"_s, u"no"_s}},
        {u"firstRun"_s, {u"false"_s}},
    }};
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
        qFatal("%s cannot be written", qUtf8Printable(path));
    }
}

/// A name that no file has had. QSettings tells versions of a file apart by size and time, but here
/// files change more often than the time does.
QString newName() {
    static qint64 number = 0;
    return QString::number(++number) + u".conf"_s;
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
    static const QTemporaryDir folder;
    const QString path = folder.filePath(newName());
    create(path, content);
    Reading reading;
    {
        const QSettings settings(path, QSettings::IniFormat);
        for (const QString &key : settings.allKeys()) {
            // QSettings leaves out such slashes if it is asked for a key.
            if (!QString(u'/' + key + u'/').contains(u"//"_s)) {
                reading.values.insert(key, settings.value(key));
            }
        }
        reading.isParsable = settings.status() == QSettings::NoError;
    }
    QFile::remove(path);
    return reading;
}

/// What to do with which file.
struct Task {
    QByteArray content;
    QVariantMap values;
};

/// The first line of the input tells the values, all else is the file.
///
/// Each byte names a key: 1 to 7 the quizzes, and 8 9 : ; the others. A key that is named again
/// gets its next text. What follows an equals sign is the text of the last key instead, where |
/// stands for a line break; if nothing follows, the program writes back what it has read.
Task taskOf(const QByteArray &input) {
    const qsizetype lineEnd = input.indexOf('\n');
    const QByteArray line = input.first(lineEnd < 0 ? input.size() : lineEnd);
    Task task{input.sliced(lineEnd < 0 ? input.size() : lineEnd + 1), {}};

    const qsizetype equals = line.indexOf('=');
    QMap<std::size_t, qsizetype> named;
    std::size_t last = 0;
    const QByteArray choice = line.first(equals < 0 ? line.size() : equals);
    for (const char byte : choice) {
        // The character 1 gives zero.
        last = (static_cast<unsigned char>(byte) + 6U) % keys().size();
        ++named[last];
    }
    if (named.isEmpty() || named.size() == static_cast<qsizetype>(keys().size())) {
        named = {{last, 1}};
    }
    for (auto times = named.begin(); times != named.end(); ++times) {
        const Key &key = keys().at(times.key());
        task.values.insert(key.name, key.texts.at((*times - 1) % key.texts.size()));
    }
    if (equals >= 0) {
        const QString name = keys().at(last).name;
        const QString text = QString::fromUtf8(line.sliced(equals + 1)).replace(u'|', u'\n');
        task.values.insert(
            name, text.isEmpty() ? read(task.content).text(name).value_or(QString()) : text);
    }
    return task;
}

constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");

bool endsLine(char byte) {
    return byte == '\n' || byte == '\r';
}

/// A comment, or what QSettings takes for one entry.
struct Part {
    QByteArray text;
    /// The line end after it; empty if another part of the same line follows, or nothing.
    QByteArray end;
    /// Whether it is a value to write.
    bool isOwn = false;

    bool isTitle() const { return text.startsWith('['); }
};

/// Where the part ends that begins there.
qsizetype endOfPart(const QByteArray &content, qsizetype start) {
    const bool isComment = content.at(start) == ';';
    bool isQuoted = false;
    qsizetype i = start;
    while (i < content.size()) {
        const char byte = content.at(i);
        if (!isQuoted && (endsLine(byte) || (byte == ';' && !isComment))) {
            break;
        }
        if (byte == '"' && !isComment) {
            isQuoted = !isQuoted;
        } else if (byte == '\\' && !isComment) {
            // It may be followed by a line end of two bytes.
            const QByteArray pair = content.mid(i + 1, 2);
            i += pair == "\r\n" || pair == "\n\r" ? 2 : 1;
        }
        ++i;
    }
    return std::min(i, content.size());
}

std::vector<Part> partsOf(const QByteArray &content, const QVariantMap &values) {
    std::vector<Part> parts;
    bool inGeneral = true;
    qsizetype i = content.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    while (i < content.size()) {
        if (endsLine(content.at(i)) || content.at(i) == ' ' || content.at(i) == '\t') {
            ++i;
            continue;
        }
        const qsizetype end = endOfPart(content, i);
        Part part{content.sliced(i, end - i), {}, false};
        i = end;
        part.end = content.mid(i, content.mid(i, 2) == "\r\n" ? 2 : 1);
        if (part.end.startsWith(';')) {
            part.end.clear();
        }
        const qsizetype equals = part.text.indexOf('=');
        if (part.isTitle()) {
            const qsizetype bracket = part.text.indexOf(']');
            inGeneral =
                part.text.mid(1, bracket < 0 ? -1 : bracket - 1).trimmed().toLower() == "general";
        } else if (inGeneral && equals > 0 && std::ranges::none_of(part.text, endsLine)) {
            part.isOwn = values.contains(QString::fromUtf8(part.text.first(equals).trimmed()));
        }
        parts.push_back(part);
    }
    return parts;
}

/// Whether lines end only in that way.
bool endsLinesLike(const QByteArray &content, const QByteArray &lineEnd) {
    return std::ranges::none_of(QByteArray(content).replace(lineEnd, ""), endsLine);
}

/// What an edit has lost of the file, or put into it besides the values. Empty if that is nothing.
QByteArray lost(const Task &task, const QByteArray &after) {
    if (task.content.startsWith(byteOrderMark) != after.startsWith(byteOrderMark)) {
        return "the byte order mark";
    }
    for (const char *lineEnd : {"\n", "\r\n"}) {
        if (task.content.contains(lineEnd) && endsLinesLike(task.content, lineEnd) &&
            !endsLinesLike(after, lineEnd)) {
            return "the kind of line ends";
        }
    }
    const auto othersIn = [&](const QByteArray &content) {
        std::vector<Part> others = partsOf(content, task.values);
        std::erase_if(others, [](const Part &part) { return part.isOwn; });
        return others;
    };
    const std::vector<Part> before = othersIn(task.content);
    const std::vector<Part> now = othersIn(after);
    auto next = now.begin();
    if (now.size() > before.size() && next->text == "[General]") {
        ++next;
    }
    for (const Part &part : before) {
        if (next == now.end() || next->text != part.text) {
            return "the part " + part.text;
        }
        // The last line may have no end, but gets one if another comes after it.
        if (!next->end.startsWith(part.end)) {
            return "the end of the line " + part.text;
        }
        ++next;
    }
    return next == now.end() ? QByteArray() : "nothing, but gained the part " + next->text;
}

bool isPlain(const QString &text) {
    return std::ranges::all_of(text, [](QChar character) {
        return character.unicode() < 0x80 && character.isLetterOrNumber();
    });
}

/// Whether QSettings sees the same lines and keys in the file as an editor does. Of bytes beyond
/// ASCII it may see nothing, such as a mark of the byte order before a key.
bool isSimple(const QByteArray &content) {
    return std::ranges::none_of(content,
                                [](char byte) {
                                    return (static_cast<unsigned char>(byte) & 0x80U) != 0 ||
                                           QByteArrayView("\"\\%@").contains(byte);
                                }) &&
           QByteArray(content).replace("\r\n", "").count('\r') == 0;
}

/// A file in a folder of its own.
class Trial final {
 public:
    explicit Trial(Task task) : task_(std::move(task)), before_(read(task_.content)) {
        create(path_, task_.content);
    }

    void readsAsQSettingsDoes() const {
        wants(settingsfile::isParsable(path_) == before_.isParsable, "isParsable() is wrong");
        for (const Key &key : keys()) {
            wants(settingsfile::value(path_, key.name) == before_.text(key.name),
                  "value() is wrong for " + key.name.toUtf8());
        }
        wants(contentOf(path_) == task_.content, "reading has changed the file");
    }

    void losesNothing() {
        write();
        const QByteArray content = contentOf(path_);
        QVariantMap expected = before_.values;
        expected.insert(task_.values);
        if (aside_) {
            wants(contentOf(*aside_) == task_.content, "the file kept aside is not the old one");
            wants(!before_.isParsable || !isSimple(task_.content), "a new file was not needed");
            expected.removeIf([](std::pair<const QString &, QVariant &> entry) {
                return !isPlain(entry.first) || entry.second.typeId() != QMetaType::QString;
            });
        } else {
            const QByteArray what = lost(task_, content);
            wants(what.isEmpty(), "the edit has lost " + what);
        }
        const Reading after = read(content);
        for (const QVariantMap &values : {expected, after.values}) {
            for (auto value = values.begin(); value != values.end(); ++value) {
                const QString &key = value.key();
                wants(after.values.value(key) == expected.value(key),
                      "QSettings reads another " + key.toUtf8());
            }
        }
        wants(after.isParsable || !aside_, "the new file is not parsable");
        const QString &key = task_.values.firstKey();
        wants(settingsfile::value(path_, key) == task_.values.first().toString(),
              "value() does not see the new " + key.toUtf8());
        hasNoOtherFiles();
    }

    void changesNothingTheSecondTime() {
        const QByteArray content = contentOf(path_);
        const std::optional<QString> aside = std::exchange(aside_, std::nullopt);
        write();
        wants(!aside_, "a second file was kept aside");
        wants(contentOf(path_) == content, "a second write has changed the file");
        aside_ = aside;
        hasNoOtherFiles();
    }

    ~Trial() {
        for (const QString &file : files()) {
            QFile::remove(folder().filePath(file));
        }
    }
    Trial(const Trial &) = delete;
    Trial &operator=(const Trial &) = delete;

 private:
    static const QTemporaryDir &folder() {
        static const QTemporaryDir folder;
        return folder;
    }

    static QStringList files() {
        return QDir(folder().path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDir::Name);
    }

    void write() {
        const QByteArray content = contentOf(path_);
        try {
            aside_ = settingsfile::write(path_, task_.values);
        } catch (const platform::Exception &exception) {
            wants(contentOf(path_) == content, "a write has failed and changed the file");
            wants(false, QByteArray("a write has failed: ") + exception.what());
        }
    }

    void hasNoOtherFiles() const {
        QStringList expected{path_};
        if (aside_) {
            expected << *aside_;
        }
        for (const QString &file : files()) {
            wants(expected.contains(folder().filePath(file)),
                  "there is another file: " + file.toUtf8());
        }
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
        std::fwrite(account.constData(), 1, static_cast<std::size_t>(account.size()), stderr);
        std::abort();
    }

    Task task_;
    Reading before_;
    QString path_ = folder().filePath(newName());
    std::optional<QString> aside_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    // Qt tells of every value that it cannot make anything of.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &message) {
        if (type == QtFatalMsg) {
            std::fprintf(stderr, "%s\n", qUtf8Printable(message));
        }
    });
    Trial trial(
        taskOf(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size))));
    trial.readsAsQSettingsDoes();
    trial.losesNothing();
    trial.changesNothingTheSecondTime();
    return 0;
}
