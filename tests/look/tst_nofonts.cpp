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
    void everyWindowOpensWithoutAWarning() {
        // With any font this would prove nothing.
        QVERIFY(QFontInfo(QApplication::font()).pointSizeF() <= 0);
        platform::Application::shared().loadMainLayout(delegate_);
        // Qt itself asks for sizes that do not exist when it draws the items of a menu, and a
        // control may have no size to point at.
        static const QRegularExpression left(u"open menu|hovered|pressed"_s);
        QTest::failOnWarning(QRegularExpression(u"QFont|QPainter|QWidget"_s));
        const QMap<QString, states::State> states = states::all();
        for (auto state = states.begin(); state != states.end(); ++state) {
            if (!state.key().contains(left)) {
                (*state)([](QWidget &window) { window.grab(); });
            }
        }
    }

 private:
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_nofonts)
#include "tst_nofonts.moc"
