#pragma once

class QMessageBox;
class QWidget;

namespace platform {

/// Tells the program's version and what it runs on. It is not modal, and freed when it is closed.
QMessageBox *newAboutBox(QWidget *parent);

}  // namespace platform
