#include "platform/alert.h"

#include <utility>

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "platform/theme.h"

namespace platform {

Alert::Alert(QString message, Buttons buttons, QString informativeText)
    : message_(std::move(message)),
      buttons_(std::move(buttons)),
      informativeText_(std::move(informativeText)) {}

int Alert::runModal() const {
    QMessageBox box(QApplication::activeWindow());
    box.setText(message_);
    box.setInformativeText(informativeText_);
    // The box's own setTextFormat() leaves the informative text out.
    for (QLabel *label : box.findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        label->setIndent(0);
    }
    box.setAccessibleName(message_);

    QPushButton *standard = box.addButton(buttons_.defaultButton, QMessageBox::AcceptRole);
    box.setDefaultButton(standard);
    box.setEscapeButton(standard);
    QPushButton *alternate = nullptr;
    if (!buttons_.alternateButton.isEmpty()) {
        alternate = box.addButton(buttons_.alternateButton, QMessageBox::RejectRole);
        box.setEscapeButton(alternate);
    }
    if (!buttons_.otherButton.isEmpty()) {
        box.addButton(buttons_.otherButton, QMessageBox::DestructiveRole);
    }

    theme::dress(box);
    // No icon stands before the text.
    if (auto *grid = qobject_cast<QGridLayout *>(box.layout())) {
        grid->setHorizontalSpacing(0);
    }

    box.exec();
    if (box.clickedButton() == standard) {
        return DefaultReturn;
    }
    return box.clickedButton() == alternate ? AlternateReturn : OtherReturn;
}

}  // namespace platform
