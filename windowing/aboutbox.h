#pragma once

class QWidget;

namespace platform {

class MessageBox;

/// A box that tells the program's version and what it runs on. It is not modal, and is freed when
/// it is closed.
MessageBox *newAboutBox(QWidget *parent);

}  // namespace platform
