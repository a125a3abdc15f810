#include "monkey/comparison.h"

#include <cmath>
#include <type_traits>

#include <QAbstractButton>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>

#include "controls/imagelabel.h"
#include "controls/levelindicator.h"
#include "controls/textlabel.h"
#include "monkey/seam.h"
#include "quizrun/quizrun.h"
#include "support/clocks.h"
#include "support/desk.h"
#include "support/store.h"
#include "windowing/layouts.h"

using namespace Qt::StringLiterals;

namespace {

template <class Value>
QString inWords(const Value &value) {
    if constexpr (std::is_same_v<Value, QString>) {
        return u"\"%1\""_s.arg(value);
    } else if constexpr (std::is_same_v<Value, QStringList>) {
        return value.join(u" | "_s);
    } else if constexpr (std::is_same_v<Value, bool>) {
        return value ? u"true"_s : u"false"_s;
    } else {
        return QString::number(value);
    }
}

template <class Value>
bool same(const Value &one, const Value &other) {
    if constexpr (std::is_floating_point_v<Value>) {
        // The score of no questions is not a number.
        if (std::isnan(one) && std::isnan(other)) {
            return true;
        }
    }
    return one == other;
}

class Differences final {
 public:
    template <class Value>
    void compare(const QString &what, const Value &found, const Value &wanted) {
        if (!same(found, wanted)) {
            add(u"%1: is %2, the model has %3"_s.arg(what, inWords(found), inWords(wanted)));
        }
    }
    void add(const QString &difference) { found_ << difference; }
    const QStringList &found() const { return found_; }

 private:
    QStringList found_;
};

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

void compareControl(Differences &differences, const QString &name, const model::Control &found,
                    const model::Control &wanted) {
    if (found == wanted) {
        return;
    }
    differences.compare(name + u" text"_s, found.text, wanted.text);
    differences.compare(name + u" hidden"_s, found.hidden, wanted.hidden);
    differences.compare(name + u" enabled"_s, found.enabled, wanted.enabled);
    differences.compare(name + u" alpha"_s, found.alpha, wanted.alpha);
    differences.compare(name + u" white"_s, found.white, wanted.white);
    differences.compare(name + u" value"_s, found.value, wanted.value);
    differences.compare(name + u" maximum"_s, found.maximum, wanted.maximum);
    differences.compare(name + u" on"_s, found.on, wanted.on);
    differences.compare(name + u" image"_s, found.image, wanted.image);
}

void compareWindows(Differences &differences, Seam &seam) {
    for (const model::Window &wanted : seam.model().windows()) {
        const QWidget *window = seam.window(wanted.name);
        if (window == nullptr) {
            differences.add(u"%1: is not there"_s.arg(wanted.name));
            continue;
        }
        if (!wanted.loading) {
            differences.compare(wanted.name + u" is open"_s, window->isVisible(), true);
        }
        for (auto control = wanted.controls.begin(); control != wanted.controls.end(); ++control) {
            compareControl(differences, u"%1, %2"_s.arg(wanted.name, control.key()),
                           read(desk::control(window, control.key()), *window), control.value());
        }
    }
    for (const auto &[layout, outlets] : model::outlets().asKeyValueRange()) {
        for (QWidget *window : desk::windows(layout)) {
            const QString name = seam.nameOf(*window);
            if (!seam.model().isOpen(name)) {
                differences.add(u"%1: is open, but not in the model"_s.arg(name));
            }
        }
    }
}

void compareRun(Differences &differences, const model::Program &model) {
    const QuizRun &run = quizRun();
    const model::Run &wanted = model.run();
    differences.compare(u"questionOrder"_s, run.questionOrder, wanted.questionOrder);
    differences.compare(u"questionIndex"_s, run.questionIndex, wanted.questionIndex);
    differences.compare(u"questionCount"_s, run.questionCount, wanted.questionCount);
    differences.compare(u"correctCount"_s, run.correctCount, wanted.correctCount);
    differences.compare(u"correctAnswerNumber"_s, run.correctAnswerNumber,
                        wanted.correctAnswerNumber);
    differences.compare(u"currentTestId"_s, run.currentTestId,
                        wanted.currentTestId.value_or(u""_s));
    differences.compare(u"currentTestId known"_s, !run.currentTestId.isNull(),
                        wanted.currentTestId.has_value());
    differences.compare(u"minutesLeft"_s, run.minutesLeft, wanted.minutesLeft);
    differences.compare(u"secondsLeft"_s, run.secondsLeft, wanted.secondsLeft);
    differences.compare(u"scoreRatio"_s, run.scoreRatio, wanted.scoreRatio);
    differences.compare(u"progressRatio"_s, run.progressRatio, wanted.progressRatio);
    differences.compare(u"clocks that run"_s, int(clocks::running().size()),
                        model.clockRuns() ? 1 : 0);
}

template <class Writes>
QStringList listed(const Writes &writes) {
    QStringList list;
    for (const auto &write : writes) {
        list << write.key + u'=' + write.value;
    }
    return list;
}

void compareStore(Differences &differences, model::Program &model) {
    differences.compare(u"writes"_s, listed(store::writes()), listed(model.takeWrites()));
    store::forgetWrites();
    const model::Store &wanted = model.store();
    const store::Contents found = store::contents();
    if (found == wanted) {
        return;
    }
    model::Store all = wanted;
    all.insert(found);
    for (auto entry = all.begin(); entry != all.end(); ++entry) {
        differences.compare(entry.key() + u" in the store"_s,
                            found.value(entry.key(), u"(absent)"_s),
                            wanted.value(entry.key(), u"(absent)"_s));
    }
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

QStringList comparison::differences(Seam &seam, const QStringList &errors) {
    model::Program &model = seam.model();
    Differences differences;
    for (const QString &objection : model.takeObjections()) {
        differences.add(objection);
    }
    differences.compare(u"standard error"_s, errors, model.takeLog());
    compareStore(differences, model);
    compareRun(differences, model);
    if (!model.hasEnded()) {
        compareWindows(differences, seam);
    }
    return differences.found();
}

QStringList comparison::differences(Seam &seam, const QMessageBox &box) {
    const std::optional<model::Alert> &wanted = seam.model().alert();
    if (!wanted) {
        return {u"the alert \"%1\" is open, but not in the model"_s.arg(box.text())};
    }
    QStringList buttons;
    for (QAbstractButton *button : box.buttons()) {
        // The default button comes first.
        buttons.insert(button == box.defaultButton() ? 0 : buttons.size(), button->text());
    }
    Differences differences;
    differences.compare(u"alert"_s, box.text(), wanted->message);
    differences.compare(u"alert's informative text"_s, box.informativeText(), QString());
    differences.compare(u"alert's buttons"_s, buttons, wanted->buttons);
    const QWidget *owner = box.parentWidget();
    differences.compare(u"alert's window"_s,
                        owner == nullptr ? u"none"_s : seam.nameOf(*owner->window()),
                        wanted->owner);
    return differences.found();
}
