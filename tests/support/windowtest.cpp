#include "support/windowtest.h"

#include <QApplication>
#include <QTest>

#include "quizrun/quizrun.h"
#include "resources/resources.h"
#include "shell/controllertable.h"
#include "windowing/application.h"

void WindowTest::init() {
    store::fill(store::seeded());
    store::forgetWrites();
    quizRun().random = [] { return 0U; };
    alerts_.emplace();
}

void WindowTest::cleanup() {
    desk::clear();
    installResources();
    fillControllerTable();
    QApplication::setPalette(palette_);
    QApplication::setFont(font_);
    qApp->setStyleSheet({});
    QVERIFY(alerts_->verify());
}

void ProgramTest::init() {
    WindowTest::init();
    standardError_.emplace();
    delegate_ = std::make_unique<AppDelegate>();
    platform::Application::shared().loadMainLayout(*delegate_);
}

void ProgramTest::cleanup() {
    delegate_.reset();
    standardError_.reset();
    WindowTest::cleanup();
}
