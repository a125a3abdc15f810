#pragma once

#include <functional>

#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "system/exception.h"
#include "windowing/layouts.h"
#include "windowing/outlets.h"
#include "windowing/windowcontroller.h"

/// The message of the exception that `body` throws; empty if it throws none.
inline QString messageOf(const std::function<void()> &body) {
    try {
        body();
    } catch (const platform::Exception &exception) {
        return QString::fromUtf8(exception.what());
    }
    return {};
}

/// A controller whose window is the layout "Probe", which has its outlets and its action.
class Probe final : public platform::WindowController {
    Q_OBJECT

 public:
    using WindowController::WindowController;

    /// Has "Probe" known as a layout, with that alteration of its window.
    static void provideLayout(std::function<void(QMainWindow &)> alteration = {}) {
        alteration_ = std::move(alteration);
        platform::layouts()[QStringLiteral("Probe")] = build;
    }
    static std::shared_ptr<Probe> make() {
        return platform::makeController<Probe>(QStringLiteral("Probe"));
    }
    static std::shared_ptr<Probe> open() {
        auto probe = make();
        probe->showWindow();
        return probe;
    }
    static void addButton(QMainWindow &window, const QString &name, const QString &action) {
        auto *button = new QPushButton(name);
        button->setObjectName(name);
        button->setProperty("action", action);
        window.centralWidget()->layout()->addWidget(button);
    }

    platform::TextOutlet lblText{*this, "lblText"};
    platform::LevelOutlet levelBar{*this, "levelBar"};
    platform::ImageOutlet imgMark{*this, "imgMark"};
    platform::RadioOutlet radio{*this, "radio"};
    platform::ButtonOutlet btnAct{*this, "btnAct"};

    int acted = 0;
    int asked = 0;
    bool agrees = true;
    std::function<void(Probe &)> whenLoaded;
    std::function<void(Probe &)> whenActing;
    std::function<void()> whenAsked;

    Q_INVOKABLE void act() {
        ++acted;
        // Outlives the controller, should that be freed meanwhile.
        const auto action = whenActing;
        if (action) {
            action(*this);
        }
    }

    bool windowShouldClose() override {
        ++asked;
        if (whenAsked) {
            whenAsked();
        }
        return agrees;
    }

 protected:
    void windowDidLoad() override {
        if (whenLoaded) {
            whenLoaded(*this);
        }
    }

 private:
    template <class Control>
    static void addOutlet(QMainWindow &window, const QString &name) {
        auto *control = new Control;
        control->setObjectName(name);
        window.centralWidget()->layout()->addWidget(control);
    }

    static void build(QMainWindow &window) {
        window.setObjectName(QStringLiteral("Probe"));
        window.setCentralWidget(new QWidget);
        new QVBoxLayout(window.centralWidget());
        addOutlet<platform::TextLabel>(window, QStringLiteral("lblText"));
        addOutlet<platform::LevelIndicator>(window, QStringLiteral("levelBar"));
        addOutlet<platform::ImageLabel>(window, QStringLiteral("imgMark"));
        addOutlet<QRadioButton>(window, QStringLiteral("radio"));
        addButton(window, QStringLiteral("btnAct"), QStringLiteral("act"));
        if (alteration_) {
            alteration_(window);
        }
    }

    // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): layouts hold no state
    static inline std::function<void(QMainWindow &)> alteration_;
};
