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
    const bool standsForItself = std::ranges::all_of(text, [](QChar character) {
        return character > u' ' && character <= u'~' && !u"\",;@\\"_s.contains(character);
    });
    if (standsForItself) {
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

bool isPlain(const QString &key) {
    return !key.isEmpty() && std::ranges::all_of(key, [](QChar character) {
        return character.unicode() < 0x80 && character.isLetterOrNumber();
    });
}

QByteArray edited(const QByteArray &content, const QVariantMap &values) {
    static const QRegularExpression lineEnds(u"\r\n|\n|\r"_s);
    const QString lineEnd = content.contains("\r\n") ? u"\r\n"_s : u"\n"_s;
    // One character for each byte.
    QString text = QString::fromLatin1(content);
    const qsizetype start = content.startsWith("\xef\xbb\xbf") ? 3 : 0;
    const auto entryOf = [&](const QString &key) {
        return key + u'=' + encoded(values.value(key).toString());
    };

    QStringList missing = values.keys();
    QMap<qsizetype, std::pair<qsizetype, QString>> replacements;
    qsizetype titleEnd = -1;
    bool inGeneral = true;
    for (const QRegularExpressionMatch &match : entries().globalMatch(text, start)) {
        const QByteArray entry = match.captured().toLatin1().trimmed();
        const QByteArray name = entry.first(qMax(entry.indexOf('='), 0)).trimmed();
        const QString key = QString::fromUtf8(name);
        if (entry.startsWith('[')) {
            const QByteArray section = entry.sliced(1).split(']').constFirst().trimmed();
            inGeneral = section.compare("general", Qt::CaseInsensitive) == 0;
            titleEnd = inGeneral && titleEnd < 0 ? match.capturedEnd() : titleEnd;
        } else if (inGeneral && values.contains(key) && !match.captured().contains(lineEnds)) {
            // One that goes on for several lines may have swallowed others.
            replacements.insert(match.capturedStart(), {match.capturedLength(), entryOf(key)});
            missing.removeOne(key);
        }
    }

    // At the top of the section, where no entry before them can run on into them.
    QString added = titleEnd < 0 && !missing.isEmpty() ? u"[General]"_s + lineEnd : QString();
    qsizetype place = start;
    if (titleEnd >= 0) {
        QRegularExpressionMatch end;
        place = text.indexOf(lineEnds, titleEnd, &end) < 0 ? text.size() : end.capturedEnd();
        added = end.hasMatch() || missing.isEmpty() ? added : lineEnd;
    }
    for (const QString &key : std::as_const(missing)) {
        added += entryOf(key) + lineEnd;
    }
    replacements[place].second.prepend(added);
    for (auto replacement = replacements.end(); replacement != replacements.begin();) {
        --replacement;
        text.replace(replacement.key(), replacement->first, replacement->second);
    }
    return text.toLatin1();
}

}  // namespace platform::settingstext
