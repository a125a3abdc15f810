#include <QDir>
#include <QTest>

#include "fuzz/trial.h"
#include "support/standarderror.h"
#include "support/testmain.h"

/// The files from which the fuzzer starts: each is read as QSettings reads it, and edited without
/// losing anything.
class tst_oddfiles final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void editLosesNothing_data() {
        QTest::addColumn<QByteArray>("input");
        const QDir corpus(QStringLiteral(CORPUS));
        for (const QString &name : corpus.entryList(QDir::Files)) {
            QFile file(corpus.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QTest::newRow(qUtf8Printable(name)) << file.readAll();
        }
    }

    void editLosesNothing() {
        QFETCH(const QByteArray, input);
        const QByteArray fault = faultIn(input);
        QVERIFY2(fault.isEmpty(), fault);
    }
};

ZORVAN_TEST(tst_oddfiles)
#include "tst_oddfiles.moc"
