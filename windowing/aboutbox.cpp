#include "windowing/aboutbox.h"

#include <QGuiApplication>
#include <QIcon>

#include "controls/messagebox.h"
#include "look/polish.h"

using namespace Qt::StringLiterals;

namespace platform {

MessageBox *newAboutBox(QWidget *parent) {
    auto *box = new MessageBox(
        u"Zorvan %1"_s.arg(QCoreApplication::applicationVersion()),
        QStringLiteral(ZORVAN_DESCRIPTION ".\n\nQt ") + QString::fromLatin1(qVersion()), parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(u"About Zorvan"_s);
    box->setIcon(QIcon(u":/icons/zorvan-256.png"_s), QGuiApplication::applicationDisplayName());
    box->addButton(u"OK"_s, QDialogButtonBox::AcceptRole, QDialog::Accepted);
    look::keepPolished(*box);
    return box;
}

}  // namespace platform
