#include "resources/resources.h"

#include <QDir>

#include "ui_Help.h"
#include "ui_MainLayout.h"
#include "ui_MainMenu.h"
#include "ui_MainTest.h"
#include "ui_QuizComplete.h"
#include "ui_Settings.h"
#include "ui_progress.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

namespace {

template <class Form>
void build(QMainWindow &window) {
    Form().setupUi(&window);
}

}  // namespace

void installResources() {
    Q_INIT_RESOURCE(resources);
    QDir::setSearchPaths(u"images"_s, {u":/images"_s});
    platform::layouts() = {
        {u"MainLayout"_s, build<Ui::MainLayout>},
        {u"MainMenu"_s, build<Ui::MainMenu>},
        {u"MainTest"_s, build<Ui::MainTest>},
        {u"QuizComplete"_s, build<Ui::QuizComplete>},
        {u"progress"_s, build<Ui::progress>},
        {u"Settings"_s, build<Ui::Settings>},
        {u"Help"_s, build<Ui::Help>},
    };
}
