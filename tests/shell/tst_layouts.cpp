#include <QAbstractButton>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QTest>
#include <QTextDocument>

#include "support/testmain.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

class tst_layouts final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void layoutHoldsTheControlsThatTheProgramWritesTo() {
        const QMap<QString, QString> outlets{
            {u"Help"_s, u""_s},
            {u"MainLayout"_s, u""_s},
            {u"MainMenu"_s,
             u"progressbarMain progressbarQuiz1 progressbarQuiz2 progressbarQuiz3 progressbarQuiz4 "
             "progressbarQuiz5 progressbarQuiz6 progressbarQuiz7"_s},
            {u"MainTest"_s,
             u"btnAnswer1 btnAnswer2 btnAnswer3 btnNextQuestion imgQuestion lblAnswer1 lblAnswer2 "
             "lblAnswer3 lblCorrectPercent lblProgressPercent lblQuestion lblQuizName lblStatus "
             "lblTimeLeft lblTimeLeftLabel progressbarMain"_s},
            {u"QuizComplete"_s, u"lblQuizName lblTheStatus theImage1 theImage2 theImage3"_s},
            {u"Settings"_s, u"noRadio yesRadio"_s},
            {u"progress"_s,
             u"lblQuiz1Progress lblQuiz2Progress lblQuiz3Progress lblQuiz4Progress "
             "lblQuiz5Progress lblQuiz6Progress progressbarQuiz1 progressbarQuiz2 progressbarQuiz3 progressbarQuiz4 progressbarQuiz5 progressbarQuiz6"_s}};
        QCOMPARE(layouts(), outlets.keys());
        for (const auto &[layout, names] : outlets.asKeyValueRange()) {
            const auto window = build(layout);
            QCOMPARE(window->objectName(), layout);
            for (const QString &name : names.split(u' ', Qt::SkipEmptyParts)) {
                QVERIFY2(window->findChildren<QWidget *>(name).size() == 1, qUtf8Printable(name));
            }
        }
    }

    void buttonAsksForWhatItSays() {
        const QMap<QString, QStringList> buttons{
            {u"Help"_s, {u"&Close: closeHelp"_s}},
            {u"MainLayout"_s, {u"&Main Menu: GoMainMenu"_s, u"Qui&t: quit"_s}},
            {u"MainMenu"_s,
             {u"Terminology: goTest1"_s, u"Variables: goTest2"_s, u"Methods: goTest3"_s,
              u"Functions: goTest4"_s, u"Structure: goTest5"_s, u"Syntax: goTest6"_s,
              u"Main Test: goTest7"_s, u"&Progress: showProgress"_s,
              u"&Settings: showPreferences"_s, u"&Refresh: refreshProgress"_s}},
            {u"MainTest"_s,
             {u"A: Answer1Selected"_s, u"B: Answer2Selected"_s, u"C: Answer3Selected"_s,
              u"Next Question: goNextQuestion"_s}},
            {u"QuizComplete"_s, {u"H&ome: goHome"_s}},
            {u"Settings"_s,
             {u"&Untimed: take as long as you like: noTimeSelected"_s,
              u"&Timed: about 15 seconds a question: yesTimeSelected"_s,
              u"&Clear Progress…: resetProgress"_s}},
            {u"progress"_s, {}}};
        for (const auto &[layout, expected] : buttons.asKeyValueRange()) {
            QStringList found;
            const auto window = build(layout);
            for (const QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
                // The menu bar has a button without a text, for menus that it has no room for.
                if (!button->text().isEmpty()) {
                    found << button->text() + u": "_s + actionOf(*button);
                }
            }
            found.sort();
            QStringList wanted = expected;
            wanted.sort();
            QCOMPARE(found, wanted);
        }
    }

    void menuItemAsksForWhatItSays() {
        const auto window = build(u"MainLayout"_s);
        QStringList items;
        for (const QAction *menu : window->menuBar()->actions()) {
            items << menu->text();
            for (const QAction *item : menu->menu()->actions()) {
                if (!item->isSeparator()) {
                    items << u"%1: %2 %3"_s.arg(item->text(), actionOf(*item),
                                                item->shortcut().toString());
                    if (item->menuRole() != QAction::NoRole) {
                        items.last() += u' ' + QVariant::fromValue(item->menuRole()).toString();
                    }
                    QVERIFY2(item->isEnabled() && item->isVisible(), qUtf8Printable(items.last()));
                    // A held key opens one window, not many.
                    QVERIFY2(!item->autoRepeat(), qUtf8Printable(items.last()));
                }
            }
        }
        QCOMPARE(
            items,
            QStringList({u"&Zorvan"_s, u"&About Zorvan: about  AboutRole"_s,
                         u"&Settings: goPreferences Ctrl+, PreferencesRole"_s,
                         u"&Quit: quit Ctrl+Q QuitRole"_s, u"&Quizzes"_s,
                         u"&Terminology: GoTest1 Ctrl+1"_s, u"&Variables: GoTest2 Ctrl+2"_s,
                         u"M&ethods: GoTest3 Ctrl+3"_s, u"&Functions: GoTest4 Ctrl+4"_s,
                         u"&Structure: GoTest5 Ctrl+5"_s, u"S&yntax: GoTest6 Ctrl+6"_s,
                         u"&Main Test: GoTest7 Ctrl+7"_s, u"&Window"_s,
                         u"&Main Menu: GoMainMenu Ctrl+0"_s, u"&Close Window: closeWindow Ctrl+W"_s,
                         u"&Help"_s, u"Zorvan &Help: ShowHelp F1"_s}));
    }

    void noTwoKeysOfAWindowAreTheSame() {
        // Every window has the menu bar of the main layout.
        const auto mainLayout = build(u"MainLayout"_s);
        QStringList menus;
        for (const QAction *menu : mainLayout->menuBar()->actions()) {
            menus << menu->text();
            QStringList items;
            for (const QAction *item : menu->menu()->actions()) {
                if (!item->isSeparator()) {
                    QVERIFY2(item->text().contains(u'&'), qUtf8Printable(item->text()));
                    items << item->text();
                }
            }
            QCOMPARE(textsWithTheSameKey(items), QStringList());
        }
        for (const QString &layout : layouts()) {
            QStringList texts = menus;
            const auto window = build(layout);
            for (const QAbstractButton *button : window->findChildren<QAbstractButton *>()) {
                texts << button->text();
            }
            QCOMPARE(textsWithTheSameKey(texts), QStringList());
        }
    }

    void everyTextIsPlain() {
        for (const QString &layout : layouts()) {
            const auto window = build(layout);
            for (const QWidget *widget : window->findChildren<QWidget *>()) {
                const QString name = layout + u": "_s + widget->objectName();
                // A tooltip has no text format: markup in it would be rendered.
                QVERIFY2(!Qt::mightBeRichText(widget->toolTip()), qUtf8Printable(name));
                const auto *label = qobject_cast<const QLabel *>(widget);
                if (label != nullptr && !label->inherits("platform::ImageLabel")) {
                    QVERIFY2(label->inherits("platform::TextLabel") ||
                                 label->inherits("platform::KeyLabel"),
                             qUtf8Printable(name));
                    QVERIFY2(label->textFormat() == Qt::PlainText, qUtf8Printable(name));
                }
            }
        }
    }

 private:
    static QStringList layouts() {
        QStringList names;
        for (const auto &[name, builder] : platform::layouts()) {
            names << name;
        }
        return names;
    }

    static std::unique_ptr<QMainWindow> build(const QString &layout) {
        auto window = std::make_unique<QMainWindow>();
        platform::layoutNamed(layout)(*window);
        return window;
    }

    static QString actionOf(const QObject &control) {
        return control.property("action").toString();
    }

    static QStringList textsWithTheSameKey(const QStringList &texts) {
        QSet<QKeySequence> keys;
        QStringList again;
        for (const QString &text : texts) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (keys.contains(key)) {
                again << text;
            }
            if (!key.isEmpty()) {
                keys << key;
            }
        }
        return again;
    }
};

ZORVAN_TEST(tst_layouts)
#include "tst_layouts.moc"
