#include <QFontInfo>
#include <QRegularExpression>

#include "shell/appdelegate.h"
#include "support/states.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

/// On a system without any font nothing can be read, but no warning is written either.
class tst_nofonts final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void thereAreNoFonts() {
        // With any font the other tests would prove nothing.
        QVERIFY(QFontInfo(QApplication::font()).pointSizeF() <= 0);
    }

    void everyWindowOpensWithoutAWarning_data() {
        platform::Application::shared().loadMainLayout(delegate_);
        states_ = states::all();
        // Qt itself asks for sizes that do not exist when it draws the items of a menu.
        states_.remove(u"open menu"_s);
        // Without a font a control may have no size to point at.
        states_.removeIf([](const auto &state) {
            return state.key().contains(u"hovered") || state.key().contains(u"pressed");
        });
        QTest::addColumn<QString>("state");
        for (auto state = states_.keyBegin(); state != states_.keyEnd(); ++state) {
            QTest::addRow("%s", qUtf8Printable(*state)) << *state;
        }
    }

    void everyWindowOpensWithoutAWarning() {
        QFETCH(const QString, state);
        QTest::failOnWarning(QRegularExpression(u"QFont|QPainter|QWidget"_s));
        states_[state]([](QWidget &window) { window.grab(); });
    }

 private:
    QMap<QString, states::State> states_;
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_nofonts)
#include "tst_nofonts.moc"
