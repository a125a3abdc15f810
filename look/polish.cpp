#include "look/polish.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QAbstractButton>
#include <QBackingStore>
#include <QBoxLayout>
#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>

#include "look/layoutproperties.h"
#include "look/metrics.h"

using namespace Qt::StringLiterals;

namespace platform::look {

namespace {

struct TextStyle {
    const char16_t *name;
    double size;
    QFont::Weight weight;
};

// Each size is about 1.17 times the next smaller one.
constexpr std::array textStyles{
    TextStyle{u"title", 1.6, QFont::DemiBold},
    TextStyle{u"question", 1.37, QFont::Normal},
    TextStyle{u"heading", 1.17, QFont::DemiBold},
    TextStyle{u"caption", 0.88, QFont::Normal},
};

/// In units.
struct Spacing {
    const char16_t *name;
    double sideMargin;
    double endMargin;
    double gapAcross;
    double gapDown;
};

constexpr std::array spacings{
    Spacing{u"window", 3, 2.25, 1, 1.8},
    Spacing{u"flush", 0, 0, 0, 0},
    Spacing{u"section", 0, 0, 2, 2},
    Spacing{u"panel", 2, 2, 2, 1},
    Spacing{u"row", 1.5, 1, 1.5, 0},
    Spacing{u"step", 1.5, 0.75, 1.5, 0},
    Spacing{u"list", 0, 0, 1, 0.6},
    Spacing{u"page", 2, 2, 0, 0.5},
    Spacing{u"text", 1, 1, 2, 0.8},
    Spacing{u"foot", 3, 2, 1, 1},
    Spacing{u"edge", 0, 0, 3, 1},
    Spacing{u"dialog", 3, 2.25, 1, 3},
    Spacing{u"figures", 0, 0, 3, 0.25},
    Spacing{u"levels", 2.5, 2.25, 3, 2},
    Spacing{u"", 0, 0, 1, 1},
};

template <class Entry, std::size_t size>
const Entry *named(const std::array<Entry, size> &entries, const QVariant &name) {
    for (const Entry &entry : entries) {
        if (name.toString() == QStringView(entry.name)) {
            return &entry;
        }
    }
    return nullptr;
}

void scaleText(QWidget &widget) {
    if (const TextStyle *style = named(textStyles, widget.property(layoutproperties::textStyle))) {
        // The font that it would have without a text style.
        widget.setFont(QFont());
        QFont font = widget.font();
        setSize(font, font, style->size);
        font.setWeight(style->weight);
        widget.setFont(font);
    }
}

void setGaps(QLayout &layout, const Spacing &spacing, double unit) {
    const int across = qRound(spacing.gapAcross * unit);
    const int down = qRound(spacing.gapDown * unit);
    if (auto *grid = qobject_cast<QGridLayout *>(&layout)) {
        grid->setHorizontalSpacing(across);
        grid->setVerticalSpacing(down);
    } else if (const auto *box = qobject_cast<QBoxLayout *>(&layout)) {
        const bool isRow = box->direction() == QBoxLayout::LeftToRight;
        layout.setSpacing(isRow ? across : down);
    }
}

void space(const QWidget &widget, double unit) {
    QLayout *layout = widget.layout();
    const Spacing *spacing = named(spacings, widget.property(layoutproperties::spacing));
    if (spacing == nullptr || (qobject_cast<QBoxLayout *>(layout) == nullptr &&
                               qobject_cast<QGridLayout *>(layout) == nullptr)) {
        return;
    }
    const int side = qRound(spacing->sideMargin * unit);
    const int end = qRound(spacing->endMargin * unit);
    layout->setContentsMargins(side, end, side, end);
    setGaps(*layout, *spacing, unit);
    for (QLayout *within : layout->findChildren<QLayout *>()) {
        setGaps(*within, *spacing, unit);
    }
}

/// Polishes a window again after a change, once every widget in it has learned of the change.
class Polisher final : public QObject {
 public:
    Polisher(QWidget &window, std::function<void()> polishedAgain)
        : QObject(&window), window_(window), polishedAgain_(std::move(polishedAgain)) {
        for (const QScreen *screen : QGuiApplication::screens()) {
            connect(screen, &QScreen::logicalDotsPerInchChanged, this, &Polisher::takeUpResolution);
        }
    }

