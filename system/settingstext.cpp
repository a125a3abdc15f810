#include "system/settingstext.h"

#include <algorithm>
#include <utility>

#include <QMap>
#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace platform::settingstext {

namespace {

QString encoded(const QString &text) {
    if (isPlain(text)) {
        return text;
    }
    QString escapes;
    // A single @ would begin the name of a type.
    for (const QChar character : text.startsWith(u'@') ? u'@' + text : text) {
        escapes += u"\\x"_s + QString::number(character.unicode(), 16);
    }
    return u'"' + escapes + u'"';
}

/// Matches a comment, or an entry as QSettings delimits it: quotes and backslashes carry it over
/// line ends, and a comment ends it.
const QRegularExpression &entries() {
    static const QRegularExpression entries(
        uR"(;[^\r\n]*+|(?:[^";\r\n\\]++|\\(?:\r\n|\n\r|.)?+|"(?:[^"\\]++|\\.?+)*+"?+)++)"_s,
        QRegularExpression::DotMatchesEverythingOption);
    return entries;
}

}  // namespace

bool isPlain(const QString &text) {
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar character) {
        return character.unicode() < 0x80 && character.isLetterOrNumber();
    });
}

QByteArray edited(const QByteArray &content, const QVariantMap &values) {
    static const QRegularExpression lineEnds(u"\r\n|\n|\r"_s);
    // One character for each byte.
    QString text = QString::fromLatin1(content);
    const QRegularExpressionMatch firstEnd = lineEnds.match(text);
    const QString lineEnd = firstEnd.hasMatch() ? firstEnd.captured() : u"\n"_s;
    const auto entryOf = [&](const QString &key) {
        return key + u'=' + encoded(values.value(key).toString());
    };

    QStringList missing = values.keys();
    QMap<qsizetype, std::pair<qsizetype, QString>> replacements;
    qsizetype titleEnd = -1;
    bool inGeneral = true;
    for (const QRegularExpressionMatch &match : entries().globalMatch(text)) {
        const QByteArray entry = match.captured().toLatin1().trimmed();
        const QByteArray name = entry.first(qMax(entry.indexOf('='), 0)).trimmed();
        const QString key = QString::fromLatin1(name);
        if (entry.startsWith('[')) {
            const QByteArray section = entry.sliced(1).split(']').constFirst().trimmed();
            inGeneral = section.compare("general", Qt::CaseInsensitive) == 0;
            titleEnd = inGeneral && titleEnd < 0 ? match.capturedEnd() : titleEnd;
        } else if (inGeneral && values.contains(key)) {
            replacements.insert(match.capturedStart(), {match.capturedLength(), entryOf(key)});
            missing.removeOne(key);
        }
    }

    QString added;
    for (const QString &key : std::as_const(missing)) {
        added += lineEnd + entryOf(key);
    }
    // At the top of the section, where no entry before them can run on into them.
    if (titleEnd >= 0) {
        const qsizetype end = text.indexOf(lineEnds, titleEnd);
        replacements.insert(end < 0 ? text.size() : end, {0, added});
    }
    for (auto place = replacements.end(); place != replacements.begin();) {
        --place;
        text.replace(place.key(), place->first, place->second);
    }
    if (titleEnd < 0 && !missing.isEmpty()) {
        text.prepend(u"[General]"_s + added + lineEnd);
    }
    return text.toLatin1();
}

}  // namespace platform::settingstext
