#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QProxyStyle>
#include <QPushButton>
#include <QTest>

#include "controls/messagebox.h"
#include "look/polish.h"
#include "support/desk.h"
#include "support/optics.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

using platform::MessageBox;

namespace {

/// The order of buttons on some desktop.
class DesktopStyle final : public QProxyStyle {
    Q_OBJECT

 public:
    explicit DesktopStyle(QDialogButtonBox::ButtonLayout layout) : layout_(layout) {}

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override {
        return hint == SH_DialogButtonLayout
                   ? layout_
                   : QProxyStyle::styleHint(hint, option, widget, returned);
    }

 private:
    QDialogButtonBox::ButtonLayout layout_;
};

QList<optics::Text> linesOf(MessageBox &box) {
    QList<optics::Text> lines = optics::texts(box);
    lines.removeIf([](const optics::Text &line) { return line.text == u"OK"; });
    return lines;
}

}  // namespace

class tst_messagebox final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void buttonsStandInTheDesktopsOrder_data() {
        QTest::addColumn<QDialogButtonBox::ButtonLayout>("layout");
        QTest::addColumn<QStringList>("order");
        QTest::newRow("Windows") << QDialogButtonBox::WinLayout << QStringList{u"Yes"_s, u"No"_s};
        QTest::newRow("KDE") << QDialogButtonBox::KdeLayout << QStringList{u"Yes"_s, u"No"_s};
        QTest::newRow("GNOME") << QDialogButtonBox::GnomeLayout << QStringList{u"No"_s, u"Yes"_s};
        QTest::newRow("macOS") << QDialogButtonBox::MacLayout << QStringList{u"No"_s, u"Yes"_s};
    }

    void buttonsStandInTheDesktopsOrder() {
        QFETCH(const QDialogButtonBox::ButtonLayout, layout);
        DesktopStyle style(layout);
        MessageBox box(u"Sure?"_s, {}, nullptr);
        box.findChild<QDialogButtonBox *>()->setStyle(&style);
        box.addButton(u"Yes"_s, QDialogButtonBox::AcceptRole, 1);
        box.addButton(u"No"_s, QDialogButtonBox::RejectRole, 0);
        box.show();
        QList<QPushButton *> buttons = box.findChildren<QPushButton *>();
        std::ranges::sort(buttons, {}, &QWidget::x);
        QStringList texts;
        for (const QPushButton *button : buttons) {
            texts << button->text();
        }
        QTEST(texts, "order");
    }

    void noLineIsMuchShorterThanTheOthers_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lines");
        QTest::newRow("one line") << u"All progress on quizzes has been reset"_s << 1;
        QTest::newRow("one word too many")
            << u"This will reset all progress. Are you certain of what you do?"_s << 2;
        QTest::newRow("two sentences")
            << u"This will reset all progress. Are you sure you want to clear your progress?"_s
            << 2;
        QTest::newRow("one long sentence")
            << u"Welcome to Zorvan, this is the main progress screen where you can select quizzes "
               "to take and track your progress."_s
            << 3;
    }

    void noLineIsMuchShorterThanTheOthers() {
        QFETCH(const QString, text);
        QFETCH(const int, lines);
        MessageBox box(text, {}, nullptr);
        box.addButton(u"OK"_s, QDialogButtonBox::AcceptRole, 1);
        platform::look::polish(box);
        box.show();
        const QList<optics::Text> drawn = linesOf(box);
        QCOMPARE(drawn.size(), lines);
        const auto [shortest, longest] = std::ranges::minmax_element(
            drawn, {}, [](const optics::Text &line) { return line.place.width(); });
        QVERIFY(shortest->place.width() * 3 > longest->place.width() * 2);
        QVERIFY(longest->text.size() <= 60);
    }

    void messageIsLargerThanWhatExplainsIt() {
        MessageBox box(u"Message"_s, u"Explanation"_s, nullptr);
        box.addButton(u"OK"_s, QDialogButtonBox::AcceptRole, 1);
        platform::look::polish(box);
        box.show();
        const QList<optics::Text> drawn = linesOf(box);
        QCOMPARE(drawn.size(), 2);
        QVERIFY(drawn[0].font.pointSizeF() > 1.3 * drawn[1].font.pointSizeF());
        QVERIFY(drawn[0].place.bottom() < drawn[1].place.top());
        QCOMPARE(drawn[0].place.left(), drawn[1].place.left());
    }

    void textsStandTogetherAndOffTheIcon() {
        MessageBox box(u"Message"_s, u"Explanation"_s, nullptr);
        box.addButton(u"OK"_s, QDialogButtonBox::AcceptRole, 1);
        box.setIcon(QIcon(), u"Zorvan"_s);
        platform::look::polish(box);
        box.show();
        const auto place = [&box](int label) {
            return desk::placeIn(box, *box.findChildren<QLabel *>().at(label));
        };
        const QRect message = place(0);
        const QRect explanation = place(1);
        const QRect icon = place(2);
        const int line = box.fontMetrics().height();
        QVERIFY(message.left() - icon.right() > line);
        QVERIFY(explanation.top() - message.bottom() >= line / 3);
        QVERIFY(explanation.top() - message.bottom() < line);
        QVERIFY(icon.top() <= message.top());
    }

    void boxIsAsLargeAsItsContent() {
        MessageBox box(u"Message"_s, {}, nullptr);
        box.addButton(u"OK"_s, QDialogButtonBox::AcceptRole, 1);
        platform::look::keepPolished(box);
        box.show();
        const QSize before = box.size();
        QFont font = box.font();
        font.setPointSizeF(2 * font.pointSizeF());
        box.setFont(font);
        QTRY_VERIFY(box.height() > 1.8 * before.height());
        box.resize(before);
        QCOMPARE(box.size(), box.sizeHint());
    }

    void boxHasAnEdge() {
        MessageBox box(u"Message"_s, {}, nullptr);
        box.addButton(u"OK"_s, QDialogButtonBox::AcceptRole, 1);
        box.show();
        const QImage picture = box.grab().toImage();
        const QPoint last = picture.rect().bottomRight();
        for (const QPoint &edge : {QPoint(last.x() / 2, 0), QPoint(last.x() / 2, last.y()),
                                   QPoint(0, last.y() / 2), QPoint(last.x(), last.y() / 2)}) {
            QVERIFY(picture.pixel(edge) != picture.pixel(2, 2));
        }
    }

    void messageCanBeCopied() {
        MessageBox box(u"<b>Message</b>"_s, {}, nullptr);
        box.addButton(u"OK"_s, QDialogButtonBox::AcceptRole, 1);
        box.show();
        QTest::keyClick(&box, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"<b>Message</b>"_s);
        QVERIFY(box.isVisible());
    }

    void screenReaderIsToldThatItIsAnAlert() {
        MessageBox box(u"Message"_s, {}, nullptr);
        box.addButton(u"OK"_s, QDialogButtonBox::AcceptRole, 1);
        QCOMPARE(QAccessible::queryAccessibleInterface(&box)->role(), QAccessible::AlertMessage);
        box.setIcon(QIcon(), u"Zorvan"_s);
        QList<QAccessible::Role> roles;
        for (QLabel *label : box.findChildren<QLabel *>()) {
            roles << QAccessible::queryAccessibleInterface(label)->role();
        }
        QCOMPARE(roles.count(QAccessible::Graphic), 1);
        QCOMPARE(roles.count(QAccessible::StaticText), 2);
    }
};

ZORVAN_TEST(tst_messagebox)
#include "tst_messagebox.moc"
