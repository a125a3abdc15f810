#pragma once

#include <QList>

#include "configuration.h"
#include "crashingdisk.h"
#include "support/store.h"

/// Writes that a crash may interrupt.
struct Scenario {
    const char *name = nullptr;
    /// What the folder around the configuration home holds.
    Tree before;
    /// Each of them is a batch.
    QList<store::Contents> writes;
};

/// A configuration home with these files in the program's folder.
inline Tree homeWith(const Tree &files) {
    Tree tree{{"", std::nullopt}, {"home", std::nullopt}, {"home/Zorvan", std::nullopt}};
    for (const auto &[name, content] : files) {
        tree["home/Zorvan/" + name] = content;
    }
    return tree;
}

inline QList<Scenario> crashScenarios() {
    using namespace Qt::StringLiterals;
    const Tree noHome{{"", std::nullopt}};
    const Tree emptyHome{{"", std::nullopt}, {"home", std::nullopt}};
    const store::Contents pass{{u"quiz1"_s, u"1"_s}};
    const store::Contents endOfQuiz{
        {u"currentStatus"_s, u"pass"_s}, {u"quiz3"_s, u"2"_s}, {u"currentTest"_s, u"3"_s}};
    const QByteArray others =
        "; of the learner\r\n[General]\r\ncolour=blue\r\nquiz1=0;first\r\n[Window]\r\nsize=3\r\n";
    // More than a page of memory or a block of a disk.
    const QByteArray large = seeded + "notes=" + QByteArray(9000, 'n') + '\n';
    // QSettings finds the last of several entries for a key, so the file has to be kept aside.
    const QByteArray alias = seeded + "quiz%31=2\n";

    QList<store::Contents> inARow{store::seeded()};
    for (int quiz = 1; quiz <= 7; ++quiz) {
        const QString id = QString::number(quiz);
        inARow << store::Contents{{u"currentTest"_s, id}}
               << store::Contents{{u"currentStatus"_s, u"pass"_s}, {u"quiz"_s + id, u"1"_s}};
    }

    return {
        {"first write, configuration home missing", noHome, {pass}},
        {"seeding, folder missing", emptyHome, {store::seeded()}},
        {"leftovers of a kill",
         homeWith({{"Zorvan.conf", seeded}, {".Zorvan.conf.writing", "[General]\nquiz1=3\n"}}),
         {pass, endOfQuiz}},
        {"leftovers of a kill, no file yet",
         homeWith({{".Zorvan.conf.writing", "[Gene"}}),
         {pass, endOfQuiz}},
        {"keys and comments of others", homeWith({{"Zorvan.conf", others}}), {pass, endOfQuiz}},
        {"large file", homeWith({{"Zorvan.conf", large}}), {endOfQuiz}},
        {"kept aside", homeWith({{"Zorvan.conf", alias}}), {pass}},
        {"kept aside before, with another content",
         homeWith({{"Zorvan.conf", alias}, {"Zorvan.conf.kept-1", seeded}}),
         {pass}},
        {"kept aside before, with the same content",
         homeWith({{"Zorvan.conf", alias}, {"Zorvan.conf.kept-1", alias}}),
         {pass}},
        {"writes in a row", homeWith({}), inARow},
    };
}