    bool eventFilter(QObject *, QEvent *event) override {
        switch (event->type()) {
            case QEvent::ApplicationFontChange:
            case QEvent::FontChange:
            case QEvent::StyleChange:
                polishSoon();
                break;
            default:
                break;
        }
        return false;
    }

 private:
    /// By itself a window learns of a new resolution only when it moves to another screen.
    void takeUpResolution() {
        QWindow *handle = window_.windowHandle();
        if (handle == nullptr) {
            return;
        }
        // The window manager was told these sizes in device pixels.
        window_.setBaseSize({});
        window_.setBaseSize(window_.size());
        handle->resize(window_.size());
        if (QBackingStore *store = window_.backingStore()) {
            store->resize(window_.size());
        }
        Q_EMIT handle->screenChanged(handle->screen());
        polishSoon();
    }

    void polishSoon() {
        if (!std::exchange(due_, true)) {
            QMetaObject::invokeMethod(
                this, [this] { polishAgain(); }, Qt::QueuedConnection);
        }
    }

    void polishAgain() {
        due_ = false;
        polish(window_);
        settle();
        if (polishedAgain_) {
            polishedAgain_();
        }
    }

    /// Makes the layouts ask again how much space they need, from the innermost outwards.
    void settle() {
        QList<QWidget *> widgets = window_.findChildren<QWidget *>();
        std::ranges::reverse(widgets);
        for (QWidget *widget : std::as_const(widgets)) {
            QCoreApplication::sendPostedEvents(widget, QEvent::LayoutRequest);
        }
    }

    QWidget &window_;
    std::function<void()> polishedAgain_;
    bool due_ = false;
};

void enlargeButton(QAbstractButton &button, double unit) {
    const QSize needed = button.sizeHint();
    button.setMinimumHeight(qMax(qRound(smallestTarget * unit), needed.height()));
    if (qobject_cast<QPushButton *>(&button) != nullptr) {
        button.setMinimumWidth(needed.width() + qRound(3 * unit));
    }
}

}  // namespace

void polish(QWidget &window) {
    // A style sheet sets its fonts when it polishes.
    window.ensurePolished();
    const double unit = look::unit(window);
    space(window, unit);
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        scaleText(*widget);
        space(*widget, unit);
        if (widget->property(layoutproperties::keepsRoom).toBool()) {
            QSizePolicy policy = widget->sizePolicy();
            policy.setRetainSizeWhenHidden(true);
            widget->setSizePolicy(policy);
        }
        if (const int characters = widget->property(layoutproperties::widest).toInt();
            characters > 0) {
            widget->setMaximumWidth(qRound(characters * characterWidth(widget->font())));
        }
        if (auto *button = qobject_cast<QAbstractButton *>(widget)) {
            enlargeButton(*button, unit);
        }
        // Sizes that were measured before are out of date.
        widget->updateGeometry();
    }
    for (QScrollArea *area : window.findChildren<QScrollArea *>()) {
        if (area->horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOff) {
            // It scrolls only vertically, so it must be wide enough for every line.
            area->setMinimumWidth(area->widget()->minimumSizeHint().width() +
                                  area->verticalScrollBar()->sizeHint().width());
            area->verticalScrollBar()->setAccessibleName(area->accessibleName());
        }
    }
}

void keepPolished(QWidget &window, std::function<void()> polishedAgain) {
    polish(window);
    window.installEventFilter(new Polisher(window, std::move(polishedAgain)));
}

}  // namespace platform::look
