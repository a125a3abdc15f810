#pragma once

#include <QByteArrayList>
#include <QProcess>

/// A separate process that records passes, and what it has said about its writes.
class Recording final {
 public:
    Recording(int passes, const QStringList &quizzes) {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(QStringLiteral(RECORDER), QStringList{QString::number(passes)} + quizzes);
    }

    /// Returns whether it has said that many lines, which it does unless it hangs or ends.
    bool waitForLines(int lines) {
        while (said_.count('\n') < lines && process_.waitForReadyRead(hung)) {
            said_ += process_.readAllStandardOutput();
        }
        return said_.count('\n') >= lines;
    }

    /// Returns whether it has ended by itself and found all of its writes.
    bool waitForEnd() {
        process_.waitForFinished(hung);
        said_ += process_.readAllStandardOutput();
        return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    }

    /// Returns whether it was still recording.
    bool kill() {
        const bool wasRecording = !process_.waitForFinished(0);
        process_.kill();
        waitForEnd();
        return wasRecording;
    }

    /// The entries that were written, in order.
    QByteArrayList done() const { return saidAfter("done "); }
    /// The entry whose write was begun but not announced as done, if any.
    QByteArrayList due() const { return saidAfter("due ").sliced(done().size()); }

 private:
    static constexpr int hung = 60'000;

    QByteArrayList saidAfter(const QByteArray &word) const {
        QByteArrayList entries;
        // What follows the last line break is an incomplete line.
        for (const QByteArray &line : said_.first(said_.lastIndexOf('\n') + 1).split('\n')) {
            if (line.startsWith(word)) {
                // Some systems end a line with another character before the line break.
                entries << line.sliced(word.size()).trimmed();
            }
        }
        return entries;
    }

    QProcess process_;
    QByteArray said_;
};
