#include <QImage>
#include <QRegularExpression>

#include "shell/appdelegate.h"
#include "support/drawing.h"
#include "support/states.h"
#include "support/testmain.h"

using namespace Qt::StringLiterals;

namespace {

using Windows = QList<QWidget *>;
using Pictures = QMap<QString, QImage>;
using LookAtAll = std::function<void(const Windows &)>;

platform::Window &wayBack() {
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *window = qobject_cast<platform::Window *>(widget);
        if (window != nullptr && window->objectName() == u"MainLayout") {
            return *window;
        }
    }
    qFatal("The main layout is not loaded");
}

/// Opens every window at once, and finally an alert.
void everyWindowAtOnce(const LookAtAll &look) {
    store::Contents contents = store::seeded();
    contents[u"currentTest"_s] = u"2"_s;
    contents[u"currentStatus"_s] = u"pass"_s;
    contents[u"quiz2"_s] = u"2"_s;
    store::fill(contents);
    quizRun().random = [] { return 0U; };
    // The results open the main menu.
    const QList<std::shared_ptr<platform::WindowController>> controllers{
        platform::makeController<QuizComplete>(u"QuizComplete"_s),
        platform::makeController<MainTest>(u"MainTest"_s),
        platform::makeController<progress>(u"progress"_s),
        platform::makeController<SettingsController>(u"Settings"_s),
        platform::makeController<Help>(u"Help"_s)};
    for (const auto &controller : controllers) {
        controller->showWindow();
    }
    Windows windows{desk::window(u"MainMenu"_s), &wayBack()};
    for (const auto &controller : controllers) {
        windows << controller->window();
    }
    wayBack().show();
    states::settle(*controllers.last()->window());
    platform::Application::shared().about();
    windows << &states::shownBox();

    Alerts alerts;
    alerts.answer(u"No"_s, [&] {
        windows << QApplication::activeModalWidget();
        states::settle(*windows.last());
        look(windows);
    });
    platform::Alert(u"Are you sure?"_s, {.defaultButton = u"Yes"_s, .alternateButton = u"No"_s})
        .runModal(nullptr);
    states::shownBox().close();
    wayBack().hide();
    desk::clear();
}

/// Waits until the windows know of a change, have been polished and have got their size.
void settle() {
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::processEvents();
    }
}

}  // namespace

/// Windows that are open when the desktop's colours or its font change look as if they had been
/// opened afterwards: none keeps a colour, a size or a picture from before.
class tst_livepalette final : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void initTestCase() {
        light_ = QApplication::palette();
        font_ = QApplication::font();
        platform::Application::shared().loadMainLayout(delegate_);
        const QMap<QString, states::State> single = states::all();
        for (auto state = single.begin(); state != single.end(); ++state) {
            states_[state.key()] = [show = *state](const LookAtAll &look) {
                show([&look](QWidget &window) { look({&window}); });
            };
        }
        states_[u"every window at once"_s] = everyWindowAtOnce;
    }

    void cleanup() {
        desk::clear();
        QApplication::setPalette(light_);
        QApplication::setFont(font_);
    }

    void openWindowsFollowThePalette_data() {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QPalette>("first");
        QTest::addColumn<QPalette>("second");
        for (auto state = states_.keyBegin(); state != states_.keyEnd(); ++state) {
            const QPalette dark = drawing::darkPalette();
            QTest::addRow("%s, opened light", qUtf8Printable(*state)) << *state << light_ << dark;
            QTest::addRow("%s, opened dark", qUtf8Printable(*state)) << *state << dark << light_;
        }
    }

    void openWindowsFollowThePalette() {
        QFETCH(const QPalette, first);
        QFETCH(const QPalette, second);
        follow([&] { wear(first); }, [&] { wear(second); });
    }

    void openWindowsFollowTheFont_data() { addStatesWithoutPointer(); }

    void openWindowsFollowTheFont() {
        const auto wearFont = [this](double times) {
            QFont font = font_;
            font.setPointSizeF(times * font_.pointSizeF());
            QApplication::setFont(font);
            settle();
        };
        follow([&] { wearFont(1); }, [&] { wearFont(2); });
    }

 private:
    using Wear = std::function<void()>;

    void follow(const Wear &first, const Wear &second) {
        QFETCH(const QString, state);
        Pictures before;
        Pictures switched;
        Pictures back;
        first();
        states_[state]([&](const Windows &windows) {
            take(before, windows);
            second();
            take(switched, windows);
            first();
            take(back, windows);
        });
        Pictures opened;
        second();
        states_[state]([&](const Windows &windows) { take(opened, windows); });

        QVERIFY(!before.isEmpty());
        QVERIFY2(!differences(switched, before).isEmpty(), "Nothing changes");
        QString found = differences(switched, opened);
        QVERIFY2(found.isEmpty(), qPrintable(u"Switched, compared with opened so: "_s + found));
        found = differences(back, before);
        QVERIFY2(found.isEmpty(), qPrintable(u"Switched back, compared with before: "_s + found));
    }

    void addStatesWithoutPointer() {
        QTest::addColumn<QString>("state");
        for (auto state = states_.keyBegin(); state != states_.keyEnd(); ++state) {
            // What is under the pointer or scrolled into view depends on sizes.
            static const QRegularExpression fixed(u"hovered|pressed|scrolled|menu$|tip"_s);
            if (!state->contains(fixed)) {
                QTest::addRow("%s", qUtf8Printable(*state)) << *state;
            }
        }
    }

    static void wear(const QPalette &palette) {
        QApplication::setPalette(palette);
        QCoreApplication::processEvents();
    }

    static void take(Pictures &pictures, const Windows &windows) {
        for (QWidget *window : windows) {
            const QString name = window->objectName().isEmpty()
                                     ? QString::fromLatin1(window->metaObject()->className())
                                     : window->objectName();
            pictures[u"window %1, %2"_s.arg(pictures.size() + 1).arg(name)] =
                window->grab().toImage();
        }
    }

    static QString differences(const Pictures &pictures, const Pictures &wanted) {
        QStringList differences;
        for (auto picture = pictures.begin(); picture != pictures.end(); ++picture) {
            const QImage &other = wanted[picture.key()];
            if (other.size() != picture->size()) {
                differences << u"%1 has %2 x %3 pixels, wanted are %4 x %5"_s.arg(picture.key())
                                   .arg(picture->width())
                                   .arg(picture->height())
                                   .arg(other.width())
                                   .arg(other.height());
                continue;
            }
            QRect box;
            for (int y = 0; y < other.height(); ++y) {
                for (int x = 0; x < other.width(); ++x) {
                    if (picture->pixel(x, y) != other.pixel(x, y)) {
                        box |= QRect(x, y, 1, 1);
                    }
                }
            }
            if (!box.isEmpty()) {
                differences << u"%1 differs within %2 x %3 pixels at %4, %5"_s.arg(picture.key())
                                   .arg(box.width())
                                   .arg(box.height())
                                   .arg(box.x())
                                   .arg(box.y());
            }
        }
        return differences.join(u'\n');
    }

    QPalette light_;
    QFont font_;
    QMap<QString, std::function<void(const LookAtAll &)>> states_;
    AppDelegate delegate_;
};

ZORVAN_TEST(tst_livepalette)
#include "tst_livepalette.moc"
