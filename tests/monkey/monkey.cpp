#include <QCommandLineParser>
#include <QRandomGenerator>
#include <QRegularExpression>

#include "monkey/walk.h"
#include "support/qtvariables.h"
#include "support/storehome.h"

using namespace Qt::StringLiterals;

namespace {

/// Writes Qt's messages to standard error, where the walk finds them; only those are left out that
/// the offscreen platform, or the one for Windows under Wine, always writes.
void qtSays(QtMsgType type, const QMessageLogContext &, const QString &message) {
    static const QRegularExpression alwaysWritten(
        u"^(This plugin does not support |EnableNonClientDpiScaling|SetProcessDpiAwareness|"
        "queryDarkBorder|QApplication::regClass: )"_s);
    if (type == QtFatalMsg) {
        std::fprintf(stdout, "%s\n", qUtf8Printable(message));
        std::fflush(stdout);
    } else if (!message.contains(alwaysWritten)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    }
}

}  // namespace

int main(int argc, char **argv) {
    qtvariables::take();
    const QCommandLineOption seedOption(u"seed"_s, u"Replays the walk of that number."_s, u"N"_s,
                                        QString::number(QRandomGenerator::global()->generate()));
    const QCommandLineOption stepsOption(u"steps"_s, u"How many steps to take."_s, u"N"_s,
                                         u"20000"_s);
    const QCommandLineOption verboseOption(u"verbose"_s, u"Says each step as it is taken."_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Uses the program at random and looks after what must hold."_s);
    parser.addHelpOption();
    parser.addOptions({seedOption, stepsOption, verboseOption});
    parser.process(liveprogram::arguments(argc, argv));
    const quint32 seed = parser.value(seedOption).toUInt();
    const int steps = parser.value(stepsOption).toInt();

    std::printf("monkey --seed %u --steps %d\n", seed, steps);
    std::fflush(stdout);
    const StoreHome home;
    liveprogram::prepare();
    qInstallMessageHandler(qtSays);

    Walk walk(seed, steps, parser.isSet(verboseOption));
    walk.run();
    // A walk of this length meets everything.
    constexpr int longWalk = 20000;
    const QStringList missing = steps < longWalk ? QStringList() : walk.missing();
    if (!missing.isEmpty()) {
        std::printf("Never met: %s\n", qUtf8Printable(missing.join(u"; "_s)));
    }
    return missing.isEmpty() ? 0 : 1;
}
