#include "controls/messagebox.h"

#include <utility>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "controls/textlabel.h"
#include "look/layoutproperties.h"
#include "look/metrics.h"
#include "look/palette.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// An icon in its own colours.
class Icon final : public QLabel {
 public:
    Icon(QIcon icon, QWidget *parent) : QLabel(parent), icon_(std::move(icon)) {}

    QSize sizeHint() const override {
        const int side = qRound(look::messageIconSize * look::unit(*this));
        return {side, side};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        icon_.paint(&painter, rect());
    }

 private:
    QIcon icon_;
};

}  // namespace

MessageBox::MessageBox(const QString &text, const QString &informativeText, QWidget *parent)
    : QDialog(parent, Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                          Qt::MSWindowsFixedSizeDialogHint),
      text_(new TextLabel),
      informativeText_(new TextLabel),
      buttonBox_(new QDialogButtonBox) {
    text_->setProperty(layoutproperties::textStyle, u"question"_s);
    for (TextLabel *label : {text_, informativeText_}) {
        constexpr int characters = 44;
        label->setWordWrap(true);
        label->setCharacters(characters);
        label->setBalanced(true);
    }
    text_->setStringValue(text);
    informativeText_->setStringValue(informativeText);
    informativeText_->setHidden(informativeText.isEmpty());

    auto *content = new QWidget;
    content->setProperty(layoutproperties::spacing, u"edge"_s);
    auto *besideTheIcon = new QHBoxLayout(content);
    auto *texts = new QVBoxLayout;
    besideTheIcon->addLayout(texts);
    texts->addWidget(text_);
    texts->addWidget(informativeText_);
    texts->addStretch();

    setProperty(layoutproperties::spacing, u"dialog"_s);
    auto *column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(content);
    column->addWidget(buttonBox_);
}

QString MessageBox::text() const {
    return text_->text();
}

QString MessageBox::informativeText() const {
    return informativeText_->text();
}

void MessageBox::setIcon(const QIcon &icon, const QString &accessibleName) {
    auto *picture = new Icon(icon, this);
    picture->setAccessibleName(accessibleName);
    auto *content = qobject_cast<QBoxLayout *>(text_->parentWidget()->layout());
    content->insertWidget(0, picture, 0, Qt::AlignTop);
}

void MessageBox::addButton(const QString &text, QDialogButtonBox::ButtonRole role, int result) {
    QPushButton *button = buttonBox_->addButton(text, role);
    connect(button, &QPushButton::clicked, this, [this, result] { done(result); });
    if (defaultButton_ == nullptr) {
        defaultButton_ = button;
        escapeButton_ = button;
        button->setDefault(true);
        button->setFocus();
    }
    if (role == QDialogButtonBox::RejectRole) {
        escapeButton_ = button;
    }
}

void MessageBox::reject() {
    escapeButton_->click();
}

void MessageBox::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(text());
        return;
    }
    QDialog::keyPressEvent(event);
}

void MessageBox::paintEvent(QPaintEvent *) {
    // Some desktops give a window neither a border nor a shadow; it must be told from those behind.
    QPainter painter(this);
    painter.fillRect(rect(), look::hairline(palette()));
    painter.fillRect(rect().adjusted(1, 1, -1, -1),
                     look::fillColor(palette(), look::Fill::Surface));
}

void MessageBox::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

}  // namespace platform
