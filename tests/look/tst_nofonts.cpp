#include <QFontInfo>
#include <QRegularExpression>

#include "look/states.h"
#include "shell/appdelegate.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

/// On a system without any font nothing can be read, but no warning is written either.
class tst_nofonts final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void thereAreNoFonts();
    void everyWindowOpensWithoutAWarning_data();
    void everyWindowOpensWithoutAWarning();

 private:
    QMap<QString, states::State> states_;
    AppDelegate delegate_;
};

void tst_nofonts::thereAreNoFonts() {
    // With any font the other tests would prove nothing.
    QVERIFY(QFontInfo(QApplication::font()).pointSizeF() <= 0);
}

void tst_nofonts::everyWindowOpensWithoutAWarning_data() {
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

void tst_nofonts::everyWindowOpensWithoutAWarning() {
    QFETCH(const QString, state);
    QTest::failOnWarning(QRegularExpression(u"QFont|QPainter|QWidget"_s));
    states_[state]([](QWidget &window) { window.grab(); });
}

ZORVAN_TEST_MAIN(tst_nofonts)
#include "tst_nofonts.moc"
