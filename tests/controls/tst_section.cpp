#include <QAccessible>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QVBoxLayout>

#include "controls/actionrow.h"
#include "controls/imagelabel.h"
#include "controls/rowbutton.h"
#include "controls/section.h"
#include "controls/textlabel.h"
#include "look/palette.h"
#include "support/drawing.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::Section;
using platform::TextLabel;

namespace {

/// The objects whose new name a screen reader is told.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): filled without an object
QList<const QObject *> renamed;  // clazy:exclude=non-pod-global-static

}  // namespace

// Replaces Qt's own function, which does nothing if no screen reader is listening.
void QAccessible::updateAccessibility(QAccessibleEvent *event) {
    if (event->type() == QAccessible::NameChanged) {
        renamed << event->object();
    }
}

class tst_section final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() { section_ = std::make_unique<Section>(); }

    void cleanup() { section_.reset(); }

    void isAGroupToAScreenReader() {
        QCOMPARE(QAccessible::queryAccessibleInterface(section_.get())->role(),
                 QAccessible::Grouping);
    }

    void nameIsTheTextInOrder_data() {
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<QString>("name");
        QTest::newRow("none") << QStringList() << QString();
        QTest::newRow("one, to the character") << QStringList{u"a && b &c "_s} << u"a && b &c "_s;
        QTest::newRow("markup") << QStringList{u"<b>&amp;</b>"_s} << u"<b>&amp;</b>"_s;
        QTest::newRow("several") << QStringList{u"Timing"_s, u"No clock"_s, u"Clock"_s}
                                 << u"Timing. No clock. Clock"_s;
        QTest::newRow("after a full stop") << QStringList{u"One."_s, u"Two"_s} << u"One. Two"_s;
        QTest::newRow("after a question mark") << QStringList{u"One?"_s, u"Two"_s} << u"One? Two"_s;
        QTest::newRow("after an exclamation mark")
            << QStringList{u"One!"_s, u"Two"_s} << u"One! Two"_s;
        QTest::newRow("after a colon") << QStringList{u"One:"_s, u"Two"_s} << u"One: Two"_s;
        QTest::newRow("after a comma") << QStringList{u"One,"_s, u"Two"_s} << u"One,. Two"_s;
    }

    void nameIsTheTextInOrder() {
        QFETCH(const QStringList, texts);
        for (const QString &text : texts) {
            addText(text);
        }
        QTEST(name(), "name");
    }

    void textOfARowIsLeftOut() {
        addText(u"Which one?"_s);
        auto *row = new platform::ActionRow(section_.get());
        new platform::RowButton(u"A"_s, row);
        addText(*new QWidget(row), u"an answer"_s);
        QCOMPARE(name(), u"Which one?"_s);
    }

    void textOfASectionWithinIsLeftOut() {
        addText(u"Outside"_s);
        auto *within = new Section(section_.get());
        addText(*within, u"Inside"_s);
        addText(*new QWidget(section_.get()), u"Deeper"_s);
        QCOMPARE(name(), u"Outside. Deeper"_s);
        QCOMPARE(within->accessibleName(), u"Inside"_s);
    }

    void hiddenTextIsLeftOut() {
        addText(u"Hidden"_s).hide();
        addText(u"Shown"_s);
        QCOMPARE(name(), u"Shown"_s);
    }

    void captionIsReadOnceWithItsValue() {
        addText(u"Passes"_s);
        addText(u"Variables"_s);
        addText(u"67%"_s).setCaption(u"Variables"_s);
        addText(u"Methods"_s);
        addText(u"0%"_s).setCaption(u"Methods"_s);
        QCOMPARE(name(), u"Passes. Variables: 67%. Methods: 0%"_s);
    }

    void pictureIsReadByItsName() {
        addText(u"Results"_s);
        for (const QString &name : {u"Pass mark 1: earned"_s, u"Pass mark 2: missing"_s}) {
            auto *picture = new platform::ImageLabel(section_.get());
            picture->setAccessibleName(name);
        }
        QCOMPARE(name(), u"Results. Pass mark 1: earned. Pass mark 2: missing"_s);
    }

    void nameFollowsTheText() {
        TextLabel &question = addText(u"First?"_s);
        TextLabel &score = addText(u"50%"_s);
        score.setCaption(u"Score"_s);
        QCOMPARE(name(), u"First? Score: 50%"_s);

        renamed.clear();
        question.setStringValue(u"Second."_s);
        QVERIFY(renamed.contains(section_.get()));
        QCOMPARE(name(), u"Second. Score: 50%"_s);
        score.setStringValue(u"67%"_s);
        QCOMPARE(name(), u"Second. Score: 67%"_s);
    }

    void focusIsDrawn_data() {
        QTest::addColumn<QPalette>("palette");
        QTest::addColumn<bool>("panel");
        for (const bool panel : {false, true}) {
            QTest::addRow("light, %s", panel ? "panel" : "plain") << QPalette() << panel;
            QTest::addRow("dark, %s", panel ? "panel" : "plain") << drawing::darkPalette() << panel;
        }
    }

    void focusIsDrawn() {
        QFETCH(const QPalette, palette);
        QFETCH(const bool, panel);
        QWidget window;
        window.setPalette(palette);
        Section section(&window);
        section.setFocusPolicy(Qt::StrongFocus);
        section.setProperty("panel", panel);
        section.setGeometry(10, 10, 300, 200);
        QPushButton another(&window);
        another.setFocus();
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const QColor accent = platform::look::accent(palette);
        QCOMPARE(drawing::pixels(section, accent), 0);

        const drawing::Paints drawn(section);
        section.setFocus();
        QVERIFY(section.hasFocus());
        QVERIFY2(QTest::qWaitFor([&] { return drawn.count() > 0; }),
                 "The section is not redrawn when it gets the focus");
        // The frame goes all the way round.
        QVERIFY(drawing::pixels(section, accent) >= 2 * (section.width() + section.height()));

        another.setFocus();
        QCOMPARE(drawing::pixels(section, accent), 0);
    }

    void sectionThatIsTooHighIsShownFromItsTop() {
        QScrollArea area;
        auto *content = new QWidget;
        auto *inContent = new QVBoxLayout(content);
        auto *above = new QWidget;
        above->setFixedHeight(300);
        auto *section = new Section;
        section->setFixedHeight(400);
        section->setFocusPolicy(Qt::StrongFocus);
        inContent->addWidget(above);
        inContent->addWidget(section);
        area.setWidget(content);
        area.resize(200, 100);
        area.show();
        QVERIFY(QTest::qWaitForWindowActive(&area));
        section->setFocus();
        QCOMPARE(section->mapTo(area.viewport(), QPoint(0, 0)).y(), 0);
    }

 private:
    TextLabel &addText(const QString &text) { return addText(*section_, text); }

    static TextLabel &addText(QWidget &parent, const QString &text) {
        auto *label = new TextLabel(&parent);
        label->setStringValue(text);
        return *label;
    }

    /// What a screen reader reads once the section is on screen.
    QString name() {
        section_->show();
        return QAccessible::queryAccessibleInterface(section_.get())->text(QAccessible::Name);
    }

    std::unique_ptr<Section> section_;
};

ZORVAN_TEST(tst_section)
#include "tst_section.moc"
