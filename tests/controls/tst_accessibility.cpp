#include <QAccessible>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "controls/accessibility.h"
#include "controls/actionrow.h"
#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/rowbutton.h"
#include "controls/textlabel.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_accessibility final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void pictureIsAGraphic() {
        platform::ImageLabel picture;
        picture.setAccessibleName(u"Pass mark 1: earned"_s);
        const QAccessibleInterface *read = QAccessible::queryAccessibleInterface(&picture);
        QCOMPARE(read->role(), QAccessible::Graphic);
        QCOMPARE(read->text(QAccessible::Name), u"Pass mark 1: earned"_s);
    }

    void rowHoldsItsControlsButNotItsText() {
        platform::ActionRow row;
        platform::RowButton button(u"Variables"_s, &row);
        platform::TextLabel text(&row);
        platform::TextLabel more(&row);
        platform::LevelIndicator level(&row);
        text.setStringValue(u"19 questions"_s);
        row.show();

        const QAccessibleInterface *read = QAccessible::queryAccessibleInterface(&row);
        QCOMPARE(read->childCount(), 2);
        QCOMPARE(read->child(0)->object(), &button);
        QCOMPARE(read->child(1)->object(), &level);
        QCOMPARE(read->child(2), nullptr);
        QCOMPARE(read->indexOfChild(read->child(0)), 0);
        QCOMPARE(read->indexOfChild(read->child(1)), 1);
        QCOMPARE(read->indexOfChild(QAccessible::queryAccessibleInterface(&text)), -1);
        QCOMPARE(read->child(0)->text(QAccessible::Name), u"Variables: 19 questions"_s);
    }

    void levelTellsItsValueWhenAsked() {
        platform::LevelIndicator level;
        level.setMaximum(21);
        level.setDoubleValue(4);
        QAccessibleInterface *read = QAccessible::queryAccessibleInterface(&level);
        QCOMPARE(read->role(), QAccessible::ProgressBar);
        QAccessibleValueInterface *value = read->valueInterface();
        QVERIFY(value != nullptr);
        QCOMPARE(value->minimumValue().toDouble(), 0.0);
        QCOMPARE(value->currentValue().toDouble(), 4.0);
        QCOMPARE(value->maximumValue().toDouble(), 21.0);
        QCOMPARE(value->minimumStepSize().toDouble(), 1.0);
        value->setCurrentValue(5.0);
        QCOMPARE(level.doubleValue(), 4.0);
        level.setDoubleValue(6);
        QCOMPARE(value->currentValue().toDouble(), 6.0);
    }

    void lineIsASeparator() {
        QFrame line;
        line.setFrameShape(QFrame::HLine);
        QCOMPARE(QAccessible::queryAccessibleInterface(&line)->role(), QAccessible::Separator);
    }

    void otherFramesAreLeftToQt_data() {
        QTest::addColumn<QFrame::Shape>("shape");
        QTest::newRow("none") << QFrame::NoFrame;
        QTest::newRow("box") << QFrame::Box;
        QTest::newRow("panel") << QFrame::Panel;
        QTest::newRow("styled panel") << QFrame::StyledPanel;
    }

    void otherFramesAreLeftToQt() {
        QFETCH(const QFrame::Shape, shape);
        QFrame frame;
        frame.setFrameShape(shape);
        QVERIFY(platform::describeControl(QString(), &frame) == nullptr);
    }

    void otherControlsAreLeftToQt() {
        QObject object;
        QWidget widget;
        QLabel label;
        QPushButton button;
        platform::TextLabel text;
        platform::RowButton rowButton;
        for (QObject *other : std::initializer_list<QObject *>{&object, &widget, &label, &button,
                                                               &text, &rowButton}) {
            QVERIFY2(platform::describeControl(QString(), other) == nullptr,
                     other->metaObject()->className());
        }
    }
};

ZORVAN_TEST(tst_accessibility)
#include "tst_accessibility.moc"
