#include <QAccessible>
#include <QScrollArea>
#include <QTest>
#include <QVBoxLayout>

#include "controls/actionrow.h"
#include "controls/imagelabel.h"
#include "controls/rowbutton.h"
#include "controls/section.h"
#include "controls/textlabel.h"
#include "look/palette.h"
#include "support/keyboard.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::Section;
using platform::TextLabel;

class tst_section final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void init() { section_ = std::make_unique<Section>(); }

    void cleanup() { section_.reset(); }

    void nameIsTheTextInOrder() {
        for (const QString &text : {u"a && b &c"_s, u"<b>&amp;</b>"_s, u"Stop."_s, u"Why?"_s,
                                    u"Go!"_s, u"So:"_s, u"But,"_s, u"end"_s}) {
            addText(*section_, text);
        }
        auto *picture = new platform::ImageLabel(section_.get());
        picture->setAccessibleName(u"Pass mark: earned"_s);
        addText(*section_, u"Hidden"_s).hide();
        QCOMPARE(name(),
                 u"a && b &c. <b>&amp;</b>. Stop. Why? Go! So: But,. end. Pass mark: earned"_s);
    }

    void textOfRowsAndOfSectionsWithinIsLeftOut() {
        addText(*section_, u"Which one?"_s);
        auto *row = new platform::ActionRow(section_.get());
        new platform::RowButton(u"A"_s, row);
        addText(*new QWidget(row), u"an answer"_s);
        auto *within = new Section(section_.get());
        addText(*within, u"Inside"_s);
        addText(*new QWidget(section_.get()), u"Deeper"_s);
        QCOMPARE(name(), u"Which one? Deeper"_s);
        QCOMPARE(within->accessibleName(), u"Inside"_s);
    }

    void captionIsReadOnceWithItsValue() {
        addText(*section_, u"Passes"_s);
        addText(*section_, u"Variables"_s);
        addText(*section_, u"67%"_s).setCaption(u"Variables"_s);
        QCOMPARE(name(), u"Passes. Variables: 67%"_s);
    }

    void nameFollowsTheText() {
        TextLabel &question = addText(*section_, u"First?"_s);
        TextLabel &score = addText(*section_, u"50%"_s);
        score.setCaption(u"Score"_s);
        QCOMPARE(name(), u"First? Score: 50%"_s);
        question.setStringValue(u"Second."_s);
        QCOMPARE(name(), u"Second. Score: 50%"_s);
        score.setStringValue(u"67%"_s);
        QCOMPARE(name(), u"Second. Score: 67%"_s);
    }

    void panelAndFocusAreDrawn() {
        QWidget window;
        Section section(&window);
        section.setFocusPolicy(Qt::StrongFocus);
        section.setGeometry(10, 10, 300, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const QColor background = window.palette().color(QPalette::Window);
        const QColor accent = platform::look::accent(window.palette());
        const auto at = [&](int y) { return section.grab().toImage().pixelColor(150, y); };
        keyboard::use(window);
        QVERIFY(section.hasFocus());
        QCOMPARE(at(0), accent);
        QCOMPARE(at(100), background);
        section.clearFocus();
        QCOMPARE(at(0), background);
        section.setProperty("panel", true);
        QVERIFY(at(0) != background && at(0) != accent);
        QVERIFY(at(100) != background);
        section.setFocus();
        QCOMPARE(at(0), accent);
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
    static TextLabel &addText(QWidget &parent, const QString &text) {
        auto *label = new TextLabel(&parent);
        label->setStringValue(text);
        return *label;
    }

    /// What a screen reader reads while the section is on screen.
    QString name() {
        section_->show();
        return QAccessible::queryAccessibleInterface(section_.get())->text(QAccessible::Name);
    }

    std::unique_ptr<Section> section_;
};

ZORVAN_TEST(tst_section)
#include "tst_section.moc"
