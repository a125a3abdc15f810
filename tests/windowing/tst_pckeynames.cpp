#include <QCoreApplication>
#include <QKeySequence>
#include <QTest>

#include "support/testmain.h"
#include "windowing/pckeynames.h"

using namespace Qt::StringLiterals;

class tst_pckeynames final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void keysAreCalledAsOnPcKeyboards() {
        platform::PcKeyNames names;
        QVERIFY(QCoreApplication::installTranslator(&names));
        QCOMPARE(QCoreApplication::translate("Help", "Return"), u"Enter"_s);
        QCOMPARE(QCoreApplication::translate("Help", "Escape"), u"Esc"_s);
        QCOMPARE(QCoreApplication::translate("Help", "Tab, Shift+Tab"), u"Tab, Shift+Tab"_s);
        QCOMPARE(QKeySequence(Qt::CTRL | Qt::Key_Return).toString(QKeySequence::NativeText),
                 u"Ctrl+Enter"_s);
    }
};

ZORVAN_TEST(tst_pckeynames)
#include "tst_pckeynames.moc"
