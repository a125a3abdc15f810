#include "monkey/lookout.h"

#include <algorithm>

#include <QApplication>
#include <QMenu>
#include <QTest>

#include "controls/messagebox.h"
#include "monkey/hands.h"
#include "monkey/liveprogram.h"
#include "support/clocks.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether Tab reaches it.
bool takesFocus(const QWidget &widget) {
    return widget.isVisible() && widget.isEnabled() &&
           (widget.focusPolicy() & Qt::TabFocus) != Qt::NoFocus;
}

/// A closed alert or About box is freed; only the About box outlives the step that opened it.
bool mayLive(const QWidget &widget) {
    if (const auto *box = qobject_cast<const platform::MessageBox *>(&widget)) {
        return box->isVisible() && !box->isModal();
    }
    return !widget.isVisible() || qobject_cast<const QMenu *>(&widget) != nullptr ||
           widget.inherits("QTipLabel");
}

QStringList faultsOfWindows(const LiveControllers &controllers) {
    const LiveControllers::Controllers all = controllers.all();
    QSet<const QWidget *> owned;
    for (const platform::WindowController *controller : all) {
        owned << controller->window();
    }
    QStringList faults;
    int waysBack = 0;
    int others = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        const bool isWindow = qobject_cast<const platform::Window *>(widget) != nullptr;
        const bool isWayBack = isWindow && widget->objectName() == u"MainLayout";
        if (isWindow) {
            (isWayBack ? waysBack : others) += widget->isVisible() ? 1 : 0;
        }
        if (isWindow ? !isWayBack && !owned.contains(widget) : !mayLive(*widget)) {
            faults << u"%1 must not be there"_s.arg(Hands::nameOf(*widget));
        }
    }
    if (waysBack != (others == 0 ? 1 : 0)) {
        faults << u"%1 ways back beside %2 open windows"_s.arg(waysBack).arg(others);
    }
    const qsizetype used = controllers.used().size();
    if (all.size() != used) {
        faults << u"%1 controllers live, %2 are on screen or held"_s.arg(all.size()).arg(used);
    }
    return faults;
}

QStringList faultsOfFocus() {
    if (QApplication::activePopupWidget() != nullptr) {
        return {};
    }
    // A desktop takes a moment to give the keyboard to the next window.
    const QWidget *active = nullptr;
    const auto findsIt = [&active] {
        active = QApplication::activeWindow();
        return active != nullptr && active->isVisible();
    };
    if (!QTest::qWaitFor(findsIt)) {
        return {u"no window is active"_s};
    }
    const auto controls = active->findChildren<QWidget *>();
    const bool takes = std::ranges::any_of(controls, [active](const QWidget *control) {
        return control->window() == active && takesFocus(*control);
    });
    const QWidget *focus = QApplication::focusWidget();
    if (!takes || (focus != nullptr && focus->window() == active && focus->isVisible() &&
                   focus->isEnabled())) {
        return {};
    }
    return {u"in %1 the focus is on %2"_s.arg(
        Hands::nameOf(*active), focus == nullptr ? u"nothing"_s : Hands::nameOf(*focus))};
}

}  // namespace

QStringList lookout::faults(const LiveProgram &program) {
    return faultsOfWindows(program.controllers()) + faultsOfFocus();
}

QStringList lookout::remains(const QList<QPointer<QObject>> &objects) {
    QStringList remains;
    for (const QPointer<QObject> &object : objects) {
        if (!object.isNull()) {
            remains << QLatin1StringView(object->metaObject()->className());
        }
    }
    if (!clocks::running().isEmpty()) {
        remains << u"a clock"_s;
    }
    return remains;
}
