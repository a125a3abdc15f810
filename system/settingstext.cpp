#include "system/settingstext.h"

#include <algorithm>

#include <QStringList>

namespace platform::settingstext {

namespace {

QByteArray encoded(const QString &text) {
    if (isPlain(text)) {
        return text.toLatin1();
    }
    QByteArray escapes;
    // A single @ would begin the name of a type.
    for (const QChar character : text.startsWith(u'@') ? u'@' + text : text) {
        escapes += "\\x" + QByteArray::number(character.unicode(), 16);
    }
    return '"' + escapes + '"';
}

}  // namespace

bool isPlain(const QString &text) {
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar character) {
        return character.unicode() < 0x80 && character.isLetterOrNumber();
    });
}

QByteArray edited(const QByteArray &content, const QVariantMap &values) {
    const QByteArray lineEnd = content.contains("\r\n") ? "\r" : "";
    const auto lineOf = [&](const QString &key) {
        return key.toLatin1() + '=' + encoded(values.value(key).toString());
    };
    QByteArrayList lines = content.split('\n');
    QStringList missing = values.keys();
    qsizetype title = -1;
    bool inGeneral = true;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines.at(i).trimmed();
        if (line.startsWith('[')) {
            const QByteArray section = line.sliced(1).split(']').constFirst().trimmed();
            inGeneral = section.compare("general", Qt::CaseInsensitive) == 0;
            title = inGeneral && title < 0 ? i : title;
        }
        const QString key = QString::fromUtf8(line.first(qMax(line.indexOf('='), 0)).trimmed());
        if (inGeneral && values.contains(key)) {
            const qsizetype comment = line.contains('"') ? -1 : line.indexOf(';');
            lines[i] = lineOf(key) + (comment < 0 ? QByteArray() : line.sliced(comment)) +
                       (lines.at(i).endsWith('\r') ? "\r" : "");
            missing.removeOne(key);
        }
    }
    if (!missing.isEmpty() && title < 0) {
        lines.insert(++title, "[General]" + lineEnd);
    }
    // At the top, where no line before them can run on into them.
    for (const QString &key : std::as_const(missing)) {
        lines.insert(++title, lineOf(key) + lineEnd);
    }
    return lines.join('\n');
}

}  // namespace platform::settingstext
