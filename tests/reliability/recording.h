#pragma once

#include <QElapsedTimer>
#include <QProcess>

#include "reliability/configuration.h"

/// A separate process that records passes, and what it has said about its writes.
class Recording final {
 public:
    Recording(const Configuration &configuration, int passes, const QStringList &quizzes) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configuration.home());
        process_.setProcessEnvironment(environment);
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        sinceStart_.start();
        process_.start(QStringLiteral(RECORDER), QStringList{QString::number(passes)} + quizzes);
    }

    /// Ends the test program if the process hangs.
    void waitForLines(int lines) {
        while (said_.count('\n') < lines) {
            if (!process_.waitForReadyRead(hung)) {
                qFatal("The recorder hangs after\n%s", said_.constData());
            }
            said_ += process_.readAllStandardOutput();
            if (!firstWrite_ && said_.contains("done ")) {
                firstWrite_ = sinceStart_.elapsed();
            }
        }
    }

    /// The milliseconds from the start of the process to the end of its first write; nothing if
    /// that was not waited for.
    std::optional<qint64> firstWrite() const { return firstWrite_; }

    void kill() {
        process_.kill();
        process_.waitForFinished(hung);
        said_ += process_.readAllStandardOutput();
        // Drops a line that is incomplete.
        said_.truncate(said_.lastIndexOf('\n') + 1);
    }

    /// Waits for the process; returns whether it ended by itself.
    bool waitForEnd() {
        process_.waitForFinished(hung);
        said_ += process_.readAllStandardOutput();
        return said_.endsWith("end\n") && process_.exitCode() == 0;
    }

    /// The writes that were done, in order.
    QList<Entry> done() const { return entries("done "); }
    /// The write that was begun but not announced as done.
    std::optional<Entry> due() const {
        const QList<Entry> begun = entries("due ");
        return begun.size() > done().size() ? std::optional(begun.last()) : std::nullopt;
    }
    /// The values that were no longer in the file after a later write.
    QByteArrayList lost() const {
        QByteArrayList lost = said_.split('\n');
        lost.removeIf([](const QByteArray &line) { return !line.startsWith("lost "); });
        return lost;
    }
    Contents lastOfEachQuiz() const {
        Contents last;
        for (const Entry &entry : done()) {
            if (entry.first.startsWith("quiz")) {
                last.insert(entry.first, entry.second);
            }
        }
        return last;
    }

 private:
    static constexpr int hung = 60'000;

    QList<Entry> entries(const QByteArray &word) const {
        QList<Entry> entries;
        for (const QByteArray &line : said_.split('\n')) {
            if (line.startsWith(word)) {
                const QByteArrayList entry = line.sliced(word.size()).split('=');
                entries.append({entry.first(), entry.last()});
            }
        }
        return entries;
    }

    QProcess process_;
    QByteArray said_;
    QElapsedTimer sinceStart_;
    std::optional<qint64> firstWrite_;
};
