#include "controls/steplist.h"

#include <QAbstractButton>
#include <QEvent>

#include "controls/actionrow.h"
#include "controls/levelindicator.h"

namespace platform {

StepList::StepList(QWidget *parent) : QWidget(parent) {}

bool StepList::event(QEvent *event) {
    if (event->type() == QEvent::Polish) {
        followLevels();
    }
    return QWidget::event(event);
}

void StepList::followLevels() {
    for (const LevelIndicator *level : findChildren<LevelIndicator *>()) {
        connect(level, &LevelIndicator::valueInWordsChanged, this, &StepList::markRows);
    }
    markRows();
}

void StepList::markRows() {
    ActionRow *last = nullptr;
    ActionRow *next = nullptr;
    for (ActionRow *row : findChildren<ActionRow *>()) {
        if (row->state() == RowState::Next) {
            last = row;
        }
        row->ensurePolished();
        if (row->level()->doubleValue() >= row->level()->maximum()) {
            row->setState(RowState::Done, done_);
        } else if (next == nullptr) {
            next = row;
            row->setState(RowState::Next, next_);
        } else {
            row->setState(RowState::Open);
        }
    }
    // Until the learner moves it, the focus stays on the row that is next.
    const QWidget *focused = window()->focusWidget();
    if (next != nullptr && (focused == nullptr || (last != nullptr && focused == last->button()))) {
        next->button()->setFocus();
    }
}

}  // namespace platform
