#include "support/alerts.h"

#include <algorithm>
#include <utility>

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "controls/messagebox.h"

using namespace Qt::StringLiterals;

char *toString(const ShownAlert &alert) {
    const QString text =
        u"\"%1\" [%2] over \"%3\", informative text \"%4\", title \"%5\", %6"_s.arg(
            alert.message, alert.buttons.join(u", "_s), alert.over, alert.informativeText,
            alert.title, alert.hasIcon ? u"an icon"_s : u"no icon"_s);
    return qstrdup(qUtf8Printable(text));
}

namespace {

bool hasIcon(const QWidget &box) {
    const QList<QLabel *> labels = box.findChildren<QLabel *>();
    return std::ranges::any_of(labels, [&box](const QLabel *label) {
        return label->isVisibleTo(&box) && label->text().isEmpty();
    });
}

}  // namespace

Alerts::Alerts() {
    qApp->installEventFilter(this);
}

Alerts::~Alerts() {
    qApp->removeEventFilter(this);
}

void Alerts::answer(const QString &button, std::function<void()> meanwhile) {
    answers_.append({button, std::nullopt, std::move(meanwhile)});
}

void Alerts::press(Qt::Key key) {
    answers_.append({{}, key, {}});
}

QStringList Alerts::messages() const {
    QStringList messages;
    for (const ShownAlert &alert : shown_) {
        messages << alert.message;
    }
    return messages;
}

bool Alerts::verify() const {
    for (const QString &message : unexpected_) {
        qWarning("Unexpected alert: %s", qUtf8Printable(message));
    }
    if (!answers_.isEmpty()) {
        qWarning("%d expected alerts did not come", int(answers_.size()));
    }
    return unexpected_.isEmpty() && answers_.isEmpty();
}

bool Alerts::eventFilter(QObject *watched, QEvent *event) {
    auto *box = qobject_cast<platform::MessageBox *>(watched);
    if (box != nullptr && box->isModal() && event->type() == QEvent::Show) {
        QTimer::singleShot(0, box, [this, box] { handle(*box); });
    }
    return false;
}

void Alerts::handle(platform::MessageBox &box) {
    const QWidget *owner = box.parentWidget();
    ShownAlert alert{.message = box.text(),
                     .buttons = {},
                     .over = owner == nullptr ? QString() : owner->objectName(),
                     .informativeText = box.informativeText(),
                     .title = box.windowTitle(),
                     .hasIcon = hasIcon(box)};
    for (const QAbstractButton *button : box.findChildren<QPushButton *>()) {
        if (button == box.defaultButton()) {
            alert.buttons.prepend(button->text());
        } else {
            alert.buttons.append(button->text());
        }
    }
    shown_ << alert;
    if (answers_.isEmpty()) {
        unexpected_ << box.text();
        box.reject();
        return;
    }

    const Answer answer = answers_.takeFirst();
    if (answer.meanwhile) {
        answer.meanwhile();
    }
    if (answer.key) {
        QTest::keyClick(&box, *answer.key);
        return;
    }
    for (QAbstractButton *button : box.findChildren<QPushButton *>()) {
        if (button->text() == answer.button) {
            button->click();
            return;
        }
    }
    unexpected_ << QStringLiteral("%1 (no button \"%2\")").arg(box.text(), answer.button);
    box.reject();
}
