#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QMap>

#include "system/preferences.h"

using namespace Qt::StringLiterals;

/// Records passes as fast as the store takes them, in the order of writes in which an attempt's end
/// records one, and says of each write that it is due and that it is done:
///
///     recorder PASSES QUIZ...
///
/// After every write the file itself has to hold what was written under the quizzes' keys.
namespace {

void say(const QByteArray &line) {
    // Not buffered: what a killed process has said must have been said.
    if (::write(STDOUT_FILENO, line.constData(), static_cast<std::size_t>(line.size())) !=
        line.size()) {
        std::perror("recorder");
        std::_Exit(2);
    }
}

QByteArrayList linesOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
}

void write(const QString &value, const QString &key) {
    const QByteArray entry = (key + u'=' + value + u'\n').toUtf8();
    say("due " + entry);
    platform::Preferences::standardUserDefaults().setValueForKey(value, key);
    say("done " + entry);
}

}  // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int passes = arguments.at(1).toInt();
    const QStringList quizzes = arguments.sliced(2);
    const QString path = qEnvironmentVariable("XDG_CONFIG_HOME") + u"/Zorvan/Zorvan.conf"_s;

    QMap<QString, int> counts;
    for (int pass = 0; pass < passes; ++pass) {
        const QString &quiz = quizzes.at(pass % quizzes.size());
        const QString key = u"quiz"_s + quiz;
        // From the third pass on as after a clearing.
        counts[key] = (counts.value(key) + 1) % 4;
        write(u"pass"_s, u"currentStatus"_s);
        write(QString::number(counts.value(key)), key);
        write(quiz, u"currentTest"_s);

        const QByteArrayList lines = linesOf(path);
        for (auto count = counts.begin(); count != counts.end(); ++count) {
            const QByteArray entry = (count.key() + u'=' + QString::number(*count)).toUtf8();
            if (!lines.contains(entry)) {
                say("lost " + entry + '\n');
            }
        }
    }
    say("end\n");
    return 0;
}
