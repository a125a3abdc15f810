#include <algorithm>

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "controls/messagebox.h"
#include "support/learner.h"
#include "support/testmain.h"
#include "support/windowtest.h"
#include "windowing/bringtofront.h"

using namespace Qt::StringLiterals;

class tst_about final : public ProgramTest {
    Q_OBJECT

 private Q_SLOTS:
    void init() {
        ProgramTest::init();
        menu_ = openWindow(u"MainMenu"_s);
        QVERIFY(QTest::qWaitForWindowActive(menu_));
        learner::pick(menu_, u"about"_s);
        QCOMPARE(boxes().size(), 1);
        box_ = boxes().constFirst();
        // A modal box would stop the clock of an open quiz, as an alert does.
        QVERIFY(!box_->isModal());
        QVERIFY(QTest::qWaitForWindowActive(box_));
    }

    void boxSaysWhatTheProgramIs() {
        QCOMPARE(box_->text(), u"Zorvan "_s + QStringLiteral(ZORVAN_VERSION));
        QVERIFY(box_->informativeText().endsWith(u"\nQt "_s + QString::fromLatin1(qVersion())));
        QCOMPARE(box_->defaultButton()->text(), u"OK"_s);
        for (const QLabel *label : box_->findChildren<QLabel *>()) {
            QCOMPARE(label->textFormat() == Qt::PlainText, label != &icon());
            // Only the picture needs a name of its own.
            QCOMPARE(label->accessibleName(), label == &icon() ? u"Zorvan"_s : QString());
        }
    }

    void iconIsInProportionToTheText() {
        const double lines = double(icon().height()) / box_->fontMetrics().height();
        QVERIFY2(qAbs(lines - 4) < 0.25, qPrintable(u"It is %1 lines high, not 4"_s.arg(lines)));
    }

    void boxIsOpenOnce() {
        box_->showMinimized();
        platform::bringToFront(*menu_);
        QVERIFY(QTest::qWaitForWindowActive(menu_));
        learner::pick(menu_, u"about"_s);
        QCOMPARE(boxes(), QList<platform::MessageBox *>({box_}));
        QVERIFY(QTest::qWaitForWindowActive(box_));
        QVERIFY(!box_->isMinimized());
        box_->close();
        desk::freeUnused();
        QVERIFY(box_.isNull());
        learner::pick(menu_, u"about"_s);
        QCOMPARE(boxes().size(), 1);
    }

    void keyboardStaysWhereTheUserTakesIt() {
        using namespace std::chrono_literals;
        menu_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(menu_));
        // By then a request for the keyboard would have been repeated.
        bool isLater = false;
        QTimer::singleShot(500ms, menu_, [&isLater] { isLater = true; });
        QVERIFY(QTest::qWaitFor([&isLater] { return isLater; }));
        QVERIFY(menu_->isActiveWindow());
    }

 private:
    /// The one label without text.
    const QLabel &icon() const {
        const QList<QLabel *> labels = box_->findChildren<QLabel *>();
        return **std::ranges::find_if(labels,
                                      [](const QLabel *label) { return label->text().isEmpty(); });
    }

    static QList<platform::MessageBox *> boxes() {
        QList<platform::MessageBox *> boxes;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *box = qobject_cast<platform::MessageBox *>(widget)) {
                boxes << box;
            }
        }
        return boxes;
    }

    platform::Window *menu_ = nullptr;
    QPointer<platform::MessageBox> box_;
};

ZORVAN_TEST(tst_about)
#include "tst_about.moc"
