#include "windowing/aboutbox.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "look/polish.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

void giveIcon(QMessageBox &box) {
    const int side = 4 * box.fontMetrics().lineSpacing();
    box.setIconPixmap(
        QIcon(u":/icons/zorvan-256.png"_s).pixmap(QSize(side, side), box.devicePixelRatioF()));
}

}  // namespace

QMessageBox *newAboutBox(QWidget *parent) {
    auto *box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(u"About Zorvan"_s);
    box->setTextFormat(Qt::PlainText);
    giveIcon(*box);
    box->setText(u"Zorvan %1"_s.arg(QCoreApplication::applicationVersion()));
    box->setInformativeText(QStringLiteral(ZORVAN_DESCRIPTION ".\n\nQt ") +
                            QString::fromLatin1(qVersion()));
    box->setDefaultButton(box->addButton(u"OK"_s, QMessageBox::AcceptRole));
    for (QLabel *label : box->findChildren<QLabel *>()) {
        if (!label->pixmap().isNull()) {
            label->setAccessibleName(QGuiApplication::applicationDisplayName());
        }
    }
    look::keepPolished(*box, [box] {
        // Setting the icon makes the box build its layout again.
        giveIcon(*box);
        look::polish(*box);
    });
    box->setModal(false);
    return box;
}

}  // namespace platform
