#include "lostparts.h"

#include <algorithm>
#include <vector>

namespace {

constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");

bool endsLine(char byte) {
    return byte == '\n' || byte == '\r';
}

/// A comment, or what QSettings takes for one entry.
struct Part {
    QByteArray text;
    /// The line end after it; empty if another part of the same line follows, or nothing.
    QByteArray end;
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

/// The parts that are not entries of those keys.
std::vector<Part> othersIn(const QByteArray &content, const QStringList &keys) {
    std::vector<Part> others;
    bool inGeneral = true;
    qsizetype i = content.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    while (i < content.size()) {
        if (endsLine(content.at(i)) || content.at(i) == ' ' || content.at(i) == '\t') {
            ++i;
            continue;
        }
        const qsizetype end = endOfPart(content, i);
        const QByteArray text = content.sliced(i, end - i);
        i = end;
        const qsizetype equals = text.indexOf('=');
        if (text.startsWith('[')) {
            const qsizetype bracket = text.indexOf(']');
            inGeneral =
                text.mid(1, bracket < 0 ? -1 : bracket - 1).trimmed().toLower() == "general";
        } else if (inGeneral && equals > 0 && std::ranges::none_of(text, endsLine) &&
                   keys.contains(QString::fromUtf8(text.first(equals).trimmed()))) {
            continue;
        }
        const QByteArray next = content.mid(end, content.mid(end, 2) == "\r\n" ? 2 : 1);
        others.push_back({text, next.startsWith(';') ? QByteArray() : next});
    }
    return others;
}

/// Whether lines end only in that way.
bool endsLinesLike(const QByteArray &content, const QByteArray &lineEnd) {
    return std::ranges::none_of(QByteArray(content).replace(lineEnd, ""), endsLine);
}

}  // namespace

QByteArray lost(const QByteArray &before, const QByteArray &after, const QStringList &keys) {
    if (before.startsWith(byteOrderMark) != after.startsWith(byteOrderMark)) {
        return "the byte order mark";
    }
    for (const char *lineEnd : {"\n", "\r\n"}) {
        if (before.contains(lineEnd) && endsLinesLike(before, lineEnd) &&
            !endsLinesLike(after, lineEnd)) {
            return "the kind of line ends";
        }
    }
    const std::vector<Part> wanted = othersIn(before, keys);
    const std::vector<Part> found = othersIn(after, keys);
    auto next = found.begin();
    if (found.size() > wanted.size() && next->text == "[General]") {
        ++next;
    }
    for (const Part &part : wanted) {
        if (next == found.end() || next->text != part.text) {
            return "the part " + part.text;
        }
        // The last line may have no end, but gets one if another comes after it.
        if (!next->end.startsWith(part.end)) {
            return "the end of the line " + part.text;
        }
        ++next;
    }
    return next == found.end() ? QByteArray() : "nothing, but gained the part " + next->text;
}
