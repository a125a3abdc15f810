#include "monkey/comparison.h"

#include <QAbstractButton>
#include <QMainWindow>
#include <QPushButton>

#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/messagebox.h"
#include "controls/textlabel.h"
#include "monkey/seam.h"
#include "quizrun/quizrun.h"
#include "support/clocks.h"
#include "support/desk.h"
#include "support/store.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

namespace {

/// Numbers exactly: what reads alike is alike.
template <class... Values>
QString inWords(const Values &...values) {
    QString words;
    ((QDebug(&words) << qSetRealNumberPrecision(17)) << ... << values);
    return words;
}

QString inWords(const model::Control &control) {
    return inWords(control.text, "hidden", control.hidden, "enabled", control.enabled, "alpha",
                   control.alpha, "white", control.white, "level", control.value, "of",
                   control.maximum, "on", control.on, control.image);
}

template <class Value>
void compare(QStringList &differences, const QString &what, const Value &found,
             const Value &wanted) {
    const QString is = inWords(found);
    const QString has = inWords(wanted);
    if (is != has) {
        differences << u"%1: is %2, the model has %3"_s.arg(what, is, has);
    }
}

QString nameOf(const QIcon &image) {
    if (image.isNull()) {
        return {};
    }
    static QHash<qint64, QString> names;
    QString &name = names[image.cacheKey()];
    if (name.isEmpty()) {
        const auto pixels = [](const QIcon &icon) { return icon.pixmap(48).toImage(); };
        name = u"another image"_s;
        for (const QString &file : {u"checkmark.png"_s, u"blankcheckmark.png"_s}) {
            if (pixels(image) == pixels(QIcon(u":/images/"_s + file))) {
                name = file;
            }
        }
    }
    return name;
}

model::Control read(const QWidget &widget, const QWidget &window) {
    model::Control control;
    control.hidden = !widget.isVisibleTo(&window);
    control.enabled = widget.isEnabled();
    if (const auto *label = qobject_cast<const platform::TextLabel *>(&widget)) {
        control.text = label->text();
        control.alpha = label->alphaValue();
        control.white = label->textColor() == QColor(Qt::white);
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        control.text = button->text();
        control.on = button->isChecked();
    } else if (const auto *level = qobject_cast<const platform::LevelIndicator *>(&widget)) {
        control.value = level->doubleValue();
        control.maximum = level->maximum();
    } else if (const auto *image = qobject_cast<const platform::ImageLabel *>(&widget)) {
        control.image = nameOf(image->image());
    }
    return control;
}

void compareWindows(QStringList &differences, Seam &seam) {
    for (const model::Window &wanted : seam.model().windows()) {
        const QWidget *window = seam.window(wanted.name);
        if (window == nullptr || (!window->isVisible() && !wanted.loading)) {
            differences << wanted.name + u" is not there"_s;
            continue;
        }
        for (const auto &[name, control] : wanted.controls.asKeyValueRange()) {
            const model::Control found = read(desk::control(window, name), *window);
            if (found != control) {
                compare(differences, u"%1, %2"_s.arg(wanted.name, name), found, control);
            }
        }
    }
    const QStringList layouts = model::outlets().keys();
    for (const QString &layout : layouts) {
        for (QWidget *window : desk::windows(layout)) {
            if (const QString name = seam.nameOf(*window); !seam.model().isOpen(name)) {
                differences << name + u" is open, but not in the model"_s;
            }
        }
    }
}

using Facts = QMap<QString, QString>;

void compareFacts(QStringList &differences, const Facts &found, const Facts &wanted) {
    Facts all = wanted;
    all.insert(found);
    const QStringList names = all.keys();
    for (const QString &fact : names) {
        compare(differences, fact, found.value(fact, u"(absent)"_s),
                wanted.value(fact, u"(absent)"_s));
    }
}

/// What the program's run and the model's name alike.
template <class Run>
Facts factsOf(const Run &run) {
    return {{u"questionOrder"_s, inWords(run.questionOrder)},
            {u"questionIndex"_s, inWords(run.questionIndex)},
            {u"questionCount"_s, inWords(run.questionCount)},
            {u"correctCount"_s, inWords(run.correctCount)},
            {u"correctAnswerNumber"_s, inWords(run.correctAnswerNumber)},
            {u"time left"_s, inWords(run.minutesLeft, run.secondsLeft)},
            {u"scoreRatio"_s, inWords(run.scoreRatio)},
            {u"progressRatio"_s, inWords(run.progressRatio)}};
}

void compareRun(QStringList &differences, const model::Program &model) {
    const model::Run &wanted = model.run();
    compareFacts(differences, factsOf(quizRun()), factsOf(wanted));
    const QString id = quizRun().currentTestId;
    compare(differences, u"currentTestId"_s, id.isNull() ? QStringList() : QStringList(id),
            wanted.currentTestId ? QStringList(*wanted.currentTestId) : QStringList());
    compare(differences, u"clocks that run"_s, int(clocks::running().size()),
            model.clockRuns() ? 1 : 0);
}

QStringList listed(const QList<store::Write> &writes) {
    QStringList list;
    for (const store::Write &write : writes) {
        list << write.key + u'=' + write.value;
    }
    return list;
}

/// What an alert shows and over which window, from its default button on; nothing if there is none.
QStringList described(const platform::MessageBox *alert, Seam &seam) {
    if (alert == nullptr) {
        return {};
    }
    QStringList buttons;
    for (const QPushButton *button : alert->findChildren<QPushButton *>()) {
        buttons.insert(button == alert->defaultButton() ? 0 : buttons.size(), button->text());
    }
    const QWidget *owner = alert->parentWidget();
    return buttons + QStringList{alert->text(), alert->informativeText(),
                                 owner == nullptr ? u"none"_s : seam.nameOf(*owner->window())};
}

QStringList described(const std::optional<model::Alert> &alert) {
    return alert ? alert->buttons + QStringList{alert->message, u""_s, alert->owner}
                 : QStringList();
}

}  // namespace

model::Program::Layouts comparison::layouts() {
    model::Program::Layouts all;
    for (const auto &[layout, names] : model::outlets().asKeyValueRange()) {
        QMainWindow window;
        platform::layoutNamed(layout)(window);
        model::Window untouched{.layout = layout};
        for (const QString &name : names) {
            untouched.controls.insert(name, read(desk::control(&window, name), window));
        }
        all.insert(layout, untouched);
    }
    return all;
}

QStringList comparison::differences(Seam &seam, const QStringList &errors,
                                    const platform::MessageBox *alert) {
    model::Program &model = seam.model();
    QStringList differences = model.takeObjections();
    compare(differences, u"alert"_s, described(alert, seam), described(model.alert()));
    compare(differences, u"standard error"_s, errors, model.takeLog());
    compare(differences, u"writes"_s, listed(store::writes()), listed(model.takeWrites()));
    store::forgetWrites();
    compareFacts(differences, store::contents(), model.store());
    compareRun(differences, model);
    if (!model.hasEnded()) {
        compareWindows(differences, seam);
    }
    return differences;
}
