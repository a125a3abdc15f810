#include <cstdio>

#include <QDir>
#include <QMessageBox>
#include <QPixmap>
#include <QStyle>
#include <QTemporaryDir>
#include <QTimer>

#include "platform/alert.h"
#include "platform/application.h"
#include "platform/controllers.h"
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

using namespace Qt::StringLiterals;

namespace {

class Album final {
 public:
    Album(QString folder, QString suffix)
        : folder_(std::move(folder)), suffix_(std::move(suffix)) {}

    void take(QWidget &window, const QString &name) {
        QCoreApplication::processEvents();
        const QString file = u"%1/%2-%3.png"_s.arg(folder_, name, suffix_);
        if (!window.grab().save(file)) {
            qFatal("Cannot write %s", qUtf8Printable(file));
        }
    }

 private:
    QString folder_;
    QString suffix_;
};

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

void takeQuiz(Album &album) {
    quizRun().random = [] { return 0U; };
    store::fill(withProgress(u"7"_s, u"0"_s));
    auto quiz = platform::makeController<MainTest>(u"MainTest"_s);
    quiz->showWindow();
    album.take(*quiz->window(), u"quiz-first"_s);
    quiz->Answer1Selected();
    quiz->timerFired();
    album.take(*quiz->window(), u"quiz-wrong"_s);
    for (const int question : {29, 48, 59}) {
        quizRun().questionOrder = {QString::number(question)};
        quizRun().questionIndex = 0;
        quiz->SetupQuestion();
        quiz->goNextQuestion();
        album.take(*quiz->window(), u"quiz-question-%1"_s.arg(question));
    }
    quizRun().questionIndex = 11;
    quizRun().correctCount = 8;
    quiz->Answer3Selected();
    album.take(*quiz->window(), u"quiz-correct"_s);
    desk::clear();
}

void takeAll(Album &album) {
    store::fill(withProgress(u"1"_s, u"pass"_s));
    takeOne<MainMenu>(album, u"MainMenu"_s, u"main-menu"_s);
    takeQuiz(album);
    for (const auto &[test, status, name] : {std::tuple{u"2"_s, u"pass"_s, u"results-pass"_s},
                                             std::tuple{u"1"_s, u"pass"_s, u"results-mastered"_s},
                                             std::tuple{u"3"_s, u"fail"_s, u"results-fail"_s}}) {
        store::fill(withProgress(test, status));
        takeOne<QuizComplete>(album, u"QuizComplete"_s, name);
    }
    takeOne<progress>(album, u"progress"_s, u"progress"_s);
    takeOne<SettingsController>(album, u"Settings"_s, u"settings"_s);
    takeOne<Help>(album, u"Help"_s, u"help"_s);

    platform::openWindow(u"MainMenu"_s);
    desk::clear();
    album.take(*desk::window(u"MainLayout"_s), u"way-back"_s);

    QTimer::singleShot(0, qApp, [&album] {
        QWidget *alert = QApplication::activeModalWidget();
        album.take(*alert, u"alert"_s);
        alert->close();
    });
    platform::Alert(
        u"This will reset all progress. Are you sure you want to clear your progress?"_s,
        {.defaultButton = u"Yes"_s, .alternateButton = u"No"_s})
        .runModal();
}

}  // namespace

/// Takes a picture of every window, light and dark, at normal and double text size, into the
/// folder that the only argument names.
int main(int argc, char **argv) {
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    installResources();
    fillControllerTable();
    platform::Application application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: pictures FOLDER\n", stderr);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(folder);
    AppDelegate delegate;
    application.loadMainLayout(delegate);

    const QPalette light = QApplication::palette();
    const QFont font = QApplication::font();
    for (const int text : {100, 200}) {
        QFont scaled = font;
        scaled.setPointSizeF(font.pointSizeF() * text / 100);
        QApplication::setFont(scaled);
        for (const bool dark : {false, true}) {
            QApplication::setPalette(dark ? drawing::darkPalette() : light);
            Album album(folder, u"%1-%2"_s.arg(dark ? u"dark"_s : u"light"_s).arg(text));
            takeAll(album);
        }
    }
    return 0;
}
