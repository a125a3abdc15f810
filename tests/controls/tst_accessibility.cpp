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
#include "controls/section.h"
#include "controls/textlabel.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

class tst_accessibility final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void controlsAreWhatTheyLookLike() {
        platform::ImageLabel picture;
        QCOMPARE(roleOf(picture), QAccessible::Graphic);
        platform::Section section;
        QCOMPARE(roleOf(section), QAccessible::Grouping);
        QFrame line;
        line.setFrameShape(QFrame::HLine);
        QCOMPARE(roleOf(line), QAccessible::Separator);
    }

    void otherControlsAreLeftToQt() {
        QObject object;
        QWidget widget;
        QFrame frame;
        QLabel label;
        QPushButton button;
        platform::TextLabel text;
        platform::RowButton rowButton;
        for (QObject *other : std::initializer_list<QObject *>{&object, &widget, &frame, &label,
                                                               &button, &text, &rowButton}) {
            QVERIFY2(platform::describeControl(QString(), other) == nullptr,
                     other->metaObject()->className());
        }
    }

    void rowHoldsItsControlsButNotItsText() {
        platform::ActionRow row;
        platform::RowButton button(u"A"_s, &row);
        platform::TextLabel text(&row);
        const platform::TextLabel more(&row);
        platform::LevelIndicator level(&row);
        text.setStringValue(u"C & Perl"_s);
        row.show();

        const QAccessibleInterface *read = QAccessible::queryAccessibleInterface(&row);
        QCOMPARE(read->childCount(), 2);
        QCOMPARE(read->child(0)->object(), &button);
        QCOMPARE(read->child(1)->object(), &level);
        QCOMPARE(read->child(2), nullptr);
        QCOMPARE(read->indexOfChild(read->child(1)), 1);
        QCOMPARE(read->indexOfChild(QAccessible::queryAccessibleInterface(&text)), -1);

        QCOMPARE(button.accessibleName(), u"A: C & Perl"_s);
        text.setStringValue(u"<b>ASP</b>"_s);
        QCOMPARE(button.accessibleName(), u"A: <b>ASP</b>"_s);
        text.setStringValue(QString());
        QCOMPARE(button.accessibleName(), u"A: empty"_s);
    }

    void levelTellsItsValueWhenAsked() {
        platform::LevelIndicator level;
        level.setMaximum(21);
        level.setDoubleValue(4);
        QCOMPARE(roleOf(level), QAccessible::ProgressBar);
        QAccessibleValueInterface *value =
            QAccessible::queryAccessibleInterface(&level)->valueInterface();
        QVERIFY(value != nullptr);
        QCOMPARE(value->minimumValue().toDouble(), 0.0);
        QCOMPARE(value->maximumValue().toDouble(), 21.0);
        QCOMPARE(value->minimumStepSize().toDouble(), 1.0);
        value->setCurrentValue(5.0);
        QCOMPARE(value->currentValue().toDouble(), 4.0);
        level.setDoubleValue(6);
        QCOMPARE(value->currentValue().toDouble(), 6.0);
    }

 private:
    static QAccessible::Role roleOf(QWidget &control) {
        return QAccessible::queryAccessibleInterface(&control)->role();
    }
};

ZORVAN_TEST(tst_accessibility)
#include "tst_accessibility.moc"
