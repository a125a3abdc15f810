#include <QAbstractButton>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QSet>
#include <QTest>
#include <QTextDocument>

#include "controls/levelindicator.h"
#include "controls/textlabel.h"
#include "support/desk.h"
#include "support/testmain.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

class tst_layouts final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void thereAreSevenLayouts() {
        QStringList names;
        for (const auto &[name, builder] : platform::layouts()) {
            names << name;
        }
        QCOMPARE(names, QStringList({u"Help"_s, u"MainLayout"_s, u"MainMenu"_s, u"MainTest"_s,
                                     u"QuizComplete"_s, u"Settings"_s, u"progress"_s}));
    }

    void layoutHoldsItsOutletsAndActions_data() {
        // Outlets by class; actions of controls; actions of menu items.
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QStringList>("buttons");
        QTest::addColumn<QStringList>("radios");
        QTest::addColumn<QStringList>("levels");
        QTest::addColumn<QStringList>("images");
        QTest::addColumn<QStringList>("actions");
        QTest::addColumn<QStringList>("menuActions");
        const QStringList none;
        QTest::newRow("MainLayout")
            << none << none << none << none << none << QStringList{u"GoMainMenu"_s, u"quit"_s}
            << QStringList{u"GoMainMenu"_s, u"GoTest1"_s, u"GoTest2"_s,     u"GoTest3"_s,
                           u"GoTest4"_s,    u"GoTest5"_s, u"GoTest6"_s,     u"GoTest7"_s,
                           u"ShowHelp"_s,   u"about"_s,   u"closeWindow"_s, u"goPreferences"_s,
                           u"quit"_s};
        QTest::newRow("MainMenu") << none << none << none
                                  << QStringList{u"progressbarMain"_s,  u"progressbarQuiz1"_s,
                                                 u"progressbarQuiz2"_s, u"progressbarQuiz3"_s,
                                                 u"progressbarQuiz4"_s, u"progressbarQuiz5"_s,
                                                 u"progressbarQuiz6"_s, u"progressbarQuiz7"_s}
                                  << none << QStringList{u"goTest1"_s,         u"goTest2"_s,
                                                         u"goTest3"_s,         u"goTest4"_s,
                                                         u"goTest5"_s,         u"goTest6"_s,
                                                         u"goTest7"_s,         u"refreshProgress"_s,
                                                         u"showPreferences"_s, u"showProgress"_s}
                                  << none;
        QTest::newRow("MainTest") << QStringList{u"lblAnswer1"_s,         u"lblAnswer2"_s,
                                                 u"lblAnswer3"_s,         u"lblCorrectPercent"_s,
                                                 u"lblProgressPercent"_s, u"lblQuestion"_s,
                                                 u"lblQuizName"_s,        u"lblStatus"_s,
                                                 u"lblTimeLeft"_s,        u"lblTimeLeftLabel"_s}
                                  << QStringList{u"btnAnswer1"_s, u"btnAnswer2"_s, u"btnAnswer3"_s,
                                                 u"btnNextQuestion"_s}
                                  << none << QStringList{u"progressbarMain"_s}
                                  << QStringList{u"imgQuestion"_s}
                                  << QStringList{u"Answer1Selected"_s, u"Answer2Selected"_s,
                                                 u"Answer3Selected"_s, u"goNextQuestion"_s}
                                  << none;
        QTest::newRow("QuizComplete")
            << QStringList{u"lblQuizName"_s, u"lblTheStatus"_s} << none << none << none
            << QStringList{u"theImage1"_s, u"theImage2"_s, u"theImage3"_s}
            << QStringList{u"goHome"_s} << none;
        QTest::newRow("progress") << QStringList{u"lblQuiz1Progress"_s, u"lblQuiz2Progress"_s,
                                                 u"lblQuiz3Progress"_s, u"lblQuiz4Progress"_s,
                                                 u"lblQuiz5Progress"_s, u"lblQuiz6Progress"_s}
                                  << none << none << none << none << none << none;
        QTest::newRow("Settings") << none << none << QStringList{u"noRadio"_s, u"yesRadio"_s}
                                  << none << none
                                  << QStringList{u"noTimeSelected"_s, u"resetProgress"_s,
                                                 u"yesTimeSelected"_s}
                                  << none;
        QTest::newRow("Help") << none << none << none << none << none << QStringList{u"closeHelp"_s}
                              << none;
    }

    void layoutHoldsItsOutletsAndActions() {
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        const auto window = build(name);
        QCOMPARE(window->objectName(), name);

        const std::initializer_list<std::pair<const char *, const char *>> outlets{
            {"texts", "platform::TextLabel"},   {"buttons", "QAbstractButton"},
            {"radios", "QRadioButton"},         {"levels", "platform::LevelIndicator"},
            {"images", "platform::ImageLabel"},
        };
        for (const auto &[column, type] : outlets) {
            const QStringList names =
                *static_cast<QStringList *>(QTest::qData(column, qMetaTypeId<QStringList>()));
            for (const QString &outlet : names) {
                const auto found = window->findChildren<QWidget *>(outlet);
                QVERIFY2(found.size() == 1, qUtf8Printable(outlet));
                QVERIFY2(found.first()->inherits(type), qUtf8Printable(outlet));
            }
        }

        QFETCH(const QStringList, actions);
        QFETCH(const QStringList, menuActions);
        QStringList ofButtons;
        QStringList ofMenuItems;
        for (const QObject *object : window->findChildren<QObject *>()) {
            const QString action = object->property("action").toString();
            if (action.isEmpty()) {
                continue;
            }
            if (qobject_cast<const QAbstractButton *>(object) != nullptr) {
                ofButtons << action;
            } else {
                QVERIFY2(qobject_cast<const QAction *>(object) != nullptr, qUtf8Printable(action));
                ofMenuItems << action;
            }
        }
        ofButtons.sort();
        ofMenuItems.sort();
        QCOMPARE(ofButtons, actions);
        QCOMPARE(ofMenuItems, menuActions);
    }

    void menusListTheirItemsWithShortcuts() {
        const auto window = build(u"MainLayout"_s);
        QStringList items;
        for (const QAction *menu : window->menuBar()->actions()) {
            items << u"["_s + QString(menu->text()).remove(u'&');
            for (const QAction *item : menu->menu()->actions()) {
                if (!item->isSeparator()) {
                    items << item->property("action").toString() + u' ' +
                                 item->shortcut().toString(QKeySequence::PortableText);
                    QVERIFY2(!item->text().isEmpty(), qUtf8Printable(items.last()));
                    QVERIFY2(item->isEnabled() && item->isVisible(), qUtf8Printable(items.last()));
                }
            }
        }
        QCOMPARE(items, QStringList({u"[Zorvan"_s, u"about "_s, u"goPreferences Ctrl+,"_s,
                                     u"quit Ctrl+Q"_s, u"[Quizzes"_s, u"GoTest1 Ctrl+1"_s,
                                     u"GoTest2 Ctrl+2"_s, u"GoTest3 Ctrl+3"_s, u"GoTest4 Ctrl+4"_s,
                                     u"GoTest5 Ctrl+5"_s, u"GoTest6 Ctrl+6"_s, u"GoTest7 Ctrl+7"_s,
                                     u"[Window"_s, u"GoMainMenu Ctrl+0"_s, u"closeWindow Ctrl+W"_s,
                                     u"[Help"_s, u"ShowHelp F1"_s}));
    }

    void everyMenuItemHasARole() {
        const auto window = build(u"MainLayout"_s);
        int items = 0;
        for (const QAction *menu : window->menuBar()->actions()) {
            for (const QAction *item : menu->menu()->actions()) {
                if (item->isSeparator()) {
                    continue;
                }
                ++items;
                const QString action = item->property("action").toString();
                QAction::MenuRole role = QAction::NoRole;
                if (action == u"about") {
                    role = QAction::AboutRole;
                } else if (action == u"goPreferences") {
                    role = QAction::PreferencesRole;
                } else if (action == u"quit") {
                    role = QAction::QuitRole;
                }
                QVERIFY2(item->menuRole() == role, qUtf8Printable(action));
            }
        }
        QCOMPARE(items, 13);
    }

    void menuItemsDoNotRepeat() {
        const auto window = build(u"MainLayout"_s);
        int items = 0;
        for (const QAction *item : window->findChildren<QAction *>()) {
            if (item->property("action").isValid()) {
                QVERIFY2(!item->autoRepeat(), qUtf8Printable(item->text()));
                ++items;
            }
        }
        QCOMPARE(items, 13);
    }

    void menuItemsHaveKeysOfTheirOwn() {
        const auto window = build(u"MainLayout"_s);
        QSet<QKeySequence> shortcuts;
        for (const QAction *menu : window->menuBar()->actions()) {
            QSet<QKeySequence> keys;
            for (const QAction *item : menu->menu()->actions()) {
                if (item->isSeparator()) {
                    continue;
                }
                const QKeySequence key = QKeySequence::mnemonic(item->text());
                QVERIFY2(!key.isEmpty() && !keys.contains(key), qUtf8Printable(item->text()));
                keys << key;
                QVERIFY2(!shortcuts.contains(item->shortcut()), qUtf8Printable(item->text()));
                if (!item->shortcut().isEmpty()) {
                    shortcuts << item->shortcut();
                }
            }
        }
        QCOMPARE(shortcuts.size(), 12);
    }

    void noTwoKeysOfAWindowAreTheSame_data() { layoutRows(); }

    void noTwoKeysOfAWindowAreTheSame() {
        QFETCH(const QString, name);
        // Every window has the menu bar of the main layout.
        const auto mainLayout = build(u"MainLayout"_s);
        QSet<QKeySequence> keys;
        for (const QAction *menu : mainLayout->menuBar()->actions()) {
            keys << QKeySequence::mnemonic(menu->text());
        }
        QCOMPARE(keys.size(), 4);
        const auto window = build(name);
        for (const QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
            const QKeySequence key = QKeySequence::mnemonic(button->text());
            QVERIFY2(!keys.contains(key), qUtf8Printable(button->text()));
            if (!key.isEmpty()) {
                keys << key;
            }
        }
    }

    void onlyWhatAsksFurtherHasAnEllipsis() {
        QStringList asking;
        for (const auto &[name, builder] : platform::layouts()) {
            const auto window = build(name);
            for (const QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
                asking << button->text();
            }
            for (const QAction *item : window->findChildren<QAction *>()) {
                asking << item->text();
            }
        }
        QCOMPARE(asking.filter(u"."_s) + asking.filter(u"…"_s), QStringList{u"&Clear Progress…"_s});
    }

    void indicatorsRangeOverThePasses() {
        const auto window = build(u"MainMenu"_s);
        const auto indicators = window->findChildren<platform::LevelIndicator *>();
        QCOMPARE(indicators.size(), 8);
        for (const platform::LevelIndicator *indicator : indicators) {
            const bool overall = indicator->objectName() == u"progressbarMain";
            QCOMPARE(indicator->maximum(), overall ? 21.0 : 3.0);
        }
    }

    void timingOptionsAreOneGroup() {
        const auto window = build(u"Settings"_s);
        auto &no = desk::control<QRadioButton>(window.get(), u"noRadio"_s);
        auto &yes = desk::control<QRadioButton>(window.get(), u"yesRadio"_s);
        no.setChecked(true);
        QVERIFY(no.isChecked() && !yes.isChecked());
        yes.setChecked(true);
        QVERIFY(!no.isChecked() && yes.isChecked());
    }

    void everyTextIsPlain_data() { layoutRows(); }

    void everyTextIsPlain() {
        QFETCH(const QString, name);
        const auto window = build(name);
        int labels = 0;
        for (const QWidget *widget : window->findChildren<QWidget *>()) {
            // A tooltip has no text format: markup in it would be rendered.
            QVERIFY2(!Qt::mightBeRichText(widget->toolTip()), qUtf8Printable(widget->objectName()));
            const auto *label = qobject_cast<const QLabel *>(widget);
            if (label != nullptr && !label->inherits("platform::ImageLabel")) {
                QVERIFY2(
                    label->inherits("platform::TextLabel") || label->inherits("platform::KeyLabel"),
                    qUtf8Printable(label->objectName()));
                QVERIFY2(label->textFormat() == Qt::PlainText, qUtf8Printable(label->objectName()));
                ++labels;
            }
        }
        QVERIFY(labels > 0);
    }

 private:
    static std::unique_ptr<QMainWindow> build(const QString &name) {
        auto window = std::make_unique<QMainWindow>();
        platform::layoutNamed(name)(*window);
        return window;
    }

    static void layoutRows() {
        QTest::addColumn<QString>("name");
        for (const char *name : {"MainLayout", "MainMenu", "MainTest", "QuizComplete", "progress",
                                 "Settings", "Help"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }
};

ZORVAN_TEST(tst_layouts)
#include "tst_layouts.moc"
