#include <cstdio>

#include <QDir>
#include <QFontInfo>
#include <QPixmap>
#include <QRegularExpression>

#include "resources/resources.h"
#include "shell/appdelegate.h"
#include "shell/controllertable.h"
#include "support/palettes.h"
#include "support/states.h"
#include "support/storehome.h"

using namespace Qt::StringLiterals;

namespace {

/// Where a picture is kept: named as the state, the theme and the density of the screen.
QString fileOf(const QString &folder, const QString &state, const QString &theme, double density) {
    static const QRegularExpression blanks(u",? "_s);
    const QString suffix = density == 1 ? QString() : u"@%1x"_s.arg(density);
    const QString name = u"%1-%2"_s.arg(state, theme).replace(blanks, u"-"_s);
    return u"%1/%2%3.png"_s.arg(folder, name, suffix);
}

void takeAll(const QString &folder, const QString &theme) {
    // A menu alone, or what is under the pointer, is of no use to a reader.
    static const QRegularExpression unsuitable(u"menu$|hovered|pressed"_s);
    const QMap<QString, states::State> states = states::all();
    for (auto state = states.begin(); state != states.end(); ++state) {
        if (state.key() != u"main menu" && state.key().contains(unsuitable)) {
            continue;
        }
        (*state)([&](QWidget &window) {
            const QPixmap picture = window.grab();
            const QString file = fileOf(folder, state.key(), theme, picture.devicePixelRatio());
            if (!picture.save(file, nullptr, 0)) {
                qFatal("Cannot write %s", qUtf8Printable(file));
            }
        });
    }
}

}  // namespace

/// Takes a picture of every window. The first argument is the folder to save them in; the second,
/// if there is one, the text size in percent; the others the names of palettes, by default light
/// and dark.
int main(int argc, char **argv) {
    const StoreHome home;
    installResources();
    fillControllerTable();
    platform::Application application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        std::fputs("usage: pictures FOLDER [TEXT-SIZE-IN-PERCENT [PALETTE...]]\n", stderr);
        return 2;
    }
    constexpr double pointSize = 11;
    QFont font(u"Cantarell"_s);
    font.setPointSizeF(pointSize * arguments.value(2, u"100"_s).toInt() / 100);
    if (QFontInfo(font).family() != font.family()) {
        std::fputs("The pictures are drawn with Cantarell (Debian: fonts-cantarell).\n", stderr);
        return 1;
    }
    QApplication::setFont(font);

    const QString &folder = arguments.at(1);
    QDir().mkpath(folder);
    AppDelegate delegate;
    application.loadMainLayout(delegate);
    const QStringList themes =
        arguments.size() > 3 ? arguments.mid(3) : QStringList{u"light"_s, u"dark"_s};
    for (const auto &[name, palette] : palettes::all()) {
        const QString theme = QString::fromLatin1(name);
        if (themes.contains(theme)) {
            QApplication::setPalette(palette);
            takeAll(folder, theme);
        }
    }
    return 0;
}
