#pragma once

class QMessageBox;
class QWidget;

namespace platform {

/// A box that tells the program's version and what it runs on. It is not modal, and is freed when
/// it is closed.
QMessageBox *newAboutBox(QWidget *parent);

}  // namespace platform
