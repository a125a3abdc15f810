#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include "platform/levelindicator.h"
#include "platform/windowcontroller.h"
#include "quizrun/quizrun.h"
#include "shell/learner.h"
#include "shell/mainmenu.h"
#include "support/alerts.h"
#include "support/desk.h"
#include "support/standarderror.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_unwritablestore final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void learnerGoesOnInMemory();

 private:
    QTemporaryDir home_;
};

void tst_unwritablestore::initTestCase() {
    // No folder can be made below a file; a permission would not hold everyone back.
    QFile file(home_.filePath(u"configuration"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, file.fileName());
}

void tst_unwritablestore::cleanup() {
    desk::clear();
}

void tst_unwritablestore::learnerGoesOnInMemory() {
    quizRun().random = [] { return 0U; };
    Alerts alerts;
    StandardError standardError;
    const auto menu = platform::makeController<MainMenu>(u"MainMenu"_s);
    alerts.answer(u"OK"_s);
    menu->showWindow();
    learner::press(menu->window(), u"goTest5"_s);
    QCOMPARE(desk::text(desk::window(u"MainTest"_s), u"lblQuizName"_s), u"Structure"_s);
    learner::finishStructure(desk::window(u"MainTest"_s), true);
    learner::press(menu->window(), u"refreshProgress"_s);

    QCOMPARE(desk::control<platform::LevelIndicator>(menu->window(), u"progressbarQuiz5"_s)
                 .doubleValue(),
             1.0);
    QCOMPARE(desk::windows(u"MainMenu"_s).size(), 2);
    QVERIFY(alerts.verify());
    const QStringList lines = standardError.lines();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines.first().contains(home_.filePath(u"configuration"_s)),
             qUtf8Printable(lines.first()));
    QCOMPARE(lines.last(), u"5"_s);
    QCOMPARE(QDir(home_.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{u"configuration"_s});
}

ZORVAN_TEST_MAIN(tst_unwritablestore)
#include "tst_unwritablestore.moc"
