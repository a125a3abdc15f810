#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "controls/section.h"
#include "shell/help.h"
#include "support/desk.h"
#include "support/testmain.h"
#include "windowing/windowcontroller.h"

using namespace Qt::StringLiterals;

class tst_help final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        help_ = platform::makeController<Help>(u"Help"_s);
        help_->showWindow();
        help_->window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(help_->window()));
        QVERIFY(scrollArea().verticalScrollBar()->maximum() > 0);
    }

    void cleanup() {
        help_.reset();
        desk::clear();
    }

    void tabGoesThroughTheSections() {
        QStringList reached{focused()};
        for (qsizetype i = 0; i < sections_.size(); ++i) {
            type(Qt::Key_Tab);
            reached << focused();
        }
        QCOMPARE(reached, sections_ + QStringList{u"btnClose"_s});
    }

    void sectionIsReadOutFromItsHeadingOn_data() {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("beginning");
        QTest::newRow("quizzes") << u"quizzes"_s << u"The quizzes. Six quizzes each cover "_s;
        QTest::newRow("attempt") << u"attempt"_s << u"An attempt. The questions of a quiz come "_s;
        QTest::newRow("passing") << u"passing"_s << u"Passing and mastering. An attempt passes "_s;
        QTest::newRow("timing") << u"timing"_s << u"Timing. In the settings, "_s;
        QTest::newRow("progress") << u"progress"_s << u"Progress. The main menu shows "_s;
        QTest::newRow("keys") << u"keys"_s
                              << u"Keys. A, B, C or 1, 2, 3: choose an answer. Return: go on "_s;
    }

    void sectionIsReadOutFromItsHeadingOn() {
        QFETCH(const QString, section);
        QFETCH(const QString, beginning);
        const QString name = desk::control(help_->window(), section).accessibleName();
        QVERIFY2(name.startsWith(beginning), qUtf8Printable(name));
    }

    void sectionWithTheFocusIsInView() {
        for (const QString &section : sections_) {
            QCOMPARE(focused(), section);
            QVERIFY2(isInView(section), qUtf8Printable(section));
            type(Qt::Key_Tab);
        }
    }

    void sectionIsInViewWhicheverWayTheFocusComes_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<QString>("section");
        QTest::newRow("from the button back") << u"btnClose"_s << false << u"keys"_s;
        QTest::newRow("from the button round") << u"btnClose"_s << true << u"quizzes"_s;
        QTest::newRow("back") << u"keys"_s << false << u"progress"_s;
    }

    void sectionIsInViewWhicheverWayTheFocusComes() {
        QFETCH(const QString, from);
        QFETCH(const bool, forward);
        QFETCH(const QString, section);
        desk::control(help_->window(), from).setFocus();
        QScrollBar &bar = *scrollArea().verticalScrollBar();
        bar.setValue(forward ? bar.maximum() : bar.minimum());
        QVERIFY(!isInView(section));
        QTest::keyClick(help_->window()->windowHandle(), forward ? Qt::Key_Tab : Qt::Key_Backtab);
        QCOMPARE(focused(), section);
        QVERIFY(isInView(section));
    }

    void textNeverScrollsSideways() {
        help_->window()->resize(1, 1);
        QCoreApplication::processEvents();
        QCOMPARE(scrollArea().horizontalScrollBar()->maximum(), 0);
    }

 private:
    QScrollArea &scrollArea() const {
        return desk::control<QScrollArea>(help_->window(), u"scrollArea"_s);
    }

    /// Whether the whole section is on screen.
    bool isInView(const QString &section) const {
        const QWidget *viewport = scrollArea().viewport();
        const auto &shown = desk::control<platform::Section>(help_->window(), section);
        const QRect there(shown.mapTo(viewport, QPoint()), shown.size());
        return viewport->rect().contains(there);
    }

    QString focused() const { return help_->window()->focusWidget()->objectName(); }
    void type(Qt::Key key) const { QTest::keyClick(help_->window()->windowHandle(), key); }

    const QStringList sections_{u"quizzes"_s, u"attempt"_s,  u"passing"_s,
                                u"timing"_s,  u"progress"_s, u"keys"_s};
    std::shared_ptr<Help> help_;
};

ZORVAN_TEST(tst_help)
#include "tst_help.moc"
