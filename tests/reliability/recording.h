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

    /// Returns whether it has ended by itself.
    bool waitForEnd() {
        process_.waitForFinished(hung);
        said_ += process_.readAllStandardOutput();
        return said_.endsWith("end\n") && process_.exitCode() == 0;
    }

    void kill() {
        process_.kill();
        waitForEnd();
        // Drops a line that is incomplete.
        said_.truncate(said_.lastIndexOf('\n') + 1);
    }

    /// The entries that were written, in order.
    QByteArrayList done() const { return saidAfter("done "); }
    /// The entry whose write was begun but not announced as done, if any.
    QByteArrayList due() const { return saidAfter("due ").sliced(done().size()); }
    /// The entries that were no longer in the file after a later write.
    QByteArrayList lost() const { return saidAfter("lost "); }

 private:
    static constexpr int hung = 60'000;

    QByteArrayList saidAfter(const QByteArray &word) const {
        QByteArrayList entries;
        for (const QByteArray &line : said_.split('\n')) {
            if (line.startsWith(word)) {
                entries << line.sliced(word.size());
            }
        }
        return entries;
    }

    QProcess process_;
    QByteArray said_;
};
