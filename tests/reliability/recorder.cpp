#include <cstdio>
#include <cstdlib>

#include <QCoreApplication>

#include "support/store.h"
#include "support/storehome.h"
#include "system/preferences.h"

using namespace Qt::StringLiterals;

/// Records passes as fast as the store takes them, with the writes in the same order as at the end
/// of an attempt, and says of each write when it is due and when it is done:
///
///     recorder PASSES QUIZ...
///
/// It fails if, after a pass, the store does not hold what was written under the quizzes' keys.
namespace {

void say(const QByteArray &line) {
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    // At once: no line may be lost when the process is killed.
    if (std::fflush(stdout) != 0) {
        std::_Exit(2);
    }
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
    StoreHome::join();
    const QStringList arguments = QCoreApplication::arguments();
    const int passes = arguments.at(1).toInt();
    const QStringList quizzes = arguments.sliced(2);

    store::Contents counts;
    for (int pass = 0; pass < passes; ++pass) {
        const QString &quiz = quizzes.at(pass % quizzes.size());
        QString &count = counts[u"quiz"_s + quiz];
        // After the third pass the count starts again from 0, as after a clearing.
        count = QString::number((count.toInt() + 1) % 4);
        write(u"pass"_s, u"currentStatus"_s);
        write(count, u"quiz"_s + quiz);
        write(quiz, u"currentTest"_s);
        const store::Contents found = store::contents();
        store::Contents expected = found;
        expected.insert(counts);
        if (found != expected) {
            std::fprintf(stderr, "a write was lost before the end of pass %d\n", pass);
            return 1;
        }
    }
    return 0;
}
