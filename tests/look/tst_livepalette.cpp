#include <QRegularExpression>

#include "shell/appdelegate.h"
#include "support/drawing.h"
#include "support/states.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

using Pictures = QMap<QString, QImage>;

/// Waits until the windows know of a change, have been polished and have got their size.
void settle() {
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::processEvents();
    }
}

/// Every window on screen.
Pictures takePictures() {
    settle();
    Pictures pictures;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible()) {
            pictures[states::nameOf(*window)] = window->grab().toImage();
        }
    }
    return pictures;
}

}  // namespace

/// Windows that are open when the desktop's colours or its font change look as if they had been
/// opened afterwards: none keeps a colour, a size or a picture from before.
class tst_livepalette final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() { platform::Application::shared().loadMainLayout(delegate_); }

    void cleanup() {
        QApplication::setPalette(light_);
        QApplication::setFont(font_);
        desk::clear();
    }

    void openWindowsFollowThePalette_data() { addStates({}); }

    void openWindowsFollowThePalette() {
        follow([this] { QApplication::setPalette(light_); },
               [] { QApplication::setPalette(drawing::darkPalette()); });
    }

    void openWindowsFollowTheFont_data() {
        // What is under the pointer or scrolled into view depends on sizes.
        addStates(u"hovered|pressed|keys|open menu"_s);
    }

    void openWindowsFollowTheFont() {
        QFont large = font_;
        large.setPointSizeF(2 * font_.pointSizeF());
        follow([this] { QApplication::setFont(font_); }, [&] { QApplication::setFont(large); });
    }

 private:
    void addStates(const QString &without) {
        QTest::addColumn<QString>("state");
        const QRegularExpression left(without);
        const QStringList names = states_.keys();
        for (const QString &state : names) {
            if (without.isEmpty() || !state.contains(left)) {
                QTest::newRow(qUtf8Printable(state)) << state;
            }
        }
    }

    void follow(const std::function<void()> &first, const std::function<void()> &second) {
        QFETCH(const QString, state);
        Pictures before;
        Pictures switched;
        Pictures back;
        states_[state]([&](QWidget &) {
            before = takePictures();
            second();
            switched = takePictures();
            first();
            back = takePictures();
        });
        second();
        settle();
        Pictures opened;
        states_[state]([&](QWidget &) { opened = takePictures(); });

        QVERIFY(!before.isEmpty());
        QCOMPARE(before.keys(), opened.keys());
        QVERIFY2(switched != before, "Nothing changes");
        for (auto window = before.keyBegin(); window != before.keyEnd(); ++window) {
            QVERIFY2(switched[*window] == opened[*window],
                     qPrintable(*window + u" differs from one that was opened so"_s));
            QVERIFY2(back[*window] == before[*window],
                     qPrintable(*window + u" differs from before"_s));
        }
    }

    const QPalette light_ = QApplication::palette();
    const QFont font_ = QApplication::font();
    const QMap<QString, states::State> states_ = states::all();
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_livepalette)
#include "tst_livepalette.moc"
