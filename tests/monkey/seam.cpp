#include "monkey/seam.h"

#include <QAbstractButton>
#include <QAction>
#include <QDynamicPropertyChangeEvent>

#include "windowing/window.h"

using namespace Qt::StringLiterals;

void Seam::begin(std::unique_ptr<model::Program> model) {
    model_ = std::move(model);
    windows_.clear();
    loaded_.clear();
    closing_ = Closing::Nothing;
}

QString Seam::nameOf(QWidget &window) {
    QString name = windows_.key(&window);
    if (name.isEmpty()) {
        const QString layout = window.objectName();
        name = u"%1 %2"_s.arg(layout).arg(++loaded_[layout]);
        windows_.insert(name, &window);
    }
    return name;
}

bool Seam::eventFilter(QObject *watched, QEvent *event) {
    switch (event->type()) {
        case QEvent::DynamicPropertyChange:
            // Layouts name the actions before the program connects them.
            if (static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName() == "action") {
                watch(*watched);
            }
            break;
        case QEvent::Show:
            if (auto *window = qobject_cast<platform::Window *>(watched)) {
                nameOf(*window);
            }
            break;
        case QEvent::Close:
            if (auto *window = qobject_cast<platform::Window *>(watched)) {
                windowCloses(*window);
            }
            break;
        default:
            break;
    }
    return false;
}

void Seam::watch(QObject &control) {
    const QString action = control.property("action").toString();
    if (auto *item = qobject_cast<QAction *>(&control)) {
        connect(item, &QAction::triggered, this, [this, action] {
            if (action == u"closeWindow") {
                closing_ = Closing::Anything;
            }
            model_->pressInMenuBar(action);
        });
    } else if (auto *button = qobject_cast<QAbstractButton *>(&control)) {
        const QString window = nameOf(*button->window());
        connect(button, &QAbstractButton::clicked, this, [this, window, action] {
            if (window.startsWith(u"MainLayout")) {
                model_->pressInMenuBar(action);
            } else {
                model_->press(window, action);
            }
        });
    }
}

void Seam::windowCloses(QWidget &window) {
    const QString name = nameOf(window);
    const QString layout = window.objectName();
    const bool wayBack = layout == u"MainLayout";
    // What the model has closed already, the program closes by itself.
    if (model_->hasEnded() || (!wayBack && !model_->isOpen(name))) {
        return;
    }
    const bool auxiliary = layout != u"MainMenu" && layout != u"MainTest";
    if (closing_ == Closing::Anything || (closing_ == Closing::Auxiliary && auxiliary)) {
        closing_ = Closing::Nothing;
        model_->closeWindow(name);
    } else if (!wayBack) {
        model_->object(u"%1 closes by itself"_s.arg(name));
    }
}
