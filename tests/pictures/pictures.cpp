#include <cstdio>
#include <cstdlib>

#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QMessageBox>
#include <QPixmap>
#include <QRawFont>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QtEndian>

#include "progress/progress.h"
#include "progress/quizcomplete.h"
#include "quizrun/maintest.h"
#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"
#include "shell/help.h"
#include "shell/mainmenu.h"
#include "shell/settingscontroller.h"
#include "support/desk.h"
#include "support/drawing.h"
#include "support/store.h"
#include "windowing/alert.h"
#include "windowing/application.h"
#include "windowing/controllers.h"

using namespace Qt::StringLiterals;

namespace {

class Album final {
 public:
    Album(QString folder, QString theme) : folder_(std::move(folder)), theme_(std::move(theme)) {}

    void take(QWidget &window, const QString &name) {
        QCoreApplication::processEvents();
        const QPixmap picture = window.grab();
        const int scale = qRound(picture.devicePixelRatio());
        const QString file = u"%1/%2-%3%4.png"_s.arg(folder_, name, theme_,
                                                     scale == 1 ? QString() : u"@%1x"_s.arg(scale));
        if (!picture.save(file, nullptr, 0)) {
            qFatal("Cannot write %s", qUtf8Printable(file));
        }
    }

 private:
    QString folder_;
    QString theme_;
};

/// Notes beside the pictures which font they are drawn with: another version may space letters
/// differently.
void nameFont(const QFont &font, const QString &folder) {
    // In 65536ths; it follows the version of the table itself.
    const QByteArray head = QRawFont::fromFont(font).fontTable("head");
    const double version = qFromBigEndian<qint32>(head.sliced(4).constData()) / 65536.0;
    QFile file(folder + u"/font.txt"_s);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(u"%1 %2\n"_s.arg(font.family()).arg(version, 0, 'f', 3).toUtf8()) < 0) {
        qFatal("Cannot write %s", qUtf8Printable(file.fileName()));
    }
}

store::Contents withProgress(const QString &test, const QString &status) {
    store::Contents contents = store::seeded();
    contents[u"quiz1"_s] = u"3"_s;
    contents[u"quiz2"_s] = u"2"_s;
    contents[u"quiz3"_s] = u"1"_s;
    contents[u"quiz5"_s] = u"3"_s;
    contents[u"currentTest"_s] = test;
    contents[u"currentStatus"_s] = status;
    contents[u"timedQuizzes"_s] = u"yes"_s;
    return contents;
}

template <class Controller>
void takeOne(Album &album, const QString &layout, const QString &name) {
    auto controller = platform::makeController<Controller>(layout);
    controller->showWindow();
    album.take(*controller->window(), name);
    desk::clear();
}

void takeMainMenu(Album &album) {
    store::fill(store::seeded());
    takeOne<MainMenu>(album, u"MainMenu"_s, u"main-menu-new"_s);
    store::fill(withProgress(u"1"_s, u"pass"_s));
    takeOne<MainMenu>(album, u"MainMenu"_s, u"main-menu"_s);
    store::Contents mastered = store::seeded();
    for (int quiz = 1; quiz <= 7; ++quiz) {
        mastered[u"quiz%1"_s.arg(quiz)] = u"3"_s;
    }
    store::fill(mastered);
    takeOne<MainMenu>(album, u"MainMenu"_s, u"main-menu-mastered"_s);
}

void takeQuiz(Album &album) {
    quizRun().random = [] { return 0U; };
    store::fill(withProgress(u"7"_s, u"0"_s));
    auto quiz = platform::makeController<MainTest>(u"MainTest"_s);
    quiz->showWindow();
    quiz->timerFired();
    album.take(*quiz->window(), u"quiz-short"_s);

    const auto show = [&](int question) {
        quizRun().questionOrder[11] = QString::number(question);
        quizRun().questionIndex = 11;
        quizRun().correctCount = 8;
        quiz->goNextQuestion();
    };
    show(48);
    album.take(*quiz->window(), u"quiz-long"_s);
    show(59);
    album.take(*quiz->window(), u"quiz-code"_s);
    quiz->Answer3Selected();
    album.take(*quiz->window(), u"quiz-correct"_s);
    show(56);
    quiz->Answer1Selected();
    album.take(*quiz->window(), u"quiz-wrong"_s);
    desk::clear();
}

void takeHelp(Album &album) {
    auto help = platform::makeController<Help>(u"Help"_s);
    help->showWindow();
    album.take(*help->window(), u"help"_s);
    QScrollBar &bar =
        *desk::control<QScrollArea>(help->window(), u"scrollArea"_s).verticalScrollBar();
    bar.setValue(bar.maximum());
    album.take(*help->window(), u"help-keys"_s);
    desk::clear();
}

void takeAll(Album &album) {
    takeMainMenu(album);
    takeQuiz(album);
    for (const auto &[test, status, name] : {std::tuple{u"2"_s, u"pass"_s, u"results-pass"_s},
                                             std::tuple{u"1"_s, u"pass"_s, u"results-mastered"_s},
                                             std::tuple{u"3"_s, u"fail"_s, u"results-fail"_s}}) {
        store::fill(withProgress(test, status));
        takeOne<QuizComplete>(album, u"QuizComplete"_s, name);
    }
    takeOne<progress>(album, u"progress"_s, u"progress"_s);
    takeOne<SettingsController>(album, u"Settings"_s, u"settings"_s);
    takeHelp(album);

    platform::openWindow(u"MainMenu"_s);
    desk::clear();
    album.take(*desk::window(u"MainLayout"_s), u"way-back"_s);

    platform::Application::shared().about();
    for (QWidget *about : QApplication::topLevelWidgets()) {
        if (about->isVisible() && qobject_cast<QMessageBox *>(about) != nullptr) {
            album.take(*about, u"about"_s);
            about->close();
        }
    }

    QTimer::singleShot(0, qApp, [&album] {
        QWidget *alert = QApplication::activeModalWidget();
        album.take(*alert, u"alert"_s);
        alert->close();
    });
    platform::Alert(
        u"This will reset all progress. Are you sure you want to clear your progress?"_s,
        {.defaultButton = u"Yes"_s, .alternateButton = u"No"_s})
        .runModal(nullptr);
}

}  // namespace

/// Takes a picture of every window, light and dark. The first argument is the folder to save them
/// in; the second, if there is one, the text size in percent.
int main(int argc, char **argv) {
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    installResources();
    fillControllerTable();
    platform::Application application(argc, argv);
    if (argc != 2 && argc != 3) {
        std::fputs("usage: pictures FOLDER [TEXT-SIZE-IN-PERCENT]\n", stderr);
        return 2;
    }
    constexpr double pointSize = 11;
    QFont font(u"Cantarell"_s);
    font.setPointSizeF(pointSize * (argc == 3 ? QByteArray(argv[2]).toInt() : 100) / 100);
    if (QFontInfo(font).family() != font.family()) {
        std::fputs("The pictures are drawn with Cantarell (Debian: fonts-cantarell).\n", stderr);
        return 1;
    }
    QApplication::setFont(font);

    const QString folder = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(folder);
    nameFont(font, folder);
    AppDelegate delegate;
    application.loadMainLayout(delegate);

    Album light(folder, u"light"_s);
    takeAll(light);
    QApplication::setPalette(drawing::darkPalette());
    Album dark(folder, u"dark"_s);
    takeAll(dark);
    return 0;
}
